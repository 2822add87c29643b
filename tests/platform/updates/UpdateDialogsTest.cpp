#include "platform/linux/updates/UpdateError.h"
#include "platform/linux/updates/dialogs/ReleaseNotes.h"
#include "platform/linux/updates/dialogs/StandardUpdateDialogs.h"
#include "platform/linux/updates/dialogs/UpdateWindow.h"
#include "tests/support/Widgets.h"

#include <QApplication>
#include <QKeyEvent>
#include <QProgressBar>
#include <QTextBlock>
#include <gtest/gtest.h>

namespace glimmerly {
namespace {

class UpdateDialogsTest : public testing::Test {
protected:
    [[nodiscard]] QStringList buttons() {
        QStringList labels;
        for (const auto* button : window().findChildren<QPushButton*>())
            labels << button->accessibleName();
        return labels;
    }
    UpdateWindow& window() {
        // What was taken away is gone.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        return *dialogs.window();
    }
    void press(const QString& label) {
        widgetNamed<QPushButton>(label, window()).click();
        QCoreApplication::processEvents();
    }
    void type(Qt::Key key, bool isRepeated = false) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, QString(), isRepeated);
        QCoreApplication::sendEvent(&window(), &event);
        QCoreApplication::processEvents();
    }
    std::optional<UpdateAnswer> offer(Urgency urgency, Replaceability replaceability,
                                      const std::function<void()>& act) {
        std::optional<UpdateAnswer> answer;
        dialogs.showAvailable({.item = {.version = "2.0", .notes = "<b>new</b>", .urgency = urgency},
                               .currentVersion = "1.0",
                               .replaceability = replaceability},
                              Prominence::inFront, [&](UpdateAnswer given) { answer = given; });
        act();
        return answer;
    }

    StandardUpdateDialogs dialogs{"Glimmerly"};
};

TEST_F(UpdateDialogsTest, AnAvailableUpdateIsAnsweredByButtonsAndKeys) {
    const auto normal = Urgency::normal;
    const auto here = Replaceability::replaceable;
    const struct {
        std::function<void()> act;
        UpdateAnswer answer;
    } cases[] = {
        {[&] { press("Install"); }, UpdateAnswer::install},
        {[&] { press("Remind me later"); }, UpdateAnswer::later},
        {[&] { press("Skip this version"); }, UpdateAnswer::skip},
        {[&] { type(Qt::Key_Return); }, UpdateAnswer::install},
        {[&] { type(Qt::Key_Escape); }, UpdateAnswer::later},
        {[&] { window().close(); }, UpdateAnswer::later},
    };
    for (const auto& [act, answer] : cases)
        EXPECT_EQ(offer(normal, here, act), answer);
    EXPECT_EQ(offer(normal, Replaceability::managedElsewhere, [&] { press("Open download page"); }),
              UpdateAnswer::openDownloadPage);
    EXPECT_FALSE(offer(normal, here, [&] { type(Qt::Key_Return, true); })) << "held down since before";

    int answers = 0;
    dialogs.showUpToDate("1.0", NoUpdateReason::onLatestVersion, [&] { ++answers; });
    auto* ok = window().findChild<QPushButton*>();
    ok->click();
    ok->click(); // before the first click is delivered
    QCoreApplication::processEvents();
    window().close();
    EXPECT_EQ(answers, 1);

    (void)offer(Urgency::critical, here, [] {});
    EXPECT_FALSE(buttons().contains("Skip this version"));
    EXPECT_EQ(window().windowTitle(), "Glimmerly 2.0 is available");
    dialogs.close();
    EXPECT_EQ(dialogs.window(), nullptr);
}

TEST_F(UpdateDialogsTest, AnErrorOffersTheDownloadPageWhereTheFolderIsAllThatIsInTheWay) {
    const auto folder = UpdateErrorCode::notReplaceable;
    const struct {
        Error error;
        const char* title;
        QStringList buttons;
    } cases[] = {
        {updateError(folder), "The update did not work", {"Close", "Open download page"}},
        {updateError(UpdateErrorCode::notInstalled, Error::posix(EINVAL, "")),
         "The update did not work",
         {"Close", "Open download page"}},
        {updateError(folder, Error::posix(ENOSPC, "")), "The update did not work", {"OK"}},
        {updateError(folder, Error::posix(EWOULDBLOCK, "")), "The update did not work", {"OK"}},
        {updateError(UpdateErrorCode::feedInvalid), "The check for updates did not work", {"OK"}},
    };
    for (const auto& [error, title, expected] : cases) {
        dialogs.showError(error, Prominence::inFront, [](ErrorAnswer) {});
        EXPECT_EQ(window().windowTitle(), title);
        EXPECT_EQ(buttons(), expected);
    }
}

TEST_F(UpdateDialogsTest, ProgressIsShownAndCancelled) {
    int cancelled = 0;
    dialogs.showDownloading({.version = "2.0"}, [&] { ++cancelled; });
    dialogs.showProgress({.received = 1'500'000, .total = 3'000'000});
    const auto* bar = window().findChild<QProgressBar*>();
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(2 * bar->value(), bar->maximum());
    press("Cancel");
    EXPECT_EQ(cancelled, 1);
    dialogs.showInstalling({.version = "2.0"});
    EXPECT_TRUE(buttons().isEmpty());
    window().close();
    EXPECT_TRUE(window().isVisible()) << "too late to close";
}

TEST(ReleaseNotes, TakeOverStructureAndNothingElse) {
    const ReleaseNotes notes(
        "<h1>New</h1><p style='color:red;font-size:90px'>It is <b>fast</b>.<script>alert(1)"
        "</script><img src='https://a.example/x.png'> <a href='https://a.example/'>more</a> "
        "<a href='file:///etc/passwd'>less</a></p><ul><li>one</li></ul>",
        NotesFormat::html);
    EXPECT_EQ(notes.toPlainText(), "New\nIt is fast. more less\none");
    EXPECT_EQ(notes.textCursor().position(), 0) << "they are read from the top";
    bool isBold = false;
    QStringList links;
    for (auto block = notes.document()->begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const auto format = part.fragment().charFormat();
            EXPECT_EQ(format.fontPointSize(), 0);
            EXPECT_FALSE(format.isImageFormat());
            EXPECT_TRUE(format.isAnchor() || format.foreground().style() == Qt::NoBrush);
            isBold = isBold || (part.fragment().text() == "fast" && format.fontWeight() > QFont::Normal);
            if (format.isAnchor())
                links << format.anchorHref();
        }
    }
    EXPECT_TRUE(isBold);
    EXPECT_EQ(links, QStringList{"https://a.example/"});
    EXPECT_EQ(ReleaseNotes("<b>1 < 2</b>", NotesFormat::plainText).toPlainText(), "<b>1 < 2</b>");
}

} // namespace
} // namespace glimmerly
