#include <QAbstractItemModelTester>
#include <QAction>
#include <QDesktopServices>
#include <QFile>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QScrollBar>
#include <QTextBrowser>
#include <array>
#include <random>
#include <set>

#include "resources/zelqReadablePalette.h"
#include "ui/zelqManual.h"
#include "widgets/zelqElidedLabel.h"

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
};

TEST_F(WindowTest, MenusHaveTheirItemsInOrder) {
    const QStringList expected{
        "&File|&Load...|&Merge...|&Unload...||&Write log to disk...||E&xit",
        "&Edit|&Select allCtrl+/|&Deselect allCtrl+\\||&Reverse selections",
        "F&ilters|&Entry types...|&Times...|&Dates...|&PIDs...|T&IDs...|&Major errors...|"
        "Mi&nor errors...|Detect p&oints...|&Functions...||&Remove all filters",
        "&Columns|*&Entry type|*E&xpandability|*&Time|*&Date|*&PID|*T&ID|*&Major error|"
        "*Mi&&nor error|*Detect p&oint|*DP T&ype|*&Function",
        "E&xpansion|&Expand|&Unexpand||E&xpand all|Unex&pand all||Expand &selected|"
        "Unexpand se&lected||Expand &non-selected|Unexpand non-sele&cted",
        "&Display|Display &all||Display only &selected|Display only &non-selected||"
        "Display only &expanded|Display only non-e&xpanded"};
    QStringList menus;
    for (const QAction* title : window().menuBar()->actions()) {
        QString texts = title->text();
        for (const QAction* action : title->menu()->actions()) {
            texts +=
                (action->isChecked() ? "|*" : "|") + action->text() + action->shortcut().toString();
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
    std::minstd_rand random(7);
    std::vector<TestEntry> entries(6000);
    for (TestEntry& entry : entries) {
        const auto number = [&random] {
            return static_cast<std::uint32_t>(random()) >> random() % 32;
        };
        entry = {.type = number() % 8 == 0 ? std::uint16_t{1} : std::uint16_t{0x13},
                 .hour = 12,
                 .pid = number(),
                 .tid = number(),
                 .majorError = number(),
                 .minorError = number(),
                 .detectPoint = number(),
                 .detectPointCode = number() % 5};
        while (random() % 16 != 0) {
            entry.name += static_cast<char>(' ' + random() % 95);
        }
    }
    table().horizontalHeader()->setFont(QFont("", 1));  // headings narrower than the values
    load(write("wide.log", entries));
    const auto widths = [this] {
        return std::array{table().columnWidth(4), table().columnWidth(10)};
    };
    const auto wide = widths();
    for (int section = 0; section < 11; ++section) {
        int needed = 0;
        for (int row = 0; row < 6000; ++row) {
            needed = std::max(needed, table().fontMetrics().horizontalAdvance(cell(row, section)));
        }
        EXPECT_GE(table().columnWidth(section), needed + 4) << section;
        EXPECT_LE(table().columnWidth(section), needed + 40) << section;
    }
    table().setColumnWidth(3, 33);
    browser.displayOnly(zelqDisplayed::Expanded);
    merge(write("small.log", {{.pid = 1}}));
    EXPECT_EQ(widths(), wide);
    EXPECT_EQ(table().columnWidth(3), 33);
    load(write("small.log", {{.pid = 1}}));
    EXPECT_LT(widths(), wide);
    for (const int points : {30, 8}) {
        table().setFont(QFont(table().font().family(), points));
        const QFontMetrics metrics = table().fontMetrics();
        EXPECT_EQ(table().visualRect(table().model()->index(0, 0)).height(),
                  std::max(metrics.height(), 16) + 4);
        EXPECT_NEAR(table().columnWidth(2), metrics.horizontalAdvance("00:00:00") + 8, 4);
    }
}

TEST(ElidedLabel, HasRoomForItsTextWithinLimits) {
    zelqElidedLabel label;
    label.showText("Some text", "<The whole>");
    EXPECT_EQ(label.toolTip(), "<p>&lt;The whole&gt;</p>");
    EXPECT_EQ(label.accessibleName(), "<The whole>");
    const QSize size = label.sizeHint();
    EXPECT_EQ(label.minimumSizeHint().height(), size.height());
    label.resize(size);
    EXPECT_EQ(label.contentsRect().height(), label.fontMetrics().height());
    const QImage whole = label.grab().toImage();
    label.resize(2 * size);
    EXPECT_EQ(label.grab(QRect(0, size.height() / 2, size.width(), size.height())).toImage(),
              whole);
    label.showText(QString(1000, 'x'));
    const int character = label.fontMetrics().averageCharWidth();
    EXPECT_EQ(label.sizeHint().width() - label.minimumSizeHint().width(), 54 * character);
    EXPECT_NEAR(label.minimumSizeHint().width(), 6 * character, 9);
}

TEST(ReadablePalette, SelectedTextCanBeRead) {
    for (const auto& [text, background, readable] :
         std::vector<std::array<const char*, 3>>{{"white", "#308cc6", "#2a7bae"},
                                                 {"white", "yellow", "#7a7a00"},
                                                 {"white", "#777777", "#757575"},  // a step
                                                 {"#101010", "#303030", "#7f7f7f"},
                                                 {"black", "yellow", "#ffff00"}}) {
        QPalette palette;
        palette.setColor(QPalette::Highlight, background);
        palette.setColor(QPalette::HighlightedText, text);
        for (const auto group : {QPalette::Active, QPalette::Inactive}) {
            EXPECT_EQ(zelqReadablePalette::from(palette).color(group, QPalette::Highlight).name(),
                      readable);
            // They stay together whatever colours come from elsewhere.
            EXPECT_TRUE(zelqReadablePalette::from({}).isBrushSet(group, QPalette::HighlightedText));
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
    window().resize(300, 300);
    QTest::keyClick(&table(), Qt::Key_Right);
    const int offset = table().horizontalScrollBar()->value();
    EXPECT_GT(offset, 0);
    QTest::keyClick(&table(), Qt::Key_End);
    EXPECT_EQ(table().horizontalScrollBar()->value(), offset);
    QTest::keyClick(&table(), Qt::Key_Left);
    EXPECT_EQ(table().horizontalScrollBar()->value(), 0);
}

TEST_F(WindowTest, OnlyCommandsOfTheTableAreHandled) {
    for (const int id : {0, 10711, 10716, 10717, 10718, 10723, 10734, 10746, 10755, 10761, 61537}) {
        EXPECT_FALSE(window().command(id)) << id;
    }
    EXPECT_TRUE(window().command(0x10000 + 10740));  // the low 16 bits count
    EXPECT_THAT(headings(), SizeIs(kColumnCount - 1));
    // The rule for the window's place counts from the bottom of the desktop, and rounds so.
    EXPECT_EQ(zelqBWindow::initialRectangle({1023, 767}), QRect(205, 96, 613, 575));
    EXPECT_EQ(QRect(window().pos(), window().size()),
              zelqBWindow::initialRectangle(window().screen()->size()));
    EXPECT_EQ(window().windowTitle() + ": " + table().accessibleName(),
              "RAS Log Browser: Log records");
    EXPECT_FALSE(window().windowIcon().isNull());
}

TEST_F(WindowTest, TheManualIsShownOrSaidToBeMissing) {
    QTextBrowser user;
    QDesktopServices::setUrlHandler("file", &user, "setSource");
    QTest::keyClick(&window(), Qt::Key_F1);
    EXPECT_NE(user.source().isEmpty(), window().statusLine().outcome().isEmpty());
    const QFileInfo page(QString::fromStdString(folder.write("manual.html", "Read me")));
    const QString missing = page.path() + "/nosuch";
    EXPECT_EQ(zelqManual::open({missing, page.path()}), "");
    EXPECT_EQ(user.toPlainText(), "Read me");
    EXPECT_EQ(zelqManual::open({missing}),
              "The manual is not installed: there is no " + missing + "/manual.html");
    QDesktopServices::unsetUrlHandler("file");
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
