// What a test with the real panel, on a real desktop, does not see of Download.
#include "overlay/toolbar/OverlayToolbarView.h"
#include "tests/overlay/ControllerFixture.h"

#include <regex>

namespace glimmerly {
namespace {

class SaveSelection : public ControllerFixture {
protected:
    SaveSelection() { controller->presentOverlay(capture); }

    void download() {
        controller->window()->contentView()->toolbar().onDownloadTapped();
        mainQueue.runAll();
    }

    std::filesystem::path capture = newCapture();
};

TEST_F(SaveSelection, ClosesTheOverlayThenAsksAndWrites) {
    select();
    savePanel.answer = {SavePanelResponse::ok, directory.path() / "picture"};
    bool wasClosed = false;
    savePanel.onRun = [&] {
        wasClosed = !controller->window() && !exists(capture);
        now += std::chrono::minutes(1);
    };
    now += std::chrono::microseconds(1'234'567);
    download();
    ASSERT_EQ(telemetry.events.size(), 2u);
    EXPECT_EQ(telemetry.events[1],
              (FakeTelemetry::Event{"overlay_dismissed", {{"source", "save"}, {"overlay_active_ms", 1234}}}))
        << "the time in the panel does not count";
    EXPECT_TRUE(wasClosed);
    ASSERT_EQ(savePanel.requests.size(), 1u);
    const std::regex name(R"(Glimmerly Capture \d{4}-\d\d-\d\d \d\d\.\d\d\.\d\d\.png)");
    EXPECT_TRUE(std::regex_match(savePanel.requests[0].nameField, name)) << savePanel.requests[0].nameField;
    EXPECT_TRUE(exists(directory.path() / "picture.png"));
}

TEST_F(SaveSelection, WithoutAFileItIsNotDismissed) {
    const struct {
        SavePanelAnswer answer;
        std::vector<std::string> logged;
    } cases[] = {
        {{SavePanelResponse::cancel, std::nullopt}, {}},
        {{SavePanelResponse::ok, std::nullopt},
         {"Save sheet completed without a URL despite non-cancel response"}},
        {{SavePanelResponse::ok, directory.path() / "missing" / "picture.png"},
         {"Atomic PNG write failed from overlay save",
          "writeCroppedImagePNG returned false after save panel"}},
    };
    for (const auto& [answer, logged] : cases) {
        controller->closeOverlay();
        controller->presentOverlay(newCapture());
        select();
        const auto before = log.records().size();
        savePanel.answer = answer;
        download();
        std::vector<std::string> messages;
        for (std::size_t i = before; i < log.records().size(); ++i)
            messages.push_back(log.records()[i].message);
        EXPECT_EQ(messages, logged);
        EXPECT_EQ(telemetry.events.back().name, "overlay_opened");
        EXPECT_TRUE(directory.names().empty());
    }
}

TEST_F(SaveSelection, WithoutASelectionTheOverlayStaysOpen) {
    download();
    EXPECT_TRUE(controller->window());
    EXPECT_TRUE(exists(capture));
    EXPECT_TRUE(savePanel.requests.empty());
    EXPECT_EQ(log.withMessage("Save requested without a valid selection bitmap").size(), 1u);
}

TEST_F(SaveSelection, DoneCopiesAndCloseDropsTheCapture) {
    select();
    controller->window()->contentView()->toolbar().onDoneTapped();
    EXPECT_FALSE(controller->window());
    ASSERT_TRUE(pasteboard.image);
    EXPECT_EQ(telemetry.events.back(),
              (FakeTelemetry::Event{"overlay_dismissed", {{"source", "copy"}, {"overlay_active_ms", 0}}}));
    controller->presentOverlay(newCapture());
    controller->window()->contentView()->toolbar().onCloseTapped();
    EXPECT_FALSE(controller->window());
    EXPECT_FALSE(exists(capture));
    EXPECT_EQ(telemetry.events.back().properties.at("source"), "close");
}

} // namespace
} // namespace glimmerly
