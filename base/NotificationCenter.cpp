#include "base/NotificationCenter.h"

#include <vector>

namespace glimmerly {

NotificationCenter::Token NotificationCenter::addObserver(std::string name, std::function<void()> observer) {
    const Token token = nextToken_++;
    observers_.emplace(token, Observer{std::move(name), std::move(observer)});
    return token;
}

void NotificationCenter::removeObserver(Token token) {
    observers_.erase(token);
}

void NotificationCenter::post(std::string_view name) {
    // An observer may add or remove observers, itself included.
    std::vector<Token> hearers;
    for (const auto& [token, observer] : observers_) {
        if (observer.name == name)
            hearers.push_back(token);
    }
    for (const Token token : hearers) {
        if (const auto found = observers_.find(token); found != observers_.end()) {
            const auto call = found->second.call;
            call();
        }
    }
}

} // namespace glimmerly
