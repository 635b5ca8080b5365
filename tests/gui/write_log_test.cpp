#include <QLineEdit>
#include <QPushButton>
#include <filesystem>

#include "resources/zelqIds.h"

#include "GuiTest.h"

namespace {

class WriteLogTest : public GuiTest {
protected:
    void write(const QString& name, const char* button) {
        onModalDialog([name, button](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Write log to disk");
            EXPECT_TRUE(dialog.findChild<QPushButton*>("15804")->isDefault());
            auto* const field = dialog.findChild<QLineEdit*>();
            QTest::keyClicks(field, name);
            EXPECT_EQ(field->text(), name.left(256));
            QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
        });
        EXPECT_TRUE(window().command(zelqId::kWriteLog));
        wait();
    }
};

TEST_F(WriteLogTest, WritesEveryRecordInReadingOrder) {
    const QString out = QString::fromStdString(folder.file("out.txt"));
    write(out, "15804");  // there is nothing to write
    EXPECT_FALSE(std::filesystem::exists(out.toStdString()));

    load(folder.write("a.log", logImage({{.hour = 9, .pid = 1, .blocks = {{.address = 0x10}}}})));
    merge(folder.write("b.log", logImage({{.hour = 8, .pid = 2}})));
    write(QString(300, 'x'), "15805");
    write("", "15804");
    write(out, "15804");
    const std::string first = contentOf(out.toStdString());
    EXPECT_LT(first.find("Pid:    1"), first.find("Pid:    2"));
    EXPECT_NE(first.find("\n10000000  "), std::string::npos);

    write(out, "15804");  // replaces it; every dump after the first shows true addresses
    const std::string second = contentOf(out.toStdString());
    EXPECT_EQ(second.size(), first.size());
    EXPECT_NE(second.find("\n00000010  "), std::string::npos);
    for (const auto& entry : std::filesystem::directory_iterator(folder.file(""))) {
        EXPECT_FALSE(entry.path().filename().string().starts_with('.'));
    }
}

}  // namespace
