// The menus of rows and of lines.

#include <QAction>
#include <QClipboard>

#include "GuiTest.h"

using testing::ElementsAre;

namespace {

class ContextMenuTest : public GuiTest {};

TEST_F(ContextMenuTest, HasWhatCanBeDoneWithTheRow) {
    load(write("a.log", {{.hour = 1, .pid = 770}, {.hour = 3, .entryLength = 24}}));
    const auto items = [this](int row) {
        openMenu(table(), row, zelqColumn::Pid);
        QStringList texts;
        for (const QAction* action : QApplication::activePopupWidget()->actions()) {
            texts += (action->isEnabled() ? "" : "-") + action->text() +
                     action->shortcut().toString().prepend(' ').trimmed();
        }
        return texts.join('|').remove('&');
    };
    const QString copies = "||Copy Rows|Copy Rows with Data||";
    EXPECT_EQ(items(0), "Show Only PID 770|Hide PID 770|Select All with PID 770||Expand|-Unexpand" +
                            copies + "Set MarkCtrl+F2|-Select Marked");
    choose("Expand");
    EXPECT_TRUE(browser.expansionWindow().isVisible());
    window().activateWindow();
    QTest::keyClick(&table(), Qt::Key_F2, Qt::ControlModifier);
    EXPECT_THAT(items(0).toStdString(),
                testing::HasSubstr(
                    ("||-Expand|Unexpand" + copies + "Clear MarkCtrl+F2|Select Ma").toStdString()));
    choose("Unexpand");
    EXPECT_EQ(browser.session().expanded().recordCount(), 0U);
    EXPECT_THAT(items(1).toStdString(), testing::HasSubstr("||-Expand|-Unexpand||"));
    choose("Set Mark");
    EXPECT_THAT(markedRows(), ElementsAre(0, 1));
    // By the keyboard it comes where the row is, which is scrolled into sight for that.
    load(write("many.log", std::vector<TestEntry>(1000)));
    table().scrollToBottom();
    QTest::keyClick(&table(), Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(table().verticalScrollBar()->value(), 0);
    QApplication::activePopupWidget()->close();
}

TEST_F(ContextMenuTest, SelectsAndCopiesRows) {
    load(write("a.log", {{.hour = 1, .pid = 770, .name = "f\tg()"},
                         {.hour = 2, .pid = 7, .blocks = {{.address = 1, .data = "abc"}}},
                         {.hour = 3, .pid = 770}}));
    const QClipboard& clipboard = *QGuiApplication::clipboard();
    EXPECT_EQ(openMenu(table(), 2, zelqColumn::Pid), "PID 770");
    choose("Select All with PID 770");
    EXPECT_EQ(table().selectedRecords().size(), 2U);
    for (int id = zelqId::kFirstColumn; id <= zelqId::kLastColumn - 1; ++id) {
        if (id != zelqId::kFirstColumn + 4) {
            window().command(id);
        }
    }
    openMenu(table(), 2, zelqColumn::Pid);
    choose("Copy Rows");
    EXPECT_EQ(clipboard.text(), "770\tf\\u0009g\n770\t\n");
    EXPECT_THAT(status().toStdString(), testing::HasSubstr("Rows copied: 2|"));
    window().command(zelqId::kDeselectAll);
    // Not from the selection, for the row is not in it; and it is no dump that counts.
    for (int times = 0; times < 2; ++times) {
        table().setCurrentIndex(table().model()->index(1, 0));
        window().command(zelqId::kDeselectAll);
        QTest::keyClick(&table(), Qt::Key_F10, Qt::ShiftModifier);
        choose("Copy Rows with Data");
        wait();
        EXPECT_TRUE(clipboard.text().startsWith("7\t\n01000000  61 62 63 ")) << times;
    }
    load(write("many.log", std::vector<TestEntry>(100'001)));
    window().command(zelqId::kSelectAll);
    openMenu(table(), 5, zelqColumn::Function);
    choose("Copy Rows");
    EXPECT_THAT(status().toStdString(), testing::HasSubstr("100,001 rows"));
    EXPECT_TRUE(clipboard.text().startsWith("7\t\n"));
}

TEST_F(ContextMenuTest, LinesHaveAMenu) {
    load(write("a.log", {{.pid = 1}, {.pid = 2, .blocks = {{.data = "abc"}}}}));
    window().command(zelqId::kExpandAll);
    auto& lines = *browser.expansionWindow().findChild<QListView*>();
    lines.setCurrentIndex(lines.model()->index(lines.model()->rowCount() - 5, 0));
    QGuiApplication::clipboard()->clear();
    QTest::keyClick(&lines, Qt::Key_F10, Qt::ShiftModifier);
    QStringList items;
    for (const QAction* action : QApplication::activePopupWidget()->actions()) {
        items += (action->isEnabled() ? "" : "-") + action->text().remove('&');
    }
    EXPECT_EQ(items.join('|'), "Copy|Select All||Go to Record||Find...");
    QApplication::activePopupWidget()->close();
    for (const QString item : {"Copy", "Go to Record", "Select All"}) {
        QTest::keyClick(&lines, Qt::Key_F10, Qt::ShiftModifier);
        choose(item);
    }
    wait();
    EXPECT_TRUE(QGuiApplication::clipboard()->text().contains("61 62 63"));
    EXPECT_EQ(table().currentIndex().row(), 1);
    EXPECT_TRUE(lines.selectionModel()->isSelected(lines.model()->index(0, 0)));
}

}  // namespace
