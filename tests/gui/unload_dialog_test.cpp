#include <QListWidget>
#include <QPushButton>

#include "dialogs/zelqBUnloadDlg.h"
#include "resources/zelqIds.h"

#include "GuiTest.h"

namespace {

class UnloadDialogTest : public GuiTest {
protected:
    UnloadDialogTest() {
        for (const char* name : {"a.log", "b.log", "c.log"}) {
            merge(folder.write(name, logImage({{.name = name}})));
        }
        browser.unloadLog(1);
        wait();
    }
    QListWidget* list(QDialog& dialog) { return dialog.findChild<QListWidget*>("15602"); }
    void press(QDialog& dialog, const char* button) {
        QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
    }
    void unload(const std::function<void(QDialog&)>& act) {
        onModalDialog(act);
        EXPECT_TRUE(window().command(zelqId::kUnload));
        wait();
    }
};

TEST_F(UnloadDialogTest, UnloadsTheLogThatIsSelected) {
    unload([this](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Unload Log File");
        EXPECT_TRUE(dialog.findChild<QPushButton*>("15604")->isDefault());
        EXPECT_EQ(list(dialog)->accessibleName(), "Select a log file to unload");
        ASSERT_EQ(list(dialog)->count(), 2);
        EXPECT_EQ(list(dialog)->item(0)->text().toStdString(), folder.file("a.log"));
        EXPECT_EQ(list(dialog)->item(1)->text().toStdString(), folder.file("c.log"));
        QTest::keyClick(list(dialog), Qt::Key_End);
        QTest::keyClick(list(dialog), Qt::Key_Return);
    });
    EXPECT_EQ(browser.logs().logName(2), "");  // its slot, though it stood second
    EXPECT_THAT(column(zelqColumn::Function), testing::ElementsAre("a.log"));
}

TEST_F(UnloadDialogTest, NothingSelectedOrCancelledUnloadsNothing) {
    unload([this](QDialog& dialog) { press(dialog, "15604"); });
    unload([this](QDialog& dialog) {
        QTest::keyClick(list(dialog), Qt::Key_Down);
        press(dialog, "15605");
    });
    EXPECT_EQ(browser.logs().logCount(), 2);
}

TEST_F(UnloadDialogTest, OnlyItsButtonsEndIt) {
    unload([this](QDialog& dialog) {
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_FALSE(dialog.close());  // as Alt+F4 and the close box do
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_FALSE(dialog.windowFlags() & Qt::WindowCloseButtonHint);
        press(dialog, "15605");
        EXPECT_FALSE(dialog.isVisible());
    });
}

}  // namespace
