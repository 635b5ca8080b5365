#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <filesystem>
#include <map>

#include "GuiTest.h"

namespace {

class UnloadDialogTest : public GuiTest {
protected:
    void unloadBy(const std::function<void(QDialog&, QListWidget&)>& act) {
        onModalDialog([&act](QDialog& dialog) { act(dialog, *dialog.findChild<QListWidget*>()); });
        EXPECT_TRUE(window().command(zelqId::kUnload));
        wait();
    }
};

TEST_F(UnloadDialogTest, UnloadsTheLogThatIsSelectedAndOnlyItsButtonsEndIt) {
    for (const char* name : {"a.log", "b.log", "c.log"}) {
        merge(write(name, {{.name = name}}));
    }
    unload(1);
    unloadBy([](QDialog& dialog, QListWidget&) { press(dialog, zelqId::kUnloadAction); });
    unloadBy([](QDialog& dialog, QListWidget& list) {
        QTest::keyClick(&list, Qt::Key_Down);
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_FALSE(dialog.close());  // as Alt+F4 and the close box do
        EXPECT_TRUE(dialog.isVisible());
        press(dialog, zelqId::kUnloadCancel);
        EXPECT_FALSE(dialog.isVisible());
    });
    ASSERT_EQ(browser.session().logs().logCount(), 2);
    unloadBy([this](QDialog&, QListWidget& list) {
        EXPECT_EQ(list.count(), 2);
        EXPECT_EQ(list.item(0)->text().toStdString(), folder.file("a.log"));
        QTest::keyClick(&list, Qt::Key_End);
        QTest::keyClick(&list, Qt::Key_Return);
    });
    EXPECT_EQ(browser.session().logs().logName(2), "");  // its slot, though it stood second
    EXPECT_THAT(column(zelqColumn::Function), testing::ElementsAre("a.log"));
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
    const std::string first = listing(out, zelqId::kWriteAction);
    EXPECT_LT(first.find("Pid:    1"), first.find("Pid:    2"));
    EXPECT_NE(first.find("\n10000000  "), std::string::npos);
    // It is replaced; every dump after the first shows true addresses.
    const std::string second = listing(out, zelqId::kWriteAction);
    EXPECT_EQ(second.size(), first.size());
    EXPECT_NE(second.find("\n00000010  "), std::string::npos);
    // What is asked for while a log without entries is read finds nothing to write.
    browser.setFileName(write("empty.log", {}));
    browser.loadLog();
    EXPECT_EQ(listing(out, zelqId::kWriteAction), second);
}

class FilterDialogTest : public GuiTest {};

TEST_F(FilterDialogTest, StandsInTheMiddleWithItsButtonsInOrder) {
    load(write("a.log", {{.pid = 9}, {.pid = 10}}));
    onModalDialog([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "PID Filter Data Entry");
        EXPECT_EQ(dialog.size(), QSize(600, 300));
        EXPECT_EQ(dialog.pos() + QPoint(300, 150),
                  dialog.screen()->geometry().center() + QPoint(1, 1));
        auto* const list = dialog.findChild<QListView*>("16501");
        EXPECT_EQ(list->accessibleName(), "Define the process IDs to be displayed");
        EXPECT_EQ(QApplication::focusWidget(), list);
        std::map<int, QString> buttons;  // from left to right
        for (const QPushButton* button : dialog.findChildren<QPushButton*>()) {
            buttons[button->x()] = button->objectName() + button->text();
            EXPECT_EQ(button->isDefault(), button->text() == "&OK");
        }
        std::vector<QString> texts;
        for (const auto& [x, text] : buttons) {
            texts.push_back(text);
        }
        EXPECT_THAT(texts, testing::ElementsAre("15902&OK", "15904Select All", "15905Deselect All",
                                                "15906Delete Filter", "15903Cancel"));
        QTest::keyClick(list, Qt::Key_Space, Qt::ControlModifier);  // deselects the first
        QTest::keyClick(list, Qt::Key_Return);
    });
    EXPECT_TRUE(window().command(zelqId::kPidFilter));
    EXPECT_THAT(column(zelqColumn::Pid), testing::ElementsAre("10"));
}

}  // namespace
