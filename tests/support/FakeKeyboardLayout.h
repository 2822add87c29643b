#pragma once

#include "platform/KeyboardLayout.h"

#include <map>

namespace glimmerly {

/// A keyboard that prints what the test says.
class FakeKeyboardLayout : public KeyboardLayout {
public:
    using Keys = std::map<std::int64_t, std::string>;

    FakeKeyboardLayout() = default;
    explicit FakeKeyboardLayout(Keys keys, Keys shifted = {})
        : keys_(std::move(keys)), shifted_(std::move(shifted)) {}

    [[nodiscard]] std::optional<std::string> translate(std::int64_t keyCode) const override {
        return textIn(keys_, keyCode);
    }
    [[nodiscard]] std::optional<std::string> translateShifted(std::int64_t keyCode) const override {
        return textIn(shifted_, keyCode);
    }
    [[nodiscard]] Observation observe(std::function<void()> observer) override {
        return observers_.add(std::move(observer));
    }

    /// Changes the layout as its user would.
    void change(Keys keys) {
        keys_ = std::move(keys);
        observers_.announce();
    }

private:
    static std::optional<std::string> textIn(const Keys& keys, std::int64_t keyCode) {
        const auto found = keys.find(keyCode);
        return found == keys.end() ? std::nullopt : std::optional(found->second);
    }

    Keys keys_;
    Keys shifted_;
    Observers observers_;
};

} // namespace glimmerly
