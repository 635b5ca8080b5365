#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QScrollBar>
#include <QTableView>
#include <map>

#include <pwd.h>

#include "GuiTest.h"

using testing::ElementsAre;

namespace {

/// An entry with a PID to know it by.
TestEntry at(std::uint8_t hour, std::uint32_t pid) {
    return {.hour = hour, .pid = pid};
}

class OperationsTest : public GuiTest {
protected:
    std::vector<QString> pids() { return column(zelqColumn::Pid); }
    /// Runs a command that asks for a file and answers its dialog with the keyboard.
    void pick(int command, const QString& title, const std::string& file) {
        onModalDialog([&](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), title);
            EXPECT_EQ(browser.fileName(), "");
            const auto& files = dynamic_cast<QFileDialog&>(dialog);
            const bool isFirst = browser.session().logs().logCount() == 0;
            EXPECT_NE(files.directory() == QDir(QString::fromStdString(folder.file(""))), isFirst);
            EXPECT_EQ(files.nameFilters().join('|') + files.labelText(QFileDialog::Accept),
                      command == zelqId::kLoad ? "Log files (*.log)|All files (*)&Load"
                                               : "Log files (*.log)|All files (*)&Merge");
            auto* const name = dialog.findChild<QLineEdit*>();
            name->setCompleter(nullptr);  // it lists the folder at some later time
            QTest::keyClicks(name, QString::fromStdString(file));
            QTest::keyClick(name, file.empty() ? Qt::Key_Escape : Qt::Key_Return);
            EXPECT_FALSE(dialog.isVisible());
            dialog.hide();  // else a test that failed would wait for ever
        });
        EXPECT_TRUE(window().command(command));
        wait();
    }
};

TEST_F(OperationsTest, LoadShowsEveryEntryInOrder) {
    TestEntry error{.hour = 25, .pid = 4294967295, .tid = 7, .majorError = 3, .minorError = 99};
    error.detectPoint = 1200;
    error.detectPointCode = 3;
    error.name = "Pr\374fe(int)";
    const TestEntry trace{.type = 5, .hour = 9, .detectPointCode = 4, .name = "LongerThanEight"};
    pick(zelqId::kLoad, "Select a log to Load",
         write("a.log", {error, {.type = 0x2003, .numbers = {0xE50D0000, 1, 2, 3}}, trace}));
    ASSERT_EQ(table().model()->rowCount(), 3);
    using Row = std::vector<QString>;
    EXPECT_EQ(row(0), (Row{"Trace", "+", "09:00:00", "11-21-2026", "0", "0", "0", "0", "0", "DEBUG",
                           "LongerTh"}));
    // 25:00 is after 09:00, though it is shown as 01:00.
    EXPECT_EQ(row(1), (Row{"Error", "+", "01:00:00", "11-21-2026", "4294967295", "7", "3", "99",
                           "1200", "API Call", "Pr\u00FCfe"}));
    EXPECT_EQ(row(2), (Row{"Message", "+", "01:00:00", "00-00-58637", "2", "3", "0", "0",
                           "3842834432", "", ""}));
    EXPECT_EQ(status(), "Records shown: 3 of 3|Logs: 1|a.log, entry 2, byte 75|");
    EXPECT_EQ(table().currentIndex().row(), 0);
    QString tips;
    for (const QWidget* part : window().statusBar()->findChildren<QWidget*>()) {
        tips += part->toolTip();
    }
    EXPECT_TRUE(tips.contains("<p>Current row: " + QString::fromStdString(folder.file("a.log"))));
    QString sides;  // of headings and of cells
    for (int i = 0; i < table().model()->columnCount(); ++i) {
        for (const QVariant& value :
             {table().model()->headerData(i, Qt::Horizontal, Qt::TextAlignmentRole),
              table().model()->index(0, i).data(Qt::TextAlignmentRole)}) {
            sides += QString::number(value.toInt(), 16) + ' ';
        }
    }
    EXPECT_EQ(sides, "41 81 0 81 41 81 41 81 41 92 41 92 41 92 41 92 41 92 41 81 41 81 ");
    EXPECT_EQ(table().model()->headerData(1, Qt::Horizontal, Qt::ToolTipRole), "Expandability");
}

TEST_F(OperationsTest, MergedLogsTakeTheLowestSlotOnceAndStandInSlotOrder) {
    const std::string a = write("a.log", {at(9, 1), at(8, 2), at(9, 3)});
    const QString title = "Select a log file to merge in";
    load(a);
    pick(zelqId::kMerge, title, write("b.log", {at(9, 11), at(7, 12)}));
    EXPECT_THAT(pids(), ElementsAre("12", "2", "1", "3", "11"));
    pick(zelqId::kLoad, "Select a log to Load", a);  // is there already
    pick(zelqId::kMerge, title, "");
    EXPECT_EQ(status(), "Records shown: 5 of 5|Logs: 2|a.log, entry 1, byte 41, +1:00:00|");
    unload(0);
    merge(write("c.log", {at(9, 21)}));
    EXPECT_THAT(pids(), ElementsAre("12", "21", "11"));
}

TEST_F(OperationsTest, RequestsAreCarriedOutOneAfterAnother) {
    const std::string a = write("a.log", {at(1, 1)});
    const std::string b = write("b.log", {at(2, 2)});
    browser.setFileName(a);
    EXPECT_EQ(browser.loadLog(), 1);
    EXPECT_EQ(window().cursor().shape(), Qt::ArrowCursor);  // loading shows its progress instead
    browser.setFileName(b);
    EXPECT_EQ(browser.mergeLog(), 1);
    EXPECT_EQ(browser.mergeLog(), 1);  // finds the log loaded when its turn comes
    EXPECT_EQ(browser.unloadLog(0), 1);
    browser.setFileName(a);
    EXPECT_EQ(browser.mergeLog(), 1);
    wait();
    EXPECT_THAT(pids(), ElementsAre("1", "2"));
    EXPECT_EQ(browser.session().logs().logName(1), b);
    browser.setFileName(write("c.log", {at(3, 3)}));
    browser.mergeLog();
    browser.unloadLog(2);  // waits its turn, and leaves the pointer alone
    EXPECT_EQ(window().cursor().shape(), Qt::WaitCursor);
    wait();
    EXPECT_EQ(window().cursor().shape(), Qt::ArrowCursor);

    browser.setFileName(folder.file("missing.log"));
    browser.loadLog();
    browser.unloadLog(1);  // means b.log, which will have left the slot
    browser.setFileName(b);
    browser.mergeLog();
    browser.unloadLog(0);  // means a.log
    wait();
    EXPECT_THAT(pids(), ElementsAre("2"));
    EXPECT_EQ(browser.session().logs().logName(0),
              folder.file("missing.log"));  // it keeps its slot
    unload(-1);
    EXPECT_EQ(browser.session().logs().logCount(), 0);
}

TEST_F(OperationsTest, SelectionCursorAndScrollPositionStayWithTheirRecords) {
    std::vector<TestEntry> early;
    std::vector<TestEntry> late;
    for (std::uint32_t i = 0; i < 100; ++i) {
        early.push_back(at(static_cast<std::uint8_t>(i / 10), i));
        late.push_back(at(static_cast<std::uint8_t>(10 + i / 10), 100 + i));
    }
    load(write("late.log", late));
    click(40);
    click(42, Qt::ShiftModifier);
    click(50, Qt::ControlModifier);
    table().verticalScrollBar()->setValue(30);
    for (const bool visible : {false, true}) {
        for (int id = zelqId::kFirstColumn; id <= zelqId::kLastColumn; ++id) {
            EXPECT_TRUE(window().command(id));
            EXPECT_EQ(isChecked(id), visible);
        }
        EXPECT_EQ(table().model()->columnCount(), visible ? 11 : 0);
        if (!visible) {
            merge(write("early.log", early));
        }
        EXPECT_EQ(table().cursoredRecord()->pid(), 150U);
    }
    EXPECT_EQ(table().verticalScrollBar()->value(), 130);
    EXPECT_EQ(table().selectedRecords().size(), 4U);
    click(95, Qt::ControlModifier);
    unload(0);
    EXPECT_EQ(table().selectedRecords(), std::vector{table().cursoredRecord()});
    EXPECT_EQ(table().cursoredRecord()->pid(), 95U);
}

TEST_F(OperationsTest, NothingIsCopiedAndALoadLeavesNothingSelectedNorFlickers) {
    load(write("a.log", {at(1, 1), at(2, 2), at(3, 3)}));
    click(1);
    QGuiApplication::clipboard()->setText("before");
    QTest::keyClick(&table(), Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(&table(), Qt::Key_Insert, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "before");
    load(write("b.log", {at(1, 1), at(2, 2)}));
    click(1);
    load(write("c.log", {at(1, 1), at(2, 2)}));
    EXPECT_THAT(table().selectedRecords(), testing::IsEmpty());

    auto* const bar = window().statusBar()->findChild<QProgressBar*>();
    window().statusLine().startProgress();
    window().statusLine().showProgress(3, 10);
    EXPECT_FALSE(bar->isVisible());  // what is over at once does not flicker
    EXPECT_TRUE(QTest::qWaitFor([bar] { return bar->isVisible(); }) && bar->value() == 3);
    window().statusLine().hideProgress();
    EXPECT_FALSE(bar->isVisible());
}

TEST_F(OperationsTest, TheStatusLineSaysWhatIsMissingAndWhy) {
    const std::string cut = logImage({at(8, 1), at(9, 2)});
    const std::string good = write("good.log", {at(9, 3)});
    for (const auto& [file, said] : std::vector<std::pair<std::string, QString>>{
             {folder.write("cut.log", cut.substr(0, cut.size() - 1)), "Findings: 1|cut.log, "},
             {folder.write("x\x1b\u202E&.log", std::string(64, '\x03')),
              "Read: " + QString::fromStdString(folder.file("x\\u001b\\u202e&.log")) +
                  ": its first entry is damaged; this may be no log|"},
             {folder.file("missing.log"), "Findings: 1|Not read: "},
             {good, "Logs: 1|good.log, entry 0, byte 0|"},
         }) {
        load(file);
        EXPECT_THAT(status().toStdString(), testing::HasSubstr(said.toStdString()));
    }
    onModalDialog([](QDialog& dialog) { press(dialog, zelqId::kFilterOk); });
    window().command(zelqId::kPidFilter);
    QTest::keyClick(&table(), Qt::Key_Backslash, Qt::ControlModifier);
    window().command(zelqId::kDisplayOnlySelected);
    EXPECT_EQ(status(), "Records shown: 0 of 1|Logs: 1|Filters: PIDs|Parked: 1|");
}

TEST_F(OperationsTest, AFindingLeadsToItsRecord) {
    const std::string cut = logImage({at(8, 1), at(9, 2)});
    load(folder.write("<cut>.log", cut.substr(0, cut.size() - 1)));
    const QString longName(200, 'm');
    merge(folder.file(longName.toStdString()));
    auto* const findings = window().statusBar()->findChild<QPushButton*>();
    EXPECT_EQ(findings->text(), "Findings: 2");
    QTest::mouseClick(findings, Qt::LeftButton);
    auto* const dialog = window().findChild<QDialog*>();
    EXPECT_TRUE(QTest::qWaitForWindowActive(dialog));
    EXPECT_TRUE(window().geometry().contains(dialog->geometry()));
    auto* const list = dialog->findChild<QTableView*>();
    const QAbstractItemModelTester tester(list->model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    QStringList texts;
    for (int column = 0; column < 4; ++column) {
        texts += list->model()->headerData(column, Qt::Horizontal).toString();
        for (int row = 0; row < list->model()->rowCount(); ++row) {
            for (const int role : {Qt::DisplayRole, Qt::ToolTipRole, Qt::TextAlignmentRole}) {
                texts += list->model()->index(row, column).data(role).toString();
            }
        }
    }
    texts.replaceInStrings(QString::fromStdString(folder.file("")), "");
    EXPECT_EQ(
        texts.join(',').replace("AlignTrailing|AlignVCenter", "right"),
        "File,<cut>.log,<p>&lt;cut&gt;.log,," + longName + ",<p>" + longName +
            ",,Entry,1,,right,,,right,Offset,81,,right,,,right,Finding,the file ends after 40 "
            "of the entry's 41 bytes; the entry is built from them,,,cannot be opened: No "
            "such file or directory,,");
    EXPECT_EQ(list->columnWidth(0), 260);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(table().cursoredRecord()->pid(), 2U);
    window().command(zelqId::kDisplayOnlyNonSelected);
    QTest::keyClick(list, Qt::Key_Enter);
    EXPECT_THAT(status().toStdString(), testing::HasSubstr("not among the rows: parked|"));
    unload(-1);
    EXPECT_EQ(list->model()->rowCount(), 0);
    EXPECT_EQ(status(), "Records shown: 0 of 0|Logs: 0|");
    const QByteArray blocks = QByteArray("\0\2", 2).repeated(10007);
    static QStringList messages;
    qInstallMessageHandler([](auto, const QMessageLogContext& from, const QString& text) {
        messages += QByteArrayView(from.category) == "zelq.log" ? QStringList{text} : QStringList();
    });
    load(write("many.log", {{.headerLength = 4, .data = blocks.toStdString()}}));
    qInstallMessageHandler(nullptr);
    EXPECT_TRUE(messages.size() == 101 && messages.back().endsWith("log: 9907 more findings"));
    EXPECT_EQ(list->model()->rowCount(), 10000);
    EXPECT_TRUE(dialog->findChild<QLabel*>()->isVisible());
    EXPECT_EQ(dialog->findChild<QLabel*>()->text(), "Findings not listed: 7");
    QTest::keyClick(list, Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(OperationsTest, FilesAreMergedByNameAndTheTildeIsHome) {
    load(write("b.log", {at(2, 2)}));
    write("a.log", {at(1, 1)});
    write("c.log", {at(3, 3)});
    pick(zelqId::kMerge, "Select a log file to merge in", R"("c.log" "b.log" "a.log")");
    EXPECT_EQ(browser.session().logs().logName(1), folder.file("a.log"));
    EXPECT_THAT(pids(), ElementsAre("1", "2", "3"));
    const QByteArray home = qgetenv("HOME");
    const QString path = QString::fromStdString(folder.file(""));
    qputenv("HOME", path.toUtf8());
    const auto root =
        "~root" + QDir(::getpwnam("root")->pw_dir).relativeFilePath(path).prepend('/');
    for (const auto& [name, outcome] :
         std::map<QString, QString>{{"~/out", "Written: 3 records to " + path + "out"},
                                    {root + "/out", "Written: 3 records to "},
                                    {"~nosuch/out", "Not written: ~nosuch/out: "},
                                    {path + "~", "Written: 3 records to " + path + "~"}}) {
        onModalDialog([&text = name](QDialog& dialog) {
            dialog.findChild<QLineEdit*>()->setText(text);
            press(dialog, zelqId::kWriteAction);
        });
        window().command(zelqId::kWriteLog);
        wait();
        EXPECT_TRUE(status().contains(outcome)) << status().toStdString() << name.toStdString();
    }
    qputenv("HOME", home);
}

}  // namespace
