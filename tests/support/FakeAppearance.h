#pragma once

#include "platform/Appearance.h"

namespace glimmerly {

/// A desktop whose colour scheme the test changes.
class FakeAppearance : public Appearance {
public:
    [[nodiscard]] ColorScheme colorScheme() const override { return scheme_; }
    [[nodiscard]] Observation observe(std::function<void()> observer) override {
        return observers_.add(std::move(observer));
    }

    void change(ColorScheme scheme) {
        scheme_ = scheme;
        observers_.announce();
    }

private:
    ColorScheme scheme_ = ColorScheme::light;
    Observers observers_;
};

} // namespace glimmerly
