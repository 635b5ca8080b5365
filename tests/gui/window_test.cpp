#include <QAbstractItemModelTester>
#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <array>
#include <memory>

#include "resources/zelqIds.h"

#include "GuiTest.h"

using testing::ElementsAre;
using testing::SizeIs;

namespace {

class WindowTest : public GuiTest {
protected:
    /// Opens a menu by its mnemonic and chooses an item by its own.
    void choose(Qt::Key menu, Qt::Key item) {
        QTest::keyClick(&window(), menu, Qt::AltModifier);
        ASSERT_NE(QApplication::activePopupWidget(), nullptr);
        QTest::keyClick(QApplication::activePopupWidget(), item);
    }
    QAction* item(int id) { return window().findChild<QAction*>(QString::number(id)); }
};

TEST_F(WindowTest, MenusHaveTheirItemsInOrder) {
    const std::array<QString, 6> expected{
        "&File|&Load...|&Merge...|&Unload...||&Write log to disk...||E&xit",
        "&Edit|&Select all \tCtrl+/|&Deselect all \tCtrl+\\||&Reverse selections",
        "F&ilters|&Entry types...|&Times...|&Dates...|&PIDs...|T&IDs...|&Major errors...|"
        "Mi&nor errors...|Detect p&oints...|&Functions...||&Remove all filters",
        "&Columns|&Entry type|E&xpandability|&Time|&Date|&PID|T&ID|&Major error|Mi&&nor error|"
        "Detect p&oint|DP T&ype|&Function",
        "E&xpansion|&Expand|&Unexpand||E&xpand all|Unex&pand all||Expand &selected|"
        "Unexpand se&lected||Expand &non-selected|Unexpand non-sele&cted",
        "&Display|Display &all||Display only &selected|Display only &non-selected||"
        "Display only &expanded|Display only non-e&xpanded"};
    ASSERT_THAT(window().menuBar()->actions(), SizeIs(expected.size()));
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const QAction* const title = window().menuBar()->actions()[static_cast<qsizetype>(i)];
        QString texts = title->text();
        for (const QAction* action : title->menu()->actions()) {
            texts += '|' + (action->isSeparator() ? QString() : action->text());
            EXPECT_TRUE(action->isSeparator() || action->isEnabled());
        }
        EXPECT_EQ(texts, expected[i]);
    }
    EXPECT_EQ(item(zelqId::kExit)->text(), "E&xit");
    EXPECT_EQ(item(10742)->text(), "Mi&&nor error");
}

TEST_F(WindowTest, ColumnsHaveHeadingsWidthsAndAlignments) {
    EXPECT_EQ(window().windowTitle(), "RAS Log Browser");
    EXPECT_THAT(headings(),
                ElementsAre("Log Entry Type", "", "Time", "Date", "PID", "TID", "Major Error",
                            "Minor Error", "Detect Point", "Detect Point Type", "Function"));
    EXPECT_EQ(table().columnWidth(1), 20);
    load(folder.write("one.log", logImage({{.name = "ProcessJob(int)"}})));
    for (int i = 0; i < static_cast<int>(kColumnCount); ++i) {
        const bool number = i >= 4 && i <= 8;
        const QVariant alignment = table().model()->index(0, i).data(Qt::TextAlignmentRole);
        EXPECT_EQ(alignment.value<Qt::Alignment>(),
                  (number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter)
            << i;
        const QVariant heading =
            table().model()->headerData(i, Qt::Horizontal, Qt::TextAlignmentRole);
        EXPECT_EQ(heading.isValid(), i != 1);
        EXPECT_TRUE(i == 1 || heading.value<Qt::Alignment>() == (Qt::AlignLeft | Qt::AlignBottom));
        EXPECT_TRUE(item(zelqId::kFirstColumn + i)->isChecked());
    }
    EXPECT_EQ(table().columnWidth(1), 20);
    const int needed = table().fontMetrics().horizontalAdvance("ProcessJob");
    EXPECT_GE(table().columnWidth(10), needed);
}

TEST_F(WindowTest, EntryTypesHaveFourDistinctIcons) {
    load(folder.write(
        "types.log",
        logImage({{.type = 0x0003}, {.type = 0x0005}, {.type = 0x2002}, {.type = 0x0004}})));
    std::vector<QImage> images;
    for (int i = 0; i < 4; ++i) {
        const QVariant icon = table().model()->index(i, 0).data(Qt::DecorationRole);
        images.push_back(icon.value<QIcon>().pixmap(16, 16).toImage());
        EXPECT_EQ(images.back().size(), QSize(16, 16));
        QImage empty(images.back().size(), images.back().format());
        empty.fill(Qt::transparent);
        EXPECT_NE(images.back(), empty);
        for (int other = 0; other < i; ++other) {
            EXPECT_NE(images.back(), images[static_cast<std::size_t>(other)]) << i << other;
        }
        EXPECT_FALSE(table().model()->index(i, 1).data(Qt::DecorationRole).isValid());
    }
}

TEST_F(WindowTest, AHiddenColumnComesBackInItsOwnPlace) {
    QAbstractItemModelTester tester(table().model(),
                                    QAbstractItemModelTester::FailureReportingMode::Fatal);
    load(folder.write("one.log", logImage({{.hour = 7, .pid = 5}})));
    const std::vector<QString> all = headings();
    const std::vector<QString> cells = row(0);
    table().setColumnWidth(3, 123);  // as a user who drags the heading's edge
    for (const Qt::Key key : {Qt::Key_D, Qt::Key_E, Qt::Key_F, Qt::Key_X}) {
        choose(Qt::Key_C, key);
    }
    EXPECT_THAT(headings(), ElementsAre("Time", "PID", "TID", "Major Error", "Minor Error",
                                        "Detect Point", "Detect Point Type"));
    EXPECT_THAT(row(0), ElementsAre("07:00:00", "5", "0", "0", "0", "0", ""));
    EXPECT_FALSE(item(10738)->isChecked());
    for (const Qt::Key key : {Qt::Key_X, Qt::Key_F, Qt::Key_D, Qt::Key_E}) {
        choose(Qt::Key_C, key);
    }
    EXPECT_EQ(headings(), all);
    EXPECT_EQ(row(0), cells);
    EXPECT_TRUE(item(10738)->isChecked());
    EXPECT_EQ(table().columnWidth(1), 20);
    EXPECT_EQ(table().columnWidth(3), 123);
    for (int id = zelqId::kFirstColumn; id <= zelqId::kLastColumn; ++id) {
        EXPECT_TRUE(window().command(id));
    }
    EXPECT_THAT(headings(), SizeIs(0));
}

TEST_F(WindowTest, TheWindowStandsInTheMiddleOfTheDesktop) {
    EXPECT_EQ(zelqBWindow::initialRectangle({1024, 768}), QRect(205, 96, 614, 576));
    EXPECT_EQ(zelqBWindow::initialRectangle({1023, 767}), QRect(205, 96, 613, 575));
    const QRect expected = zelqBWindow::initialRectangle(window().screen()->size());
    EXPECT_EQ(window().frameGeometry().topLeft(), expected.topLeft());
    EXPECT_EQ(window().size(), expected.size());
}

TEST_F(WindowTest, OnlyCommandsOfTheTableAreHandled) {
    for (const int id : {0, 10711, 10716, 10717, 10718, 10723, 10734, 10746, 10755, 10761, 61537}) {
        EXPECT_FALSE(window().command(id)) << id;
    }
    EXPECT_TRUE(window().command(0x10000 + 10740));  // the low 16 bits count
    EXPECT_THAT(headings(), SizeIs(kColumnCount - 1));
}

TEST_F(WindowTest, ExitClosesTheWindow) {
    choose(Qt::Key_F, Qt::Key_X);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window().isVisible(); }));
}

TEST_F(WindowTest, ClosingStopsWhatIsBeingRead) {
    std::string image;
    for (int i = 0; i < 200000; ++i) {
        appendEntry(image, {});
    }
    browser.setFileName(folder.write("large.log", image));
    browser.loadLog();
    browser.mergeLog();
    EXPECT_TRUE(browser.isBusy());
    window().close();
    EXPECT_FALSE(browser.isBusy());
    QTest::qWait(50);
    EXPECT_EQ(browser.logs().logCount(), 0);
    EXPECT_EQ(table().model()->rowCount(), 0);
}

}  // namespace
