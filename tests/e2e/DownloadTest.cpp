// Download: the panel that asks where to save, and what lies there once it is answered.
#include "tests/e2e/support/Editor.h"
#include "tests/support/ScratchDirectory.h"

namespace glimmerly::e2e {
namespace {

class Download : public testing::Test {
protected:
    Download() { std::filesystem::create_directory(place); }

    /// Draws in a new overlay, presses Download, and waits until the panel has the keyboard.
    [[nodiscard]] testing::AssertionResult openPanel() {
        if (const auto open = session.openOverlay(); !open)
            return open;
        if (const auto selected = editor.select({300, 200}, {900, 600}); !selected)
            return selected;
        editor.tap("Rectangle tool");
        editor.drag({350, 250}, {500, 400});
        if (const auto painted = editor.waitForPainting(); !painted)
            return painted;
        drawn = editor.shown();
        editor.tap("Download");
        return waitForWindows(1);
    }
    /// Waits until there are so many windows, all of the panel, and the newest has the keyboard.
    [[nodiscard]] testing::AssertionResult waitForWindows(std::size_t count) {
        const auto haveKeyboard = [&] {
            const auto windows = client.managedWindows();
            return windows.size() == count && session.program.overlays().empty() &&
                   client.focusedWindow() == windows.back();
        };
        return waitUntil(haveKeyboard) ? testing::AssertionSuccess()
                                       : testing::AssertionFailure() << "no panel\n"
                                                                     << session.program.diagnostics();
    }
    /// Replaces the name that the panel offers, and waits until the panel has gone.
    [[nodiscard]] testing::AssertionResult answer(const std::filesystem::path& file) {
        type(file);
        return waitForNoPanel();
    }
    void type(const std::filesystem::path& file) const {
        session.robot.type({Key::leftControl, Key::a});
        session.robot.typeText(file.string());
        session.robot.type({Key::returnKey});
    }
    [[nodiscard]] testing::AssertionResult finish(Key key) {
        session.robot.type({key});
        return waitForNoPanel();
    }
    [[nodiscard]] testing::AssertionResult waitForNoPanel() const {
        return waitUntil([this] { return client.managedWindows().empty(); })
                   ? testing::AssertionSuccess()
                   : testing::AssertionFailure() << "the panel stays";
    }
    [[nodiscard]] testing::AssertionResult isTheSelection(const std::filesystem::path& file) const {
        if (!waitUntil([&] { return std::filesystem::exists(file); }))
            return testing::AssertionFailure() << "no " << file;
        const auto saved = decodePng(contentOf(file));
        if (!saved || saved->size() != editor.selection().size())
            return testing::AssertionFailure() << file << " is no picture of the selection's size";
        const auto inner = editor.inner();
        return samePixels(saved->view({inner.x - editor.selection().x, inner.y - editor.selection().y,
                                       inner.width, inner.height}),
                          drawn);
    }

    Session session;
    const XClient& client = session.desktop.client();
    Editor editor{session, 1};
    std::filesystem::path place = session.desktop.home() / "saved";
    Bitmap drawn; ///< what the screen showed of the selection
};

TEST_F(Download, SavesTheSelectionUnderTheNameTyped) {
    const std::pair<const char*, const char*> cases[] = {{"whole.PNG", "whole.PNG"},
                                                         {"plain", "plain.png"},
                                                         {"two.parts", "two.parts.png"},
                                                         {"dot.", "dot.png"}};
    for (const auto& [typed, written] : cases) {
        ASSERT_TRUE(openPanel()) << typed;
        ASSERT_TRUE(answer(place / typed));
        EXPECT_TRUE(isTheSelection(place / written));
    }
    EXPECT_EQ(namesIn(place),
              (std::vector<std::string>{"dot.png", "plain.png", "two.parts.png", "whole.PNG"}));
    EXPECT_TRUE(session.program.captureFiles().empty());
}

TEST_F(Download, TheNameOfferedSavesBesideTheLastOne) {
    ASSERT_TRUE(openPanel());
    ASSERT_TRUE(answer(place / "first"));
    ASSERT_TRUE(isTheSelection(place / "first.png"));
    ASSERT_TRUE(openPanel());
    ASSERT_TRUE(finish(Key::returnKey));
    const auto isSaved = [this] {
        return namesIn(place).size() == 2 && !namesIn(place).front().starts_with('.');
    };
    ASSERT_TRUE(waitUntil(isSaved));
    const auto name = namesIn(place).front();
    EXPECT_TRUE(name.starts_with("Glimmerly Capture ") && name.ends_with(".png")) << name;
    EXPECT_TRUE(isTheSelection(place / name));
}

TEST_F(Download, AsksBeforeItReplacesAndStaysWhereNothingCanBeWritten) {
    writeContent(place / "there.png", "before");
    ASSERT_TRUE(openPanel());
    for (const char* typed : {"there.", "missing/picture"}) {
        type(place / typed);
        ASSERT_TRUE(waitForWindows(2)) << typed;
        session.robot.type({Key::escape});
        ASSERT_TRUE(waitForWindows(1));
    }
    EXPECT_EQ(contentOf(place / "there.png"), "before");
    type(place / "there");
    ASSERT_TRUE(waitForWindows(2));
    session.robot.type({Key::tab});
    ASSERT_TRUE(finish(Key::space));
    ASSERT_TRUE(waitUntil([this] { return contentOf(place / "there.png") != "before"; }));
    EXPECT_TRUE(isTheSelection(place / "there.png"));
}

TEST_F(Download, AnOverlayOpensAndClosesAboveThePanelAndItsQuestion) {
    writeContent(place / "there.png", "before");
    ASSERT_TRUE(openPanel());
    EXPECT_TRUE(session.openOverlay());
    session.robot.type({Key::escape});
    ASSERT_TRUE(waitForWindows(1));
    type(place / "there.png");
    ASSERT_TRUE(waitForWindows(2)) << "the question";
    EXPECT_TRUE(session.openOverlay());
    session.robot.type({Key::escape});
    ASSERT_TRUE(waitForWindows(2));
    session.robot.type({Key::escape});
    ASSERT_TRUE(waitForWindows(1));
    ASSERT_TRUE(finish(Key::escape));
    EXPECT_EQ(contentOf(place / "there.png"), "before");
}

TEST_F(Download, WhatCannotBeWrittenIsLoggedAndWhatIsCancelledIsNot) {
    session.clipboard.setText(session.desktop, "kept");
    ASSERT_TRUE(openPanel());
    ASSERT_TRUE(finish(Key::escape));
    ASSERT_TRUE(openPanel());
    ASSERT_TRUE(answer("/proc/picture.png"));
    const auto failure = "writeCroppedImagePNG returned false after save panel";
    ASSERT_TRUE(session.program.waitForLog(failure));
    ASSERT_EQ(session.program.log(failure).size(), 1U) << "and none for the panel that was cancelled";
    EXPECT_EQ(session.program.log(failure).front()["metadata"].value("destination", ""), "picture.png");
    const auto reason = session.program.log("Atomic PNG write failed from overlay save");
    ASSERT_EQ(reason.size(), 1U);
    EXPECT_TRUE(reason.front()["metadata"].contains("errorCode")) << reason.front();

    EXPECT_TRUE(namesIn(place).empty());
    EXPECT_TRUE(session.program.captureFiles().empty());
    EXPECT_EQ(session.clipboard.text(), "kept");
    EXPECT_TRUE(session.copySelection({10, 10}, {60, 60})) << "the next capture is as good as the first";
}

} // namespace
} // namespace glimmerly::e2e
