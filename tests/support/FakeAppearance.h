#pragma once

#include "platform/Appearance.h"

#include <vector>

namespace glimmerly {

/// A desktop whose colour scheme the test changes.
class FakeAppearance : public Appearance {
public:
    [[nodiscard]] ColorScheme colorScheme() const override { return scheme_; }
    void onChange(std::function<void()> handler) override { handlers_.push_back(std::move(handler)); }

    void change(ColorScheme scheme) {
        scheme_ = scheme;
        for (const auto& handler : handlers_)
            handler();
    }

private:
    ColorScheme scheme_ = ColorScheme::light;
    std::vector<std::function<void()>> handlers_;
};

} // namespace glimmerly
