#include "bugreports/form/BugReportSheet.h"

#include "bugreports/form/BugReportSheetModel.h"
#include "bugreports/form/PlaceholderTextView.h"
#include "tests/support/FakeBugReports.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Widgets.h"
#include "ui/UiSheet.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace glimmerly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto documented = "Bug report submission returned documented API error";
constexpr auto unexpected = "Bug report submission failed with unexpected transport/decoding path";

struct BugReportSheetTest : testing::Test {
    BugReportSheetTest() {
        window.resize(720, 600);
        window.show();
        QApplication::setActiveWindow(&window);
    }
    template <typename T>
    T& find(const QString& name) {
        return widgetNamed<T>(name, window);
    }
    /// Types into a field as a person would.
    void fill(const QString& field, const QString& text) {
        find<QWidget>(field).setFocus();
        QTest::keyClicks(window.focusWidget(), text);
    }
    [[nodiscard]] bool canReport() { return find<QPushButton>("Report").isEnabled(); }
    [[nodiscard]] std::vector<std::string> texts() const { return shownTexts(window); }

    LogCapture log;
    FakeBugReports service;
    int dismissals = 0;
    QWidget window;
    std::unique_ptr<BugReportSheetModel> model =
        std::make_unique<BugReportSheetModel>(service, [this] { ++dismissals; });
    UiSheet* sheet = new UiSheet(window, new BugReportSheet(*model));
};

TEST_F(BugReportSheetTest, StartsEmptyAndSaysWhatItNeeds) {
    EXPECT_THAT(texts(), ElementsAre("Report a Bug",
                                     "Tell us what went wrong. Your email is optional, but helps us follow "
                                     "up if we need more details.",
                                     "Title", "Required", "Email", "Description", "Required"));
    EXPECT_EQ(find<QLineEdit>("Title").placeholderText(), "Short summary");
    EXPECT_FALSE(canReport());
    fill("Title", "  ");
    fill("Description", "it broke");
    EXPECT_FALSE(canReport()) << "white space is no title";
    fill("Title", "Crash");
    EXPECT_TRUE(canReport()) << "the address may stay empty";
}

TEST_F(BugReportSheetTest, ReturnReportsButNotFromTheDescription) {
    fill("Description", "one");
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    fill("Description", "two");
    fill("Title", " Crash ");
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    EXPECT_THAT(service.reports, ElementsAre(FakeBugReports::Report{"Crash", "", "one\ntwo"}));

    EXPECT_TRUE(find<QWidget>("Sending the report").isVisible());
    EXPECT_FALSE(canReport());
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    model->report();
    EXPECT_EQ(service.reports.size(), 1u) << "one at a time";
    service.answer("report-1");
    EXPECT_EQ(dismissals, 1);
    EXPECT_FALSE(model->isReporting());
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST_F(BugReportSheetTest, AFailureIsExplainedUntilTheNextReport) {
    fill("Title", "Crash");
    fill("Description", "it broke");
    const std::tuple<BugReportFailure, const char*, const char*> cases[] = {
        {BugReportAPIError(BugReportAPIError::HttpError{400, "title_too_long"}), documented,
         "The title is too long. Keep it under 300 characters."},
        {Error("curl", 7, "no route"), unexpected,
         "We could not submit your bug report. Check your connection and try again."},
    };
    for (const auto& [failure, line, message] : cases) {
        QTest::mouseClick(&find<QPushButton>("Report"), Qt::LeftButton);
        EXPECT_EQ(texts().size(), 7u) << "the last failure is forgotten";
        service.answer(std::unexpected(failure));
        EXPECT_EQ(texts().back(), message);
        const auto lines = log.withMessage(line);
        ASSERT_EQ(lines.size(), 1u);
        EXPECT_EQ(lines[0].category, "BugReport");
        fill("Title", "!");
        EXPECT_EQ(texts().back(), message) << "typing does not hide it";
        EXPECT_TRUE(canReport());
    }
    EXPECT_EQ(find<QLineEdit>("Title").text(), "Crash!!");
    EXPECT_EQ(dismissals, 0);
}

TEST_F(BugReportSheetTest, EscapeClosesTheFormWhateverIsUnderWay) {
    fill("Title", "Crash");
    fill("Description", "it broke");
    find<QPushButton>("Report").click();
    QTest::keyClick(window.focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(dismissals, 1);
    delete sheet;
    model.reset();
    service.answer(std::unexpected(Error("curl", 7, "no route")));
    EXPECT_EQ(log.withMessage(unexpected).size(), 1u) << "nobody else hears of it";
}

TEST_F(BugReportSheetTest, AWindowThatIsTooLowScrollsTheForm) {
    window.resize(680, 300);
    QCoreApplication::processEvents();
    const auto& area = *sheet->findChild<QScrollArea*>();
    EXPECT_TRUE(sheet->rect().contains(area.geometry()));
    EXPECT_EQ(area.widget()->width(), area.viewport()->width());
    auto& cancel = find<QPushButton>("Cancel");
    EXPECT_FALSE(area.viewport()->rect().contains(cancel.mapTo(area.viewport(), cancel.rect().center())));
    find<QWidget>("Description").setFocus();
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(cancel.hasFocus());
    EXPECT_TRUE(area.viewport()->rect().contains(cancel.mapTo(area.viewport(), cancel.rect().center())));
}

TEST_F(BugReportSheetTest, ThePlaceholderStandsWhereTheTextWill) {
    auto& editor = static_cast<PlaceholderTextView&>(find<QWidget>("Description"));
    const auto inked = [&] {
        const QImage picture = editor.grab().toImage();
        return inkOf(picture, picture.pixelColor(picture.width() / 2, picture.height() - 2));
    };
    const QRect placeholder = inked();
    EXPECT_FALSE(placeholder.isNull());
    editor.setBoundText("What happened? What did you expect instead?");
    EXPECT_EQ(inked(), placeholder);
    EXPECT_NEAR(placeholder.left(), 10, 2);
    editor.setBoundText("");
    EXPECT_EQ(inked(), placeholder);
}

} // namespace
} // namespace glimmerly
