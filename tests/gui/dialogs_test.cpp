#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <filesystem>
#include <map>
#include <utility>

#include "widgets/zelqFormDialog.h"

#include "GuiTest.h"

namespace {

class DialogTest : public GuiTest {};

TEST_F(DialogTest, UnloadsTheLogThatIsSelectedAndOnlyButtonsEndIt) {
    for (const char* name : {"a.log", "b.log", "c\u202E.log"}) {
        merge(write(name, {{.name = name}}));
    }
    unload(1);
    inDialog(zelqId::kUnload, [](QDialog& dialog, QListView& list) {
        list.clearSelection();
        press(dialog, zelqId::kUnloadAction);
    });
    inDialog(zelqId::kUnload, [](QDialog& dialog, QListView& list) {
        QTest::keyClick(&list, Qt::Key_Escape);
        EXPECT_FALSE(dialog.close());  // as Alt+F4 and the close box do
        press(dialog, zelqId::kUnloadCancel);
    });
    inDialog(zelqId::kUnload, [this](QDialog&, QListView& list) {
        const QString path = QString::fromStdString(folder.file(""));
        EXPECT_EQ(items(list), '[' + path + "a.log]," + path + "c\\u202e.log");
        EXPECT_EQ(list.geometry().topLeft(), QPoint(20, 39));
        QTest::keyClick(&list, Qt::Key_End);
        QTest::keyClick(&list, Qt::Key_Return);
    });
    EXPECT_EQ(browser.session().logs().logName(2), "");  // its slot, though it is the second item
    EXPECT_THAT(column(zelqColumn::Function), testing::ElementsAre("a.log"));
    inDialog(zelqId::kUnload,
             [](QDialog&, QListView& list) { QTest::keyClick(&list, Qt::Key_Return); });
    EXPECT_EQ(browser.session().logs().logCount(), 0);
}

TEST_F(DialogTest, HandlesTheCommandsOfItsButtonsOnly) {
    for (const auto& [opens, ids] : std::map<int, std::vector<int>>{
             {zelqId::kUnload, {zelqId::kUnloadAction, zelqId::kUnloadCancel}},
             {zelqId::kPidFilter,
              {zelqId::kFilterOk, zelqId::kFilterSelectAll, zelqId::kFilterDeselectAll,
               zelqId::kFilterDelete, zelqId::kFilterCancel}}}) {
        inDialog(opens, [&handled = ids](QDialog& dialog, QListView& /*list*/) {
            auto& form = dynamic_cast<zelqFormDialog&>(dialog);
            const bool isFilter = dialog.objectName().toInt() == zelqId::kFilterDialog;
            EXPECT_EQ(dialog.size(), isFilter ? QSize(600, 300) : QSize(480, 320));
            dialog.resize(1, 1);
            EXPECT_EQ(dialog.size(), isFilter ? QSize(150, 150) : dialog.minimumSizeHint());
            for (const int id : {0, zelqId::kUnloadList, zelqId::kFilterDialog}) {
                EXPECT_FALSE(form.command(id)) << id;
            }
            EXPECT_TRUE(dialog.isVisible());
            for (const int id : handled) {
                EXPECT_TRUE(form.command(id)) << id;
            }
        });
    }
}

class WriteLogTest : public GuiTest {
protected:
    /// Types a name into the dialog, presses a button, and returns what the file then holds.
    std::string listing(const QString& name, int button) {
        onModalDialog([name, button](QDialog& dialog) {
            auto* const field = dialog.findChild<QLineEdit*>();
            QTest::keyClicks(field, name);
            EXPECT_EQ(field->text(), name.left(256));
            press(dialog, button);
        });
        EXPECT_TRUE(window().command(zelqId::kWriteLog));
        wait();
        return contentOf(name.toStdString());
    }
};

TEST_F(WriteLogTest, WritesEveryRecordInReadingOrder) {
    const QString out = QString::fromStdString(folder.file("out.txt"));
    listing(out, zelqId::kWriteAction);  // there is nothing to write
    EXPECT_FALSE(std::filesystem::exists(out.toStdString()));

    load(write("a.log", {{.hour = 9, .pid = 1, .blocks = {{.address = 0x10}}}}));
    merge(write("b.log", {{.hour = 8, .pid = 2}}));
    listing(QString(300, 'x'), zelqId::kWriteCancel);
    listing("", zelqId::kWriteAction);
    EXPECT_EQ(status(), "Records shown: 2 of 2|Logs: 2|a.log, entry 0, byte 0, +1:00:00|");
    const std::string first = listing(out, zelqId::kWriteAction);
    EXPECT_LT(first.find("Pid:    1"), first.find("Pid:    2"));
    EXPECT_NE(first.find("\n10000000  "), std::string::npos);
    EXPECT_TRUE(status().contains("Written: 2 records to " + out + '|'));
    // It is replaced; every dump after the first shows true addresses.
    const std::string second = listing(out, zelqId::kWriteAction);
    EXPECT_EQ(second.size(), first.size());
    EXPECT_NE(second.find("\n00000010  "), std::string::npos);
    // What is asked for while a log without entries is read finds nothing to write.
    browser.setFileName(write("empty.log", {}));
    browser.loadLog();
    EXPECT_EQ(listing(out, zelqId::kWriteAction), second);
}

TEST_F(DialogTest, EachFilterOffersItsValuesInItsOwnWords) {
    load(write("a.log", {{.hour = 23, .pid = 9, .tid = 4000000000, .majorError = 3},
                         {.hour = 1, .pid = 10, .minorError = 5, .name = "Open"}}));
    const std::vector<const char*> dialogs{
        "16000|Entry Type|Select the entry types to be displayed|[TRC],[ERR],[MSG]",
        "16100|Time|Define the time range to be displayed|[01:00:00],[23:00:00]",
        "16400|Date|Define the dates to be displayed|[11-21-26]",
        "16500|PID|Define the process IDs to be displayed|[9],[10]",
        "16600|TID|Define the terminal IDs to be displayed|[0],[4000000000]",
        "16700|Major Error|Define the major errors to be displayed|[0],[3]",
        "16800|Minor Error|Define the minor errors to be displayed|[0],[5]",
        "16900|Detect Point|Define the detect points to be displayed|[0]",
        "16200|Function|Select the functions to be displayed|[(no name)],[Open]"};
    int command = zelqId::kEntryTypeFilter;
    for (const char* const texts : dialogs) {
        inDialog(command++, [texts](QDialog& dialog, QListView& list) {
            const QStringList expected = QString(texts).split('|');
            EXPECT_EQ(dialog.windowTitle(), expected[1] + " Filter Data Entry");
            EXPECT_EQ(dialog.findChild<QLabel*>(expected[0])->text(), expected[2]);
            EXPECT_EQ(list.objectName().toInt(), expected[0].toInt() + 1);
            EXPECT_EQ(list.accessibleName(), expected[2]);
            EXPECT_EQ(list.font().toString().section(',', 0, 1), "Courier,10");
            EXPECT_EQ(items(list), expected[3]);
            const QVariant font = list.model()->index(0, 0).data(Qt::FontRole);
            EXPECT_EQ(font.value<QFont>().italic(), expected[1] == "Function");
            QTest::keyClick(&list, Qt::Key_End);
            QTest::keyClick(&list, Qt::Key_Return);
        });
        EXPECT_TRUE(isChecked(command - 1));
    }
    EXPECT_EQ(status(),
              "Records shown: 0 of 2|Logs: 1|Filters: Entry types, Times, Dates, PIDs, "
              "TIDs, Major errors, Minor errors, Detect points, Functions|");
    inDialog(zelqId::kPidFilter,
             [](QDialog&, QListView& list) { QTest::keyClick(&list, Qt::Key_Escape); });
    EXPECT_FALSE(isChecked(zelqId::kPidFilter));  // though the filter stays
    EXPECT_NE(browser.session().filters().find(zelqFilterKind::Pid), nullptr);
    inDialog(zelqId::kFunctionFilter, [](QDialog& dialog, QListView& list) {
        EXPECT_EQ(items(list), "(no name),[Open]");
        press(dialog, zelqId::kFilterSelectAll);
        EXPECT_EQ(items(list), "[(no name)],[Open]");
        press(dialog, zelqId::kFilterDeselectAll);
        EXPECT_EQ(items(list), "(no name),Open");
        for (const int item : {1, 0}) {
            QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier,
                              list.visualRect(list.model()->index(item, 0)).center());
        }
        EXPECT_EQ(items(list), "[(no name)],[Open]");
        press(dialog, zelqId::kFilterDelete);
    });
    EXPECT_EQ(browser.session().filters().find(zelqFilterKind::Function), nullptr);
    EXPECT_FALSE(isChecked(zelqId::kFunctionFilter));
    window().command(zelqId::kRemoveAllFilters);
    EXPECT_FALSE(isChecked(zelqId::kEntryTypeFilter) || isChecked(zelqId::kDetectPointFilter));
    EXPECT_EQ(status(), "Records shown: 2 of 2|Logs: 1|a.log, entry 1, byte 41|");
}

TEST_F(DialogTest, AFilterIsMarkedByWhatItsDialogComesToAndNotByTheClick) {
    load(write("a.log", {{.pid = 9}, {.pid = 10}}));
    bool marked = false;
    for (const int button :
         {zelqId::kFilterOk, zelqId::kFilterOk, zelqId::kFilterDelete, zelqId::kFilterCancel}) {
        onModalDialog([&](QDialog& dialog) {
            EXPECT_EQ(isChecked(zelqId::kPidFilter), marked);
            press(dialog, button);
        });
        window().findChild<QAction*>(QString::number(zelqId::kPidFilter))->trigger();
        wait();
        marked = button == zelqId::kFilterOk;
        EXPECT_EQ(isChecked(zelqId::kPidFilter), marked) << button;
    }
}

TEST_F(DialogTest, ReturnIsOkAndNothingIsCutWhateverTheFont) {
    load(write("a.log", {{.pid = 9}, {.pid = 10}}));
    window().move(0, 0);  // a dialog without a place of its own would stand over it
    const QFont usual = QApplication::font();
    for (const int points : {usual.pointSize(), 20}) {
        QApplication::setFont(QFont(usual.family(), points));
        inDialog(zelqId::kEntryTypeFilter + 3, [&](QDialog& dialog, QListView& list) {
            EXPECT_TRUE(points == 20 || list.geometry() == QRect(10, 40, 580, 190));
            EXPECT_EQ(dialog.pos() + QPoint(dialog.width() / 2, dialog.height() / 2),
                      dialog.screen()->geometry().center() + QPoint(1, 1));
            EXPECT_EQ(QApplication::focusWidget(), &list);
            press(dialog, zelqId::kFilterDeselectAll);
            QTest::keyClick(&list, Qt::Key_End);
            QString texts;
            int left = 0;
            for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
                texts += button->objectName() + button->text() + ' ';
                EXPECT_LE(std::exchange(left, button->x()), button->x());
                EXPECT_GE(button->width(), button->sizeHint().width());
            }
            EXPECT_EQ(texts,
                      "15902&OK 15904Select All 15905Deselect All 15906Delete Filter 15903Cancel ");
            QTest::keyClick(QApplication::focusWidget(),
                            points == 20 ? Qt::Key_Enter : Qt::Key_Return);
        });
        EXPECT_THAT(column(zelqColumn::Pid), testing::ElementsAre("10"));
    }
    QApplication::setFont(usual);
}

TEST_F(DialogTest, NoFilterIsInstalledWhileThereAreNoValues) {
    inDialog(zelqId::kEntryTypeFilter + 3, [](QDialog&, QListView& list) {
        EXPECT_EQ(list.accessibleDescription(), "There are no values yet");
        EXPECT_FALSE(isBlank(list.viewport()->grab().toImage()));
        QTest::keyClick(&list, Qt::Key_Return);
    });
    std::vector<TestEntry> entries;
    for (std::uint32_t i = 0; i < 300; ++i) {
        entries.push_back({.pid = i});
    }
    load(write("a.log", entries));
    expectPainted(table());
    inDialog(zelqId::kEntryTypeFilter + 3, [](QDialog& dialog, QListView& list) {
        expectPainted(list);
        press(dialog, zelqId::kFilterCancel);
    });
}

}  // namespace
