#include <QAbstractItemModelTester>
#include <QAction>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <array>
#include <set>

#include "resources/zelqReadablePalette.h"

#include "GuiTest.h"

using testing::ElementsAre;
using testing::SizeIs;

namespace {

class WindowTest : public GuiTest {
protected:
    /// Opens a menu by its mnemonic and chooses items by their own.
    void choose(Qt::Key menu, const std::vector<Qt::Key>& items) {
        for (const Qt::Key item : items) {
            QTest::keyClick(&window(), menu, Qt::AltModifier);
            ASSERT_NE(QApplication::activePopupWidget(), nullptr);
            QTest::keyClick(QApplication::activePopupWidget(), item);
        }
    }
    bool isChecked(int id) {
        return window().findChild<QAction*>(QString::number(id))->isChecked();
    }
};

TEST_F(WindowTest, MenusHaveTheirItemsInOrder) {
    const QStringList expected{
        "&File|&Load...|&Merge...|&Unload...||&Write log to disk...||E&xit",
        "&Edit|&Select allCtrl+/|&Deselect allCtrl+\\||&Reverse selections",
        "F&ilters|&Entry types...|&Times...|&Dates...|&PIDs...|T&IDs...|&Major errors...|"
        "Mi&nor errors...|Detect p&oints...|&Functions...||&Remove all filters",
        "&Columns|&Entry type|E&xpandability|&Time|&Date|&PID|T&ID|&Major error|Mi&&nor error|"
        "Detect p&oint|DP T&ype|&Function",
        "E&xpansion|&Expand|&Unexpand||E&xpand all|Unex&pand all||Expand &selected|"
        "Unexpand se&lected||Expand &non-selected|Unexpand non-sele&cted",
        "&Display|Display &all||Display only &selected|Display only &non-selected||"
        "Display only &expanded|Display only non-e&xpanded"};
    QStringList menus;
    for (const QAction* title : window().menuBar()->actions()) {
        QString texts = title->text();
        for (const QAction* action : title->menu()->actions()) {
            texts += '|' + action->text() + action->shortcut().toString();
        }
        menus += texts;
    }
    EXPECT_EQ(menus, expected);
}

TEST_F(WindowTest, ColumnsHaveHeadingsWidthsAndIcons) {
    EXPECT_THAT(headings(),
                ElementsAre("Log Entry Type", "", "Time", "Date", "PID", "TID", "Major Error",
                            "Minor Error", "Detect Point", "Detect Point Type", "Function"));
    load(write("types.log", {{.type = 3},
                             {.type = 0x0015, .name = "SomeQuiteLongName(int)"},
                             {.type = 0x2002},
                             {.type = 4}}));
    EXPECT_EQ(table().columnWidth(1), 20);
    EXPECT_GE(table().columnWidth(10),
              table().fontMetrics().horizontalAdvance("SomeQuiteLongName"));
    EXPECT_THAT(column(zelqColumn::EntryType), ElementsAre("Error", "Trace", "Message", "Unknown"));
    std::set<QByteArray> images;
    for (int i = 0; i < 4; ++i) {
        const QVariant icon = table().model()->index(i, 0).data(Qt::DecorationRole);
        const QImage image = icon.value<QIcon>().pixmap(16, 16).toImage();
        images.insert({reinterpret_cast<const char*>(image.bits()), image.sizeInBytes()});
        EXPECT_FALSE(table().model()->index(i, 1).data(Qt::DecorationRole).isValid());
    }
    images.insert(QByteArray(images.begin()->size(), '\0'));  // none is empty
    EXPECT_THAT(images, SizeIs(5));
}

TEST(RecordIcons, ADamagedModuleGivesNone) {
    const TemporaryFolder folder;
    for (const bool damaged : {false, true}) {
        for (const QString name : {"zelqicon.rcc", "zelqicon.rcc.sha256"}) {
            QFile file(QCoreApplication::applicationDirPath() + '/' + name);
            ASSERT_TRUE(file.open(QIODevice::ReadOnly));
            std::string bytes = file.readAll().toStdString();
            for (std::size_t i = 24; damaged && name.endsWith(".rcc") && i < bytes.size(); ++i) {
                bytes[i] = static_cast<char>(~bytes[i]);  // all but the header
            }
            std::ignore = folder.write(name.toStdString(), bytes);
        }
        const zelqRecordIcons icons({"/nonexistent", QString::fromStdString(folder.file(""))});
        const QIcon icon = icons.icon(zelqRecordIcon::Error);
        EXPECT_THAT(icon.availableSizes(), SizeIs(damaged ? 0 : 4));
        EXPECT_EQ(icon.isNull(), damaged);
    }
}

TEST_F(WindowTest, ColumnsAreAsWideAsTheWidestValueOfAllRecords) {
    std::vector<TestEntry> entries(6000, {.pid = 5, .name = "f()"});
    entries[5000] = {.pid = 4000000000, .name = "AFunctionWithAVeryLongName(int)"};
    const std::string file = write("wide.log", entries);
    load(file);
    const auto widths = [this] {
        return std::array{table().columnWidth(4), table().columnWidth(10)};
    };
    const auto wide = widths();
    for (const int section : {4, 10}) {
        const QModelIndex cell = table().model()->index(5000, section);
        EXPECT_GE(table().columnWidth(section),
                  table().fontMetrics().horizontalAdvance(cell.data().toString()) + 4);
    }
    table().scrollTo(table().model()->index(5000, 0));
    const QImage picture =
        table().viewport()->grab(table().visualRect(table().model()->index(5000, 4))).toImage();
    std::set<QRgb> colours;
    for (int x = 0; x < picture.width(); ++x) {
        colours.insert(picture.pixel(x, picture.height() / 2));
    }
    EXPECT_GT(colours.size(), 1U);  // the row is painted
    table().setColumnWidth(3, 33);
    browser.displayOnly(zelqDisplayed::Expanded);
    merge(write("small.log", {{.pid = 1}}));
    EXPECT_EQ(widths(), wide);
    EXPECT_EQ(table().columnWidth(3), 33);
    load(write("small.log", {{.pid = 1}}));
    EXPECT_LT(widths(), wide);
}

TEST(ReadablePalette, SelectedTextCanBeRead) {
    for (const QColor colour : {QColor(48, 140, 198), QColor(145, 145, 145), QColor(Qt::yellow)}) {
        QPalette palette;
        palette.setColor(QPalette::Highlight, colour);
        palette.setColor(QPalette::HighlightedText, Qt::white);
        const QPalette readable = zelqReadablePalette::from(palette);
        for (const auto group : {QPalette::Active, QPalette::Inactive}) {
            EXPECT_GE(
                zelqReadablePalette::contrast(readable.color(group, QPalette::Highlight),
                                              readable.color(group, QPalette::HighlightedText)),
                zelqReadablePalette::kLeastContrast);
        }
    }
}

TEST_F(WindowTest, AHiddenColumnComesBackInItsOwnPlace) {
    const QAbstractItemModelTester tester(table().model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    load(write("one.log", {{.hour = 7, .pid = 5}}));
    const std::vector<QString> all = headings();
    table().setColumnWidth(3, 123);  // as a user who drags the heading's edge
    choose(Qt::Key_C, {Qt::Key_D, Qt::Key_E, Qt::Key_F, Qt::Key_X});
    EXPECT_THAT(row(0), ElementsAre("07:00:00", "5", "0", "0", "0", "0", ""));
    EXPECT_FALSE(isChecked(zelqId::kFirstColumn));
    choose(Qt::Key_C, {Qt::Key_X, Qt::Key_F, Qt::Key_D, Qt::Key_E});
    EXPECT_EQ(headings(), all);
    EXPECT_TRUE(isChecked(zelqId::kFirstColumn));
    EXPECT_EQ(table().columnWidth(3), 123);
}

TEST_F(WindowTest, OnlyCommandsOfTheTableAreHandled) {
    for (const int id : {0, 10711, 10716, 10717, 10718, 10723, 10734, 10746, 10755, 10761, 61537}) {
        EXPECT_FALSE(window().command(id)) << id;
    }
    EXPECT_TRUE(window().command(0x10000 + 10740));  // the low 16 bits count
    EXPECT_THAT(headings(), SizeIs(kColumnCount - 1));
    // The rule for the window's place counts from the bottom of the desktop, and rounds so.
    EXPECT_EQ(zelqBWindow::initialRectangle({1023, 767}), QRect(205, 96, 613, 575));
}

TEST_F(WindowTest, ExitStopsWhatIsBeingRead) {
    browser.setFileName(write("large.log", std::vector<TestEntry>(200000)));
    browser.loadLog();
    browser.mergeLog();
    EXPECT_TRUE(browser.isBusy());
    choose(Qt::Key_F, {Qt::Key_X});
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window().isVisible(); }));
    EXPECT_FALSE(browser.isBusy());
    QTest::qWait(50);
    EXPECT_EQ(browser.session().logs().logCount(), 0);
    EXPECT_EQ(table().model()->rowCount(), 0);
}

}  // namespace
