#pragma once

#include "capture/onboarding/PermissionsOnboardingModel.h"
#include "capture/permission/ScreenRecordingPermission.h"
#include "tests/support/FakeApplication.h"
#include "tests/support/FakeMainQueue.h"
#include "tests/support/FakePreferences.h"
#include "tests/support/FakeScreenCapture.h"
#include "tests/support/FakeScreenRecordingAccess.h"
#include "tests/support/FakeTelemetry.h"
#include "tests/support/LogCapture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace glimmerly {

/// A desktop that withholds the permission until the test grants it.
struct OnboardingFixture : testing::Test {
    OnboardingFixture() { access.granted = false; }

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
    FakeMainQueue queue;
    FakeScreenCapture screenCapture{queue};
    FakeScreenRecordingAccess access;
    ScreenRecordingPermission permission{access, screenCapture, 77};
    FakePreferences preferences;
    FakeApplication application;
    FakeTelemetry telemetry;
    PermissionsOnboardingServices services{.permission = permission,
                                           .preferences = preferences,
                                           .application = application,
                                           .mainQueue = queue,
                                           .telemetry = telemetry};
};

} // namespace glimmerly
