#pragma once

#include "capture/onboarding/PermissionsOnboardingModel.h"
#include "capture/permission/ScreenRecordingPermission.h"
#include "tests/support/FakeDesktop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace glimmerly {

/// A desktop that withholds the permission until the test grants it.
struct OnboardingFixture : testing::Test, FakeDesktop {
    OnboardingFixture() { screenRecording.granted = false; }

    [[nodiscard]] std::string storedAnswer() const {
        return preferences.data("hasCompletedPermissionsOnboarding").value_or("none");
    }

    /// The usage events so far.
    [[nodiscard]] std::vector<std::string> events() const {
        std::vector<std::string> names;
        for (const auto& event : telemetry.events)
            names.push_back(event.name);
        return names;
    }

    LogCapture log;
    ScreenRecordingPermission permission{screenRecording, screenCapture, 77};
    PermissionsOnboardingServices services{.permission = permission,
                                           .preferences = preferences,
                                           .application = application,
                                           .mainQueue = mainQueue,
                                           .telemetry = telemetry};
};

} // namespace glimmerly
