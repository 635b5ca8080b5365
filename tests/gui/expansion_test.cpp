#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QLabel>
#include <QListView>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStatusBar>
#include <utility>

#include "support/TestSession.h"
#include "widgets/zelqLineView.h"
#include "widgets/zelqRecordDrag.h"

#include "GuiTest.h"

using testing::ElementsAre;

namespace {

/// An entry with a PID to know it by and one block of 16 bytes.
TestEntry at(std::uint8_t hour, std::uint32_t pid) {
    return {
        .hour = hour, .pid = pid, .blocks = {{.address = 0x00001000, .data = "0123456789ABCDEF"}}};
}

constexpr int kLinesPerRecord = 8;

class ExpansionTest : public GuiTest {
protected:
    ExpansionTest() { load(write("a.log", {at(1, 1), at(2, 2), at(3, 3), at(4, 4)})); }
    QWidget* expanded() {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == "15300") {
                return widget;
            }
        }
        return nullptr;
    }
    QListView* list() { return expanded()->findChild<QListView*>("32776"); }
    QString line(int number) { return list()->model()->index(number, 0).data().toString(); }
    /// The PIDs of the records whose text stands in the window, from its first summary lines.
    QString shown() {
        QStringList pids;
        for (int i = 0; i < list()->model()->rowCount(); ++i) {
            if (line(i).startsWith("Time: ")) {
                pids += line(i).section("Pid: ", 1).simplified().section(' ', 0, 0);
            }
        }
        return pids.join(' ');
    }
    void expand(int row) {
        click(row);
        EXPECT_TRUE(window().command(zelqId::kExpand));
    }
};

TEST_F(ExpansionTest, RecordsStandInTheOrderOfTheirNumbers) {
    expand(2);
    EXPECT_EQ(expanded()->frameGeometry().bottomRight(),  // the main window leaves no room
              window().screen()->availableGeometry().bottomRight());
    EXPECT_EQ(list()->horizontalScrollBar()->maximum(), 0);
    const QAbstractItemModelTester tester(list()->model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    click(0);
    QTest::mouseDClick(table().viewport(), Qt::LeftButton, {},
                       table().visualRect(table().model()->index(0, 4)).center());
    expand(1);
    expand(1);  // is expanded already
    EXPECT_EQ(shown(), "1 2 3");
    EXPECT_EQ(list()->model()->rowCount(), 3 * kLinesPerRecord);
    EXPECT_EQ(list()->geometry(), expanded()->rect());
    window().command(zelqId::kUnexpand);
    EXPECT_EQ(shown(), "1 3");
    list()->setCurrentIndex(list()->model()->index(kLinesPerRecord + 2, 0));
    // A merged log is numbered on, so that its records follow.
    merge(write("b.log", {at(0, 10), at(5, 11)}));
    window().command(zelqId::kExpandAll);
    EXPECT_EQ(shown(), "1 2 3 4 10 11");
    EXPECT_EQ(list()->currentIndex().row(), 2 * kLinesPerRecord + 2);
    unload(1);
    EXPECT_EQ(shown(), "");
    merge(write("cut.log", {{.hour = 9, .entryLength = 24}}));
    click(4);
    QTest::keyClick(&table(), Qt::Key_Return);
    EXPECT_THAT(column(zelqColumn::ExpandMark), ElementsAre("+", "+", "+", "+", ""));
    window().command(zelqId::kExpand);
    EXPECT_THAT(column(zelqColumn::ExpandMark), ElementsAre("+", "+", "+", "+", " "));
}

TEST_F(ExpansionTest, LinesKeepTheAddressesTheyWereInsertedWith) {
    expand(0);
    EXPECT_EQ(line(2), " ");
    EXPECT_EQ(line(3).left(8), "00100000");
    EXPECT_EQ(line(4), "");
    EXPECT_EQ(line(5), " ");
    window().command(zelqId::kUnexpandAll);
    window().command(zelqId::kExpand);
    EXPECT_EQ(line(3).left(8), "00001000");
    // A listing counts as made when it is asked for, though it waits for its turn.
    browser.setFileName(write("b.log", {at(5, 5)}));
    browser.mergeLog();
    browser.writeLog(folder.file("out.txt"));
    expand(1);
    EXPECT_EQ(line(kLinesPerRecord + 3).left(8), "00001000");
    wait();
    EXPECT_NE(contentOf(folder.file("out.txt")).find("\n00100000  "), std::string::npos);
}

TEST_F(ExpansionTest, EachCommandHasItsRecordsAndClosingTheWindowCollapsesAll) {
    click(1);
    QTest::keyClick(&table(), Qt::Key_Return);
    struct Row {
        int command;
        const char* pids;
        const char* expanded;
    };
    for (const auto& [command, pids, expanded] :
         std::vector<Row>{{zelqId::kExpandNonSelected, "1 2 3 4", "1 2 3 4"},
                          {zelqId::kUnexpandSelected, "1 2 3 4", "1 3 4"},
                          {zelqId::kDisplayOnlyExpanded, "1 3 4", "1 3 4"},
                          {zelqId::kDisplayAll, "1 2 3 4", "1 3 4"},
                          {zelqId::kExpandSelected, "1 2 3 4", "1 2 3 4"},
                          {zelqId::kUnexpandNonSelected, "1 2 3 4", "2"},
                          {zelqId::kDisplayOnlySelected, "2", "2"},
                          {zelqId::kDisplayAll, "1 2 3 4", "2"},
                          {zelqId::kDisplayOnlyNonSelected, "1 3 4", ""},
                          {zelqId::kDisplayAll, "1 2 3 4", ""},
                          {zelqId::kExpandSelected, "1 2 3 4", "2"},
                          {zelqId::kDisplayOnlyNonExpanded, "1 3 4", ""},
                          {zelqId::kDisplayAll, "1 2 3 4", ""},
                          {zelqId::kExpandAll, "1 2 3 4", "1 2 3 4"}}) {
        EXPECT_TRUE(window().command(command));
        const std::vector<QString> cells = column(zelqColumn::Pid);
        EXPECT_EQ(QStringList(cells.begin(), cells.end()).join(' '), pids) << command;
        EXPECT_EQ(shown(), expanded) << command;
    }
    QTest::keyClick(&table(), Qt::Key_Enter);
    EXPECT_EQ(list()->model()->rowCount(), 3 * kLinesPerRecord);
    expanded()->close();
    EXPECT_FALSE(expanded()->isVisible());
    EXPECT_THAT(column(zelqColumn::ExpandMark), ElementsAre("+", "+", "+", "+"));
    expand(3);
    EXPECT_TRUE(expanded()->isVisible());
    EXPECT_EQ(shown(), "4");
    window().close();
    EXPECT_EQ(expanded(), nullptr);
}

TEST_F(ExpansionTest, LinesAreSelectedCopiedAndScrolledWithTheKeyboard) {
    expand(0);
    expand(1);
    expanded()->resize(200, 100);
    QSignalSpy copied(&browser.expansionWindow(), &zelqBExpansionWindow::copied);
    list()->setFocus();
    QTest::keyClick(list(), Qt::Key_Home);
    QTest::keyClick(list(), Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(list(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), line(0) + '\n' + line(1) + '\n');
    EXPECT_EQ(copied.takeFirst(), (QVariantList{qint64{2}, qint64{2}}));
    EXPECT_FALSE(status().contains("Copied"));  // all of it needs no word
    QTest::keyClick(list(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(list()->selectionModel()->selection().size(), 1);
    QTest::keyClick(list(), Qt::Key_End);
    EXPECT_EQ(list()->verticalScrollBar()->value(), list()->verticalScrollBar()->maximum());
    QTest::keyClick(list(), Qt::Key_Home, Qt::ShiftModifier);
    EXPECT_EQ(list()->selectionModel()->selectedRows().size(), 2 * kLinesPerRecord);
    const int page = list()->viewport()->height() / list()->fontMetrics().height();
    QTest::keyClick(list(), Qt::Key_PageDown);
    EXPECT_EQ(list()->currentIndex().row(), page);
    QTest::keyClick(list(), Qt::Key_PageUp);
    EXPECT_EQ(list()->currentIndex().row(), 0);
    QTest::keyClick(list(), Qt::Key_Right);
    EXPECT_EQ(list()->visualRect(list()->currentIndex()).left(),
              -4 * list()->fontMetrics().horizontalAdvance('0'));
    QTest::keyClick(list(), Qt::Key_Left);
    EXPECT_EQ(list()->horizontalScrollBar()->value(), 0);
    list()->verticalScrollBar()->setValue(3);
    EXPECT_EQ(list()->indexAt({5, list()->fontMetrics().height() + 2}).row(), 4);
}

TEST_F(ExpansionTest, RecordsAreMovedToTheWindowByDragging) {
    expand(3);
    const auto accepts = [this](Qt::DropActions offered, const QString& type) {
        QMimeData data;
        data.setData(type, {});
        QDragEnterEvent enter(QPoint(5, 5), offered, &data, Qt::LeftButton, {});
        QApplication::sendEvent(list()->viewport(), &enter);
        QDropEvent drop(QPointF(5, 5), offered, &data, Qt::LeftButton, {});
        drop.ignore();
        QApplication::sendEvent(list()->viewport(), &drop);
        EXPECT_EQ(drop.isAccepted(), enter.isAccepted());
        return drop.isAccepted();
    };
    EXPECT_FALSE(accepts(Qt::CopyAction | Qt::LinkAction, zelqRecordDrag::mimeType()));
    EXPECT_FALSE(accepts(Qt::MoveAction, "text/plain"));
    EXPECT_TRUE(accepts(Qt::MoveAction, zelqRecordDrag::mimeType()));
    EXPECT_EQ(table().model()->supportedDragActions(), Qt::MoveAction);
}

/// Calls `act` when a drag begins. This platform ends it before anything can be dropped.
struct AtDrag : QObject {
    explicit AtDrag(std::function<void()> function) : act(std::move(function)) {}
    bool eventFilter(QObject* /*table*/, QEvent* event) override {
        return event->type() == QEvent::ChildAdded && (act(), false);
    }
    std::function<void()> act;
};

TEST_F(ExpansionTest, DraggedRecordsAreExpandedUnlessTheirLogWasUnloadedMeanwhile) {
    merge(write("b.log", {at(5, 11)}));
    expand(0);
    click(1, Qt::ControlModifier);
    click(4, Qt::ControlModifier);
    bool unloads = true;
    AtDrag drop([this, &unloads] {
        if (std::exchange(unloads, false)) {
            unload(1);
        }
        emit browser.expansionWindow().recordsDropped();
    });
    table().installEventFilter(&drop);
    const auto drag = [this](int row) {
        QPoint at = table().visualRect(table().model()->index(row, 4)).center();
        QTest::mousePress(table().viewport(), Qt::LeftButton, {}, at);
        for (int step = 0; step < 2; ++step) {
            move(table(), at += QPoint(0, 20), {});
        }
        wait();
    };
    drag(1);
    EXPECT_EQ(shown(), "1 2");
    // Nothing is dragged any more.
    window().command(zelqId::kUnexpandAll);
    window().command(zelqId::kSelectAll);
    emit browser.expansionWindow().recordsDropped();
    EXPECT_EQ(browser.session().expanded().recordCount(), 0U);
    // Many are expanded as an operation.
    browser.setMostAtOnce(1);
    drag(0);
    EXPECT_EQ(browser.session().expanded().recordCount(), browser.session().logs().size());
}

TEST_F(ExpansionTest, ExpandingOneRecordScrollsToItAndManyDoNot) {
    window().command(zelqId::kExpandAll);
    expanded()->resize(600, 4 * list()->fontMetrics().height());
    click(2);
    window().command(zelqId::kUnexpand);
    list()->verticalScrollBar()->setValue(3);
    window().command(zelqId::kExpand);
    EXPECT_EQ(list()->indexAt({5, 1}).row(), 2 * kLinesPerRecord);
    window().command(zelqId::kUnexpandAll);
    window().command(zelqId::kExpandAll);
    EXPECT_EQ(list()->verticalScrollBar()->value(), 0);
    // The line at the top stays there when many come above it, and when they go.
    list()->verticalScrollBar()->setValue(3 * kLinesPerRecord + 2);
    click(3);
    window().command(zelqId::kUnexpandNonSelected);
    EXPECT_EQ(list()->verticalScrollBar()->value(), 2);
    window().command(zelqId::kExpandAll);
    EXPECT_EQ(list()->verticalScrollBar()->value(), 3 * kLinesPerRecord + 2);
    list()->setCurrentIndex(list()->model()->index(0, 0));
    click(0);
    window().command(zelqId::kUnexpandNonSelected);
    EXPECT_EQ(list()->currentIndex().row(), 0);
}

TEST_F(ExpansionTest, KeysGoFromOneWindowToTheOtherAndToALinesRecord) {
    window().command(zelqId::kExpandAll);
    QTest::keyClick(&window(), Qt::Key_F6);
    ASSERT_TRUE(QTest::qWaitForWindowActive(expanded()));
    list()->setCurrentIndex(list()->model()->index(2 * kLinesPerRecord + 1, 0));
    QTest::keyClick(list(), Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    EXPECT_EQ(table().selectedRecords(), std::vector{table().cursoredRecord()});
    EXPECT_EQ(table().cursoredRecord()->pid(), 3U);
    browser.applyFilter(valueFilter(browser.session(), zelqFilterKind::Pid, {1, 2}));
    QTest::keyClick(list(), Qt::Key_Enter);
    EXPECT_TRUE(status().contains("The record is not among the rows: filtered out"));
    browser.displayOnly(zelqDisplayed::NonExpanded);
    emit browser.expansionWindow().recordActivated(browser.session().parked().records().front());
    EXPECT_TRUE(status().contains("The record is not among the rows: parked"));
    emit browser.expansionWindow().copied(1000000, 4000000);
    EXPECT_TRUE(status().contains("Copied: 1,000,000 of 4,000,000 lines"));
    emit browser.expansionWindow().copied(0, 5);
    EXPECT_TRUE(status().contains("Not done: there is not enough memory"));
    QTest::keyClick(&window(), Qt::Key_F6);
    ASSERT_TRUE(QTest::qWaitForWindowActive(expanded()));
    QTest::keyClick(expanded(), Qt::Key_F6);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
}

TEST(ExpansionWindow, StandsWhereThereIsRoomBesideTheMainWindow) {
    QRect screen(0, 0, 2000, 1000);
    const auto place = [&screen](const QRect& frame, int belowMenus = 50) {
        return zelqBExpansionWindow::placeBeside(frame, belowMenus, {500, 480}, screen);
    };
    EXPECT_EQ(place({100, 20, 1000, 900}), QRect(1100, 20, 500, 480));
    EXPECT_EQ(place({900, 20, 1000, 900}), QRect(400, 20, 500, 480));
    EXPECT_EQ(place({100, 20, 1800, 400}), QRect(100, 420, 500, 480));
    EXPECT_EQ(place(screen), QRect(1500, 520, 500, 480));
    EXPECT_EQ(place(screen, 700), QRect(1500, 700, 500, 300));
    EXPECT_EQ(place(screen, 900), QRect(1500, 749, 500, 251));
    EXPECT_EQ(place({-100, -50, 1000, 900}), QRect(900, 0, 500, 480));
    EXPECT_EQ(place({100, 700, 1000, 900}), QRect(1100, 520, 500, 480));
    EXPECT_EQ(place({-50, 20, 1900, 400}), QRect(0, 420, 500, 480));
    EXPECT_EQ(place({1700, 20, 2100, 400}), QRect(1200, 20, 500, 480));
    // Where it just fits.
    EXPECT_EQ(place({500, 20, 1000, 900}), QRect(1500, 20, 500, 480));
    EXPECT_EQ(place({500, 20, 1001, 900}), QRect(0, 20, 500, 480));
    EXPECT_EQ(place({100, 20, 1800, 500}), QRect(100, 520, 500, 480));
    screen.setWidth(800);
    EXPECT_EQ(place({400, 20, 300, 400}), QRect(300, 420, 500, 480));
    screen = {1000, 2000, 2000, 1000};  // a second one
    EXPECT_EQ(place({1300, 2020, 1650, 900}, 2050), QRect(2500, 2520, 500, 480));
    EXPECT_EQ(place({1100, 2700, 1000, 900}), QRect(2100, 2520, 500, 480));
}

}  // namespace
