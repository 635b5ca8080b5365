#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QDrag>
#include <QDropEvent>
#include <QListView>
#include <QMimeData>
#include <QScrollBar>
#include <random>

#include "dialogs/zelqLineView.h"
#include "dialogs/zelqRecordDrag.h"
#include "resources/zelqIds.h"

#include "GuiTest.h"

using testing::ElementsAre;

namespace {

/// An entry that is told by its PID and has one block of 16 bytes at a true address.
TestEntry at(std::uint8_t hour, std::uint32_t pid) {
    return {
        .hour = hour, .pid = pid, .blocks = {{.address = 0x00001000, .data = "0123456789ABCDEF"}}};
}

constexpr int kLinesPerRecord = 8;

class ExpansionTest : public GuiTest {
protected:
    ExpansionTest() {
        load(folder.write("a.log", logImage({at(1, 1), at(2, 2), at(3, 3), at(4, 4)})));
    }
    QWidget* expanded() {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == "15300") {
                return widget;
            }
        }
        return nullptr;
    }
    QListView* list() { return expanded()->findChild<QListView*>("32776"); }
    /// The PIDs of the records whose text stands in the window, from its first summary lines.
    std::vector<std::string> shown() {
        std::vector<std::string> found;
        for (int i = 0; expanded() != nullptr && i < list()->model()->rowCount(); ++i) {
            const QString line = list()->model()->index(i, 0).data().toString();
            if (line.startsWith("Time: ")) {
                found.push_back(line.mid(line.indexOf("Pid: ") + 5, 4).trimmed().toStdString());
            }
        }
        return found;
    }
    std::vector<QString> marks() { return column(zelqColumn::ExpandMark); }
    void cursorTo(int row) {
        QTest::mouseClick(table().viewport(), Qt::LeftButton, {},
                          table().visualRect(table().model()->index(row, 4)).center());
    }
    void expand(int row) {
        cursorTo(row);
        EXPECT_TRUE(window().command(zelqId::kExpand));
    }
};

TEST_F(ExpansionTest, RecordsStandInTheOrderOfTheirNumbers) {
    EXPECT_EQ(expanded(), nullptr);
    expand(2);
    ASSERT_NE(expanded(), nullptr);
    const QAbstractItemModelTester tester(list()->model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_TRUE(expanded()->isVisible());
    EXPECT_EQ(expanded()->windowTitle(), "RAS Expanded Data Window");
    expand(0);
    expand(1);
    expand(1);  // is expanded already
    EXPECT_THAT(shown(), ElementsAre("1", "2", "3"));
    EXPECT_EQ(list()->model()->rowCount(), 3 * kLinesPerRecord);
    EXPECT_THAT(marks(), ElementsAre("-", "-", "-", "+"));
    cursorTo(1);
    window().command(zelqId::kUnexpand);
    EXPECT_THAT(shown(), ElementsAre("1", "3"));
    // Merged records with equal numbers in their own log come behind by the numbers they get.
    merge(folder.write("b.log", logImage({at(0, 10), at(5, 11)})));
    EXPECT_THAT(shown(), ElementsAre("1", "3"));
    window().command(zelqId::kExpandAll);
    EXPECT_THAT(shown(), ElementsAre("1", "2", "3", "4", "10", "11"));
    browser.unloadLog(1);
    wait();
    EXPECT_THAT(shown(), ElementsAre());
    EXPECT_THAT(marks(), ElementsAre("+", "+", "+", "+"));
}

TEST_F(ExpansionTest, LinesKeepTheAddressesTheyWereInsertedWith) {
    expand(0);
    const auto dumpLine = [this] { return list()->model()->index(3, 0).data().toString(); };
    EXPECT_EQ(list()->model()->index(2, 0).data().toString(), " ");
    EXPECT_EQ(dumpLine().left(8), "00100000");
    window().command(zelqId::kUnexpandAll);
    window().command(zelqId::kExpand);
    EXPECT_EQ(dumpLine().left(8), "00001000");
    EXPECT_EQ(dumpLine().size(), 95);
}

TEST_F(ExpansionTest, ManyAreExpandedBySelection) {
    cursorTo(1);
    QTest::keyClick(&table(), Qt::Key_Down, Qt::ShiftModifier);
    window().command(zelqId::kExpandNonSelected);
    EXPECT_THAT(shown(), ElementsAre("1", "4"));
    list()->setCurrentIndex(list()->model()->index(kLinesPerRecord + 2, 0));
    window().command(zelqId::kExpandSelected);
    EXPECT_EQ(list()->currentIndex().row(), 3 * kLinesPerRecord + 2);
    EXPECT_THAT(shown(), ElementsAre("1", "2", "3", "4"));
    window().command(zelqId::kUnexpandNonSelected);
    EXPECT_THAT(shown(), ElementsAre("2", "3"));
    window().command(zelqId::kUnexpandSelected);
    EXPECT_THAT(shown(), ElementsAre());
    EXPECT_THAT(marks(), ElementsAre("+", "+", "+", "+"));
}

TEST_F(ExpansionTest, OpeningTogglesAndSkipsRecordsWithoutData) {
    merge(folder.write("b.log", logImage({{.hour = 9, .pid = 9, .entryLength = 20}})));
    const QPoint first = table().visualRect(table().model()->index(0, 4)).center();
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, first);
    QTest::mouseDClick(table().viewport(), Qt::LeftButton, {}, first);
    EXPECT_THAT(shown(), ElementsAre("1"));
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, first);
    QTest::keyClick(&table(), Qt::Key_Return);
    EXPECT_THAT(shown(), ElementsAre());
    QTest::keyClick(&table(), Qt::Key_End, Qt::ControlModifier);
    QTest::keyClick(&table(), Qt::Key_Return);
    EXPECT_THAT(marks(), ElementsAre("+", "+", "+", "+", ""));
    window().command(zelqId::kExpand);
    EXPECT_EQ(marks().back(), " ");
    EXPECT_THAT(shown(), ElementsAre());
}

TEST_F(ExpansionTest, ClosingTheWindowCollapsesEveryRecord) {
    merge(folder.write("b.log", logImage({{.hour = 9, .entryLength = 20}})));
    window().command(zelqId::kExpandAll);
    merge(folder.write("c.log", logImage({{.hour = 10, .entryLength = 20}})));
    EXPECT_THAT(marks(), ElementsAre("-", "-", "-", "-", " ", ""));
    expanded()->close();
    EXPECT_FALSE(expanded()->isVisible());
    EXPECT_THAT(marks(), ElementsAre("+", "+", "+", "+", " ", " "));
    expand(3);
    EXPECT_TRUE(expanded()->isVisible());
    EXPECT_THAT(shown(), ElementsAre("4"));
    window().close();
    EXPECT_EQ(expanded(), nullptr);
}

TEST_F(ExpansionTest, LinesAreSelectedCopiedAndScrolledWithTheKeyboard) {
    expand(0);
    expand(1);
    expanded()->resize(200, 100);
    list()->setFocus();
    QTest::keyClick(list(), Qt::Key_Home);
    QTest::keyClick(list(), Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(list(), Qt::Key_C, Qt::ControlModifier);
    const QStringList copied = QGuiApplication::clipboard()->text().split('\n');
    ASSERT_EQ(copied.size(), 3);
    EXPECT_TRUE(copied[0].startsWith("Time: 01:00:00 "));
    EXPECT_TRUE(copied[1].startsWith("Date: 11-21-26 "));
    QTest::keyClick(list(), Qt::Key_End);
    EXPECT_EQ(list()->currentIndex().row(), 2 * kLinesPerRecord - 1);
    EXPECT_EQ(list()->verticalScrollBar()->value(), list()->verticalScrollBar()->maximum());
    EXPECT_TRUE(
        list()->viewport()->rect().contains(list()->visualRect(list()->currentIndex()).topLeft()));
    QTest::keyClick(list(), Qt::Key_Home);
    QTest::keyClick(list(), Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(list()->selectionModel()->selectedRows().size(), 2 * kLinesPerRecord);
    QTest::keyClick(list(), Qt::Key_PageUp);
    EXPECT_LT(list()->currentIndex().row(), 2 * kLinesPerRecord - 2);
    EXPECT_GT(list()->horizontalScrollBar()->maximum(), 0);
    const QPoint inSecondLine(5, list()->fontMetrics().height() + 2);
    list()->verticalScrollBar()->setValue(3);
    EXPECT_EQ(list()->indexAt(inSecondLine).row(), 4);
}

TEST_F(ExpansionTest, RecordsAreMovedToTheWindowByDragging) {
    expand(3);
    const auto drop = [this](Qt::DropActions offered, const QString& type) {
        QMimeData data;
        data.setData(type, {});
        QDragEnterEvent enter(QPoint(5, 5), offered, &data, Qt::LeftButton, {});
        QApplication::sendEvent(list()->viewport(), &enter);
        QDropEvent event(QPointF(5, 5), offered, &data, Qt::LeftButton, {});
        event.ignore();
        QApplication::sendEvent(list()->viewport(), &event);
        return enter.isAccepted() && event.isAccepted();
    };
    EXPECT_FALSE(drop(Qt::CopyAction | Qt::LinkAction, recordMimeType()));
    EXPECT_FALSE(drop(Qt::MoveAction, "text/plain"));
    EXPECT_TRUE(drop(Qt::MoveAction, recordMimeType()));
    EXPECT_EQ(table().model()->supportedDragActions(), Qt::MoveAction);
    EXPECT_THAT(shown(), ElementsAre("4"));
    EXPECT_EQ(table().model()->rowCount(), 4);
}

TEST(ExpandedRecords, TheTreeKeepsWhatTheWalkSays) {
    std::vector<TestEntry> entries;
    for (std::uint32_t i = 0; i < 300; ++i) {
        entries.push_back({.pid = i, .blocks = {{.data = std::string(i % 70, 'x')}}});
    }
    const DecodedLog log(logImage(entries));
    std::mt19937 random(5);
    std::vector<zelqBCnrObject*> expected;
    zelqExpandedRecords tree;
    const auto insertExpected = [&expected](zelqBCnrObject& record) {
        const auto place = std::find_if(expected.begin(), expected.end(), [&](const auto* other) {
            return other->entryIndex() > record.entryIndex();
        });
        expected.insert(place, &record);
    };
    for (int step = 0; step < 2000; ++step) {
        zelqBCnrObject& record = log[random() % log.size()];
        if (step % 400 == 399) {  // other numbers, which need not be in order any more
            for (std::size_t i = 0; i < log.size(); ++i) {
                log[i].setEntryIndex(static_cast<std::int32_t>(random() % 100));
            }
            tree.refreshKeys();
        } else if (step % 500 == 250) {
            std::vector<zelqBCnrObject*> many;
            log.log->forEach([&](zelqBCnrObject& each) {
                if (!tree.contains(each)) {
                    many.push_back(&each);
                    insertExpected(each);
                }
            });
            tree.insertAll(many);
        } else if (tree.contains(record)) {
            tree.remove(record);
            std::erase(expected, &record);
        } else {
            insertExpected(record);
            tree.insert(record, nextAddressForm(record));
        }
        std::vector<zelqBCnrObject*> order;
        tree.forEach([&order](zelqBCnrObject& each) { order.push_back(&each); });
        ASSERT_EQ(order, expected) << step;
    }
    std::size_t line = 0;
    for (const zelqBCnrObject* record : expected) {
        EXPECT_EQ(tree.linesOf(*record).first, line);
        EXPECT_EQ(tree.at(line).record, record);
        line += tree.linesOf(*record).count;
        EXPECT_EQ(tree.at(line - 1).record, record);
    }
    EXPECT_EQ(tree.lineCount(), line);
}

}  // namespace
