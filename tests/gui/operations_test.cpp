#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>

#include "resources/zelqIds.h"

#include "GuiTest.h"

using testing::ElementsAre;

namespace {

/// An entry that is told by its PID.
TestEntry at(std::uint8_t hour, std::uint32_t pid) {
    return {.hour = hour, .pid = pid};
}

class OperationsTest : public GuiTest {
protected:
    std::string write(const std::string& name, const std::vector<TestEntry>& entries) {
        return folder.write(name, logImage(entries));
    }
    std::vector<QString> pids() { return column(zelqColumn::Pid); }
    std::vector<QString> selectedPids() {
        std::vector<QString> texts;
        for (int i = 0; i < table().model()->rowCount(); ++i) {
            if (table().selectionModel()->isRowSelected(i)) {
                texts.push_back(cell(i, 4));
            }
        }
        return texts;
    }
    /// Runs a command that asks for a file and answers its dialog with the keyboard.
    void pick(int command, const QString& title, const QString& accept, const std::string& file) {
        onModalDialog([&](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), title);
            auto* const files = qobject_cast<QFileDialog*>(&dialog);
            EXPECT_EQ(files->labelText(QFileDialog::Accept), accept);
            EXPECT_THAT(files->nameFilters().value(0).toStdString(), testing::HasSubstr("*.log"));
            EXPECT_EQ(browser.fileName(), "");
            if (file.empty()) {
                QTest::keyClick(&dialog, Qt::Key_Escape);
                return;
            }
            auto* const name = dialog.findChild<QLineEdit*>();
            name->setCompleter(nullptr);  // it lists the folder when it likes to
            QTest::keyClicks(name, QString::fromStdString(file));
            EXPECT_EQ(name->text().toStdString(), file);
            QTest::keyClick(name, Qt::Key_Return);
            EXPECT_FALSE(dialog.isVisible());
            dialog.hide();  // a test that failed must not wait for ever
        });
        EXPECT_TRUE(window().command(command));
        wait();
    }
    QString status() {
        QString text;
        for (const QLabel* label : window().statusBar()->findChildren<QLabel*>()) {
            text += label->text() + '|';
        }
        return text;
    }
};

TEST_F(OperationsTest, LoadShowsEveryEntryInOrder) {
    TestEntry error{.hour = 25, .pid = 4294967295, .tid = 7, .majorError = 3, .minorError = 99};
    error.detectPoint = 1200;
    error.detectPointCode = 3;
    error.name = "Pr\374fe(int)";
    const TestEntry trace{.type = 5, .hour = 9, .detectPointCode = 4, .name = "LongerThanEight"};
    const std::string file =
        write("a.log", {error, {.type = 0x2003, .numbers = {0xE50D0000, 1, 2, 3}}, trace});
    pick(zelqId::kLoad, "Select a log to Load", "&Load", file);
    ASSERT_EQ(table().model()->rowCount(), 3);
    using Row = std::vector<QString>;
    EXPECT_EQ(row(0), (Row{"Trace", "+", "09:00:00", "11-21-2026", "0", "0", "0", "0", "0", "DEBUG",
                           "LongerTh"}));
    // 25:00 sorts behind 09:00, though it is shown as 01:00.
    EXPECT_EQ(row(1), (Row{"Error", "+", "01:00:00", "11-21-2026", "4294967295", "7", "3", "99",
                           "1200", "API Call", "Pr\u00FCfe"}));
    EXPECT_EQ(row(2), (Row{"Message", "+", "01:00:00", "00-00-58637", "2", "3", "0", "0",
                           "3842834432", "", ""}));
    EXPECT_EQ(status(), "Records shown: 3 of 3|Logs: 1|");
    EXPECT_EQ(table().currentIndex().row(), 0);
}

TEST_F(OperationsTest, MergePutsEqualTimesInSlotOrder) {
    load(write("a.log", {at(9, 1), at(8, 2), at(9, 3)}));
    pick(zelqId::kMerge, "Select a log file to merge in", "&Merge",
         write("b.log", {at(9, 11), at(7, 12), at(10, 13)}));
    EXPECT_THAT(pids(), ElementsAre("12", "2", "1", "3", "11", "13"));
    EXPECT_EQ(status(), "Records shown: 6 of 6|Logs: 2|");

    // Slot 0 is free again after the first log has gone, and comes first among equal times.
    browser.unloadLog(0);
    wait();
    EXPECT_THAT(pids(), ElementsAre("12", "11", "13"));
    merge(write("c.log", {at(9, 21)}));
    EXPECT_THAT(pids(), ElementsAre("12", "21", "11", "13"));
}

TEST_F(OperationsTest, ALoadedLogIsNotReadAgainAndCancelChangesNothing) {
    const std::string a = write("a.log", {at(1, 1)});
    load(a);
    write("a.log", {at(1, 1), at(2, 2)});
    pick(zelqId::kLoad, "Select a log to Load", "&Load", a);
    pick(zelqId::kMerge, "Select a log file to merge in", "&Merge", a);
    EXPECT_THAT(pids(), ElementsAre("1"));
    pick(zelqId::kLoad, "Select a log to Load", "&Load", "");
    EXPECT_EQ(browser.fileName(), "");
    EXPECT_THAT(pids(), ElementsAre("1"));
}

TEST_F(OperationsTest, RequestsAreCarriedOutOneAfterAnother) {
    const std::string a = write("a.log", {at(1, 1)});
    const std::string b = write("b.log", {at(2, 2)});
    browser.setFileName(a);
    EXPECT_EQ(browser.loadLog(), 1);
    browser.setFileName(b);
    EXPECT_EQ(browser.mergeLog(), 1);
    EXPECT_EQ(browser.mergeLog(), 1);  // finds the log loaded when its turn comes
    EXPECT_EQ(browser.unloadLog(0), 1);
    browser.setFileName(a);
    EXPECT_EQ(browser.mergeLog(), 1);
    EXPECT_TRUE(browser.isBusy());
    wait();
    EXPECT_THAT(pids(), ElementsAre("1", "2"));
    EXPECT_EQ(browser.logs().logName(0), a);
    EXPECT_EQ(browser.logs().logName(1), b);
    EXPECT_EQ(browser.logs().logCount(), 2);
    browser.unloadLog(-1);
    wait();
    EXPECT_EQ(table().model()->rowCount(), 0);
    EXPECT_EQ(browser.logs().logCount(), 0);
}

TEST_F(OperationsTest, AnUnloadThatWaitedTakesNoOtherLog) {
    load(write("a.log", {at(1, 1)}));
    browser.setFileName(write("b.log", {at(2, 2)}));
    browser.loadLog();
    browser.unloadLog(0);  // means a.log, which will have left the slot
    wait();
    EXPECT_THAT(pids(), ElementsAre("2"));
}

TEST_F(OperationsTest, AMissingFileKeepsItsSlot) {
    load(write("a.log", {at(1, 1)}));
    load(folder.file("missing.log"));
    EXPECT_EQ(table().model()->rowCount(), 0);
    EXPECT_EQ(browser.logs().logName(0), folder.file("missing.log"));
    merge(write("b.log", {at(2, 2)}));
    EXPECT_THAT(pids(), ElementsAre("2"));
    EXPECT_EQ(browser.logs().logName(1), folder.file("b.log"));
}

TEST_F(OperationsTest, ThePointerWaitsWhileMergingAndNotWhileLoading) {
    browser.setFileName(write("a.log", {at(1, 1)}));
    browser.loadLog();
    EXPECT_EQ(window().cursor().shape(), Qt::ArrowCursor);
    wait();
    browser.setFileName(write("b.log", {at(1, 1)}));
    browser.mergeLog();
    browser.unloadLog(0);  // waits its turn, and leaves the pointer alone
    EXPECT_EQ(window().cursor().shape(), Qt::WaitCursor);
    wait();
    EXPECT_EQ(window().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(OperationsTest, SelectionCursorAndScrollPositionStayWithTheirRecords) {
    std::vector<TestEntry> early;
    std::vector<TestEntry> late;
    for (std::uint32_t i = 0; i < 100; ++i) {
        early.push_back(at(static_cast<std::uint8_t>(i / 10), i));
        late.push_back(at(static_cast<std::uint8_t>(10 + i / 10), 100 + i));
    }
    load(write("late.log", late));
    const auto click = [this](int row, Qt::KeyboardModifiers keys) {
        table().scrollTo(table().model()->index(row, 0));
        QTest::mouseClick(table().viewport(), Qt::LeftButton, keys,
                          table().visualRect(table().model()->index(row, 4)).center());
    };
    click(40, Qt::NoModifier);
    click(42, Qt::ShiftModifier);
    click(50, Qt::ControlModifier);
    table().verticalScrollBar()->setValue(30);
    EXPECT_THAT(selectedPids(), ElementsAre("140", "141", "142", "150"));

    merge(write("early.log", early));
    EXPECT_THAT(selectedPids(), ElementsAre("140", "141", "142", "150"));
    EXPECT_EQ(table().cursoredRecord()->pid(), 150U);
    EXPECT_EQ(table().verticalScrollBar()->value(), 130);

    click(95, Qt::ControlModifier);
    browser.unloadLog(0);
    wait();
    EXPECT_THAT(selectedPids(), ElementsAre("95"));
    EXPECT_EQ(table().cursoredRecord()->pid(), 95U);
}

TEST_F(OperationsTest, SelectionAndCursorOutlastTheColumns) {
    load(write("a.log", {at(1, 1), at(2, 2), at(3, 3)}));
    table().selectRow(1);
    for (int id = zelqId::kFirstColumn; id <= zelqId::kLastColumn; ++id) {
        window().command(id);
    }
    merge(write("b.log", {at(0, 4)}));
    for (int id = zelqId::kFirstColumn; id <= zelqId::kLastColumn; ++id) {
        window().command(id);
    }
    EXPECT_THAT(selectedPids(), ElementsAre("2"));
    EXPECT_EQ(table().cursoredRecord()->pid(), 2U);
    window().command(zelqId::kFirstColumn);
    window().command(zelqId::kFirstColumn);
    EXPECT_THAT(selectedPids(), ElementsAre("2"));
}

TEST_F(OperationsTest, UnloadMarksWhatStaysWithoutExpansionData) {
    load(write("a.log", {at(1, 1)}));
    merge(write("b.log", {{.hour = 2, .pid = 2, .entryLength = 20}, at(3, 3)}));
    EXPECT_THAT(column(zelqColumn::ExpandMark), ElementsAre("+", "", "+"));
    browser.unloadLog(0);
    wait();
    EXPECT_EQ(column(zelqColumn::ExpandMark).front(), " ");
}

}  // namespace
