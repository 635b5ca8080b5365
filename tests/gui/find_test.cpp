#include <QAccessible>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <algorithm>

#include "dialogs/zelqExpansionFinder.h"
#include "support/TestSession.h"
#include "ui/zelqGoToTime.h"
#include "ui/zelqRecordFinder.h"
#include "widgets/zelqElidedLabel.h"
#include "widgets/zelqLineView.h"

#include "GuiTest.h"

using testing::ElementsAre;

namespace {

class FindTest : public GuiTest {
protected:
    static QString outcome(const QWidget& bar) { return bar.findChild<zelqElidedLabel*>()->text(); }
    static QLineEdit& field(const QWidget& bar) { return *bar.findChild<QLineEdit*>(); }
    static void says(const QWidget& bar, const QString& text) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return outcome(bar) == text; }, 20000))
            << outcome(bar).toStdString() << " not " << text.toStdString();
    }
    /// At once, so that nothing is searched for before all of it is there.
    static void type(const QWidget& bar, const QString& text) { field(bar).setText(text); }
    static QAbstractButton* selectAll(const QWidget& bar) {
        const auto buttons = bar.findChildren<QAbstractButton*>();
        return *std::ranges::find(buttons, "Select All Matches", &QAbstractButton::text);
    }
    int current() { return table().currentIndex().row(); }
};

TEST_F(FindTest, FollowsTheKeysAndTheRows) {
    std::vector<TestEntry> entries(50000, {.pid = 1, .name = "Other"});
    for (const std::size_t row : {70U, 20000U, 49999U}) {
        entries[row] = {.pid = 2, .name = row == 70 ? "Needle" : "needles"};
    }
    load(write("hay.log", entries));
    const QWidget& bar = window().finder().bar();
    EXPECT_FALSE(bar.isVisible());
    click(40);
    QTest::keyClick(&window(), Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(field(bar).hasFocus());
    QTest::keyClicks(&field(bar), "needle/");  // which is no accelerator here
    says(bar, "No record found");
    QTest::keyClick(&field(bar), Qt::Key_Backspace);
    says(bar, "1 of 3 records");
    EXPECT_EQ(current(), 70);
    QTest::keyClick(&field(bar), Qt::Key_S);  // goes on from the current row
    says(bar, "1 of 2 records");
    EXPECT_EQ(current(), 20000);
    QTest::keyClick(&field(bar), Qt::Key_Return);
    QTest::keyClick(&window(), Qt::Key_F3);
    says(bar, "1 of 2 records \u2013 continued from the top");
    QTest::keyClick(&field(bar), Qt::Key_Return, Qt::ShiftModifier);
    says(bar, "2 of 2 records \u2013 continued from the bottom");
    window().finder().hold(true);
    window().finder().hold(false);  // as at the end of a change that a thread prepared
    EXPECT_EQ(current(), 49999);

    // Rows change while the search goes on: it begins again and stays where it is.
    for (int i = 0; i < 20; ++i) {
        type(bar, i % 2 == 0 ? "other" : "needle");
        QTest::qWait(i % 4 * 60);
        browser.applyFilter(valueFilter(browser.session(), zelqFilterKind::Pid,
                                        i % 3 == 0 ? std::vector{2U} : std::vector{1U, 2U}));
        QTest::qWait(i % 5 * 40);
        if (i % 3 == 0) {
            browser.removeFilter(zelqFilterKind::Pid);
            unload(0);
            load(write("hay.log", entries));
        }
    }
    says(bar, "1 of 3 records");
    EXPECT_TRUE(QTest::qWaitFor([&] { return selectAll(bar)->isEnabled(); }, 20000));
    QTest::mouseClick(selectAll(bar), Qt::LeftButton);
    EXPECT_EQ(table().selectedRecords().size(), 3U);
    window().command(zelqId::kDisplayOnlySelected);
    EXPECT_THAT(column(zelqColumn::Pid), ElementsAre("2", "2", "2"));
    says(bar, "1 of 3 records");
    QTest::keyClick(&field(bar), Qt::Key_Escape);
    EXPECT_FALSE(bar.isVisible());
    EXPECT_TRUE(table().hasFocus());
    // What was looked for last is looked for again.
    QTest::keyClick(&window(), Qt::Key_F3);
    EXPECT_TRUE(bar.isVisible() && table().hasFocus());
    says(bar, "2 of 3 records");
    QTest::keyClick(&field(bar), Qt::Key_Escape);
    QTest::keyClick(&window(), Qt::Key_F, Qt::ControlModifier);
    says(bar, "2 of 3 records");
    EXPECT_EQ(field(bar).selectedText(), "needle");
}

TEST_F(FindTest, MarksBadInputAndFindsMarksThatChange) {
    load(write("two.log", {{.name = "a"}, {.name = "b"}}));
    const QWidget& bar = window().finder().bar();
    window().finder().open();
    const QAction& warning = *field(bar).actions().front();
    EXPECT_FALSE(selectAll(bar)->isEnabled() || warning.isVisible());
    QTest::keyClick(bar.findChild<QComboBox*>(), Qt::Key_R);
    type(bar, "a(");
    EXPECT_THAT(outcome(bar).toStdString(), testing::HasSubstr("Cannot search: missing )"));
    EXPECT_EQ(outcome(bar), "Cannot search: " + warning.toolTip());
    EXPECT_TRUE(warning.isVisible());
    QAccessibleInterface* const tool = QAccessible::queryAccessibleInterface(&field(bar));
    EXPECT_THAT(tool->text(QAccessible::Description).toStdString(), testing::HasSubstr(")"));
    type(bar, "^[-]$");
    says(bar, "No record found");
    EXPECT_EQ(tool->text(QAccessible::Description), "");
    EXPECT_FALSE(selectAll(bar)->isEnabled() || warning.isVisible());
    window().command(zelqId::kExpandAll);
    says(bar, "1 of 2 records");
    type(bar, "^b");
    QSignalSpy searches(&bar, SIGNAL(queryChanged()));
    QTest::keyClick(&field(bar), Qt::Key_Return);
    says(bar, "1 of 1 records");
    EXPECT_TRUE(QTest::qWaitFor([&] { return selectAll(bar)->isEnabled(); }));
    QTest::qWait(500);  // the time after which what was typed is searched for without Return
    EXPECT_EQ(searches.size(), 1);
}

TEST_F(FindTest, SelectsTheExactPlaceInExpandedData) {
    std::string ebcdic = "\xE2\xC5\xD9\xE5\xC5\xD9";  // SERVER, across two lines of the dump
    load(write("data.log", {{.name = "Server", .blocks = {{.data = std::string(13, 'x') + ebcdic}}},
                            {.name = "x"},
                            {.name = "y", .blocks = {{.address = 5, .data = "server"}}}}));
    window().command(zelqId::kExpandAll);
    zelqBExpansionWindow& expansion = browser.expansionWindow();
    expansion.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&expansion));
    QTest::keyClick(&expansion, Qt::Key_F, Qt::ControlModifier);
    const QWidget& bar = expansion.finder().bar();
    ASSERT_TRUE(field(bar).hasFocus());
    const auto selected = [&expansion] {
        QTest::keyClick(expansion.findChild<zelqLineView*>(), Qt::Key_C, Qt::ControlModifier);
        return QGuiApplication::clipboard()->text();
    };
    QTest::keyClick(expansion.findChild<zelqLineView*>(), Qt::Key_Home);
    type(bar, "no such");
    says(bar, "No record found");
    QTest::keyClick(&expansion, Qt::Key_F3);
    type(bar, "server");
    says(bar, "1 of 2 records");
    QTest::keyClick(&field(bar), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "Server");
    type(bar, "no such");
    says(bar, "No record found");
    QTest::keyClick(&expansion, Qt::Key_F3);
    EXPECT_EQ(selected(), "Server");  // not the next place of what was found before
    type(bar, "server");
    says(bar, "1 of 2 records");
    for (const QString place : {"SER\nVER", "server", "Server"}) {
        QTest::keyClick(&expansion, Qt::Key_F3);
        EXPECT_EQ(selected(), place);
    }
    QTest::keyClick(&expansion, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "server");
    says(bar, "2 of 2 records \u2013 continued from the bottom");
    QTest::keyClick(expansion.findChild<zelqLineView*>(), Qt::Key_Home);
    says(bar, "1 of 2 records \u2013 continued from the bottom");
    QTest::keyClick(expansion.findChild<zelqLineView*>(), Qt::Key_End);
    QTest::keyClick(bar.findChild<QComboBox*>(), Qt::Key_B);
    type(bar, "78E2C5 D9E5");
    says(bar, "1 of 1 records \u2013 continued from the top");
    EXPECT_EQ(selected(), "78 E2 C5 D9\nE5");
    window().command(zelqId::kUnexpandAll);
    says(bar, "No record found");
}

TEST_F(FindTest, GoesToATime) {
    load(write("times.log", {{.date = {2026, 11, 20}, .hour = 23},
                             {.hour = 8},
                             {.hour = 14, .minute = 5, .second = 30},
                             {.hour = 14, .minute = 5, .second = 31},
                             {.date = {2026, 11, 22}, .hour = 1}}));
    click(1);
    EXPECT_EQ(window().findChild<zelqGoToTime*>(), nullptr);  // nor is it read from outside
    QTest::keyClick(&window(), Qt::Key_G, Qt::ControlModifier);
    const auto& bar = *window().findChild<zelqGoToTime*>();
    ASSERT_TRUE(field(bar).hasFocus());
    for (const auto& [text, row] :
         std::initializer_list<std::pair<QString, int>>{{"14:05", 2},
                                                        {"14:05:31", 3},
                                                        {"2:05:31 pm", 3},
                                                        {"8:00 am", 1},
                                                        {"23:59", 4},
                                                        {"11-20-2026 23:00:01", 1},
                                                        {"00:00 2026/11/20", 0},
                                                        {"2026-11-21T08:00:01", 2}}) {
        type(bar, text);
        QTest::keyClick(&field(bar), Qt::Key_Return);
        EXPECT_EQ(current(), row) << text.toStdString();
        EXPECT_EQ(outcome(bar), "");
    }
    type(bar, "11-22-2026 01:00:01");
    QTest::keyClick(&field(bar), Qt::Key_Return);
    EXPECT_EQ(outcome(bar), "No row is that late");
    const QAction& warning = *field(bar).actions().front();
    for (const QString text :
         {"", "25:00", "noon", "11-21-2026", "13:00 pm", "14:05x", "1:2:3:4", "8:00 9:00"}) {
        type(bar, text);
        EXPECT_FALSE(warning.isVisible());
        QTest::keyClick(&window(), Qt::Key_G, Qt::ControlModifier);
        EXPECT_EQ(field(bar).selectedText(), text);
        QTest::keyClick(&field(bar), Qt::Key_Return);
        EXPECT_TRUE(warning.isVisible());
        EXPECT_EQ(outcome(bar), "This is no time, and no date and time such as 11-21-2026 14:05:30")
            << text.toStdString();
    }
    window().finder().open();
    EXPECT_FALSE(bar.isVisible());
}

}  // namespace
