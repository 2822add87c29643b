#pragma once

#include "platform/KeyboardLayout.h"

#include <map>
#include <vector>

namespace glimmerly {

/// A keyboard that prints what the test says.
class FakeKeyboardLayout : public KeyboardLayout {
public:
    FakeKeyboardLayout() = default;
    explicit FakeKeyboardLayout(std::map<std::int64_t, std::string> keys) : keys_(std::move(keys)) {}

    [[nodiscard]] std::optional<std::string> translate(std::int64_t keyCode) const override {
        const auto found = keys_.find(keyCode);
        return found == keys_.end() ? std::nullopt : std::optional(found->second);
    }
    void onChange(std::function<void()> handler) override { handlers_.push_back(std::move(handler)); }

    /// Changes the layout as its user would.
    void change(std::map<std::int64_t, std::string> keys) {
        keys_ = std::move(keys);
        for (const auto& handler : handlers_)
            handler();
    }

private:
    std::map<std::int64_t, std::string> keys_;
    std::vector<std::function<void()>> handlers_;
};

} // namespace glimmerly
