#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace glimmerly {

/// Broadcasts within the process. Main thread only; observers run inside `post`, in the order in which
/// they registered.
class NotificationCenter {
public:
    using Token = std::uint64_t;

    /// `observer` hears every notification of that name from any sender, until it is removed.
    Token addObserver(std::string name, std::function<void()> observer);
    void removeObserver(Token token);
    void post(std::string_view name);

private:
    struct Observer {
        std::string name;
        std::function<void()> call;
    };
    std::map<Token, Observer> observers_;
    Token nextToken_ = 1;
};

} // namespace glimmerly
