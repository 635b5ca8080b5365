#include <QAccessible>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QToolTip>
#include <array>
#include <filesystem>
#include <memory>
#include <numeric>
#include <random>

#include "ui/zelqOverview.h"
#include "widgets/zelqRecordDrag.h"

#include "GuiTest.h"

using testing::ElementsAre;

namespace {

class ContextTest : public GuiTest {
protected:
    void drop(const std::vector<std::string>& names, Qt::KeyboardModifiers keys = Qt::NoModifier,
              Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction,
              const QString& format = {}) {
        QMimeData data;
        QList<QUrl> urls;
        for (const std::string& name : names) {
            urls += QUrl::fromLocalFile(QString::fromStdString(name));
        }
        data.setUrls(urls);
        if (!format.isEmpty()) {
            data.setData(format, {});
        }
        QDragEnterEvent enter(QPoint(50, 50), actions, &data, Qt::LeftButton, keys);
        if (!QApplication::sendEvent(&window(), &enter) || !enter.isAccepted()) {
            return;
        }
        QDropEvent event(QPointF(50, 50), actions, &data, Qt::LeftButton, keys);
        event.setDropAction(Qt::MoveAction);
        QApplication::sendEvent(&window(), &event);
        EXPECT_TRUE(event.isAccepted());
        EXPECT_NE(event.dropAction(), Qt::MoveAction);  // or the source would delete the files
        wait();
    }
    QStringList loaded() {
        QStringList names;
        for (const auto& [slot, log] : browser.session().logs().logs()) {
            const std::string& name = browser.session().logs().logName(slot);
            names += QString::fromStdString(name.substr(name.rfind('/') + 1));
        }
        return names;
    }
};

// What the menu's filters do must be what the dialogs do with the same choice, whatever was done
// before. One program is worked by menus, the other by dialogs.
TEST_F(ContextTest, FiltersLikeTheDialogs) {
    std::mt19937 random(7);
    const auto some = [&random](std::uint32_t most) {
        return static_cast<std::uint32_t>(random() % most);
    };
    constexpr std::array<std::uint16_t, 6> kTypes{3, 0x13, 0x15, 0x2002, 4, 0x0777};
    std::vector<std::string> files;
    for (const std::string name : {"a.log", "b.log"}) {
        std::vector<TestEntry> entries(120);
        for (TestEntry& entry : entries) {
            entry = {.type = kTypes[some(6)],
                     .date = {2026, 11, static_cast<std::uint8_t>(some(3))},
                     .second = static_cast<std::uint8_t>(some(4)),
                     .pid = some(4),
                     .tid = some(4),
                     .majorError = some(3),
                     .minorError = some(3),
                     .detectPoint = some(3),
                     .name = std::array{"f()", "", "a&b()", "g(int)"}[some(4)]};
        }
        files.push_back(write(name, entries));
    }
    const auto other = std::make_unique<zelqBrowser>();
    other->mainWindow().show();
    const std::array<zelqBrowser*, 2> both{&browser, other.get()};
    const auto onBoth = [&](const auto& act) {
        for (zelqBrowser* one : both) {
            act(*one);
            ASSERT_TRUE(QTest::qWaitFor([one] { return !one->isBusy(); }));
        }
    };
    onBoth([&](zelqBrowser& one) { one.load(files[0]); });
    constexpr std::array kColumns{
        zelqColumn::EntryType,  zelqColumn::Time,        zelqColumn::Date,
        zelqColumn::Pid,        zelqColumn::Tid,         zelqColumn::MajorError,
        zelqColumn::MinorError, zelqColumn::DetectPoint, zelqColumn::Function};
    const auto described = [](zelqBrowser& one) {
        QString text;
        for (const zelqBCnrObject* record : one.session().shown().records()) {
            const auto& logs = one.session().logs().logs();
            const auto& log = *logs[static_cast<std::size_t>(record->logIndex())].log;
            text += QString("%1/%2 ").arg(record->logIndex()).arg(*log.indexOf(*record));
        }
        for (const auto& stage : one.session().filters().filters()) {
            text += QString("| %1: %2 %3 ")
                        .arg(static_cast<int>(stage->kind()))
                        .arg(stage->passed().size())
                        .arg(stage->rejected().size());
        }
        for (int id = zelqId::kEntryTypeFilter; id <= zelqId::kFunctionFilter; ++id) {
            const auto* const item = one.mainWindow().findChild<QAction*>(QString::number(id));
            text += item->isChecked() ? "x" : "-";
        }
        return text;
    };
    for (int step = 0; step < 120; ++step) {
        const auto rows = static_cast<std::uint32_t>(table().model()->rowCount());
        if (rows == 0 || some(8) == 0) {
            if (step == 60) {
                onBoth([&](zelqBrowser& one) { one.merge(files[1]); });
            }
            onBoth([](zelqBrowser& one) { one.mainWindow().command(zelqId::kRemoveAllFilters); });
            continue;
        }
        const auto kind = some(9);
        const bool only = some(3) == 0;
        QString named =
            openMenu(table(), static_cast<int>(some(rows)), kColumns[kind]).replace("&&", "&");
        if (kColumns[kind] == zelqColumn::Date) {  // dialogs show the last two digits of a year
            named.remove(named.lastIndexOf('-') + 1, named.size() - named.lastIndexOf('-') - 3);
        }
        choose(only ? "Show Only" : "Hide");
        onModalDialog([&](QDialog& dialog) {
            auto& list = *dialog.findChild<QListView*>();
            if (only) {
                press(dialog, zelqId::kFilterDeselectAll);
            }
            for (int item = 0; item < list.model()->rowCount(); ++item) {
                if (named.endsWith(' ' + list.model()->index(item, 0).data().toString())) {
                    list.selectionModel()->select(
                        list.model()->index(item, 0),
                        only ? QItemSelectionModel::Select : QItemSelectionModel::Deselect);
                }
            }
            press(dialog, zelqId::kFilterOk);
        });
        other->mainWindow().command(zelqId::kEntryTypeFilter + static_cast<int>(kind));
        ASSERT_EQ(described(browser), described(*other)) << step << named.toStdString();
        window().activateWindow();
    }
}

TEST_F(ContextTest, MarksStayWithTheirRecords) {
    const auto press = [this](Qt::KeyboardModifiers keys) {
        QTest::keyClick(&table(), Qt::Key_F2, keys);
        return table().currentIndex().row();
    };
    load(write("a.log", {{.hour = 1, .pid = 1}, {.hour = 5, .pid = 2}, {.hour = 9, .pid = 3}}));
    EXPECT_EQ(press(Qt::NoModifier), 0);
    EXPECT_THAT(status().toStdString(), testing::HasSubstr("No row is marked"));
    for (const int row : {0, 1, 2, 1}) {
        click(row);
        press(Qt::ControlModifier);
    }
    EXPECT_THAT(markedRows(), ElementsAre(0, 2));
    merge(write("b.log", {{.hour = 4, .pid = 4}, {.hour = 11, .pid = 5}}));
    EXPECT_THAT(markedRows(), ElementsAre(0, 3));
    click(4);
    press(Qt::ControlModifier);
    EXPECT_THAT((std::vector{press(Qt::NoModifier), press(Qt::NoModifier), press(Qt::ShiftModifier),
                             press(Qt::ShiftModifier)}),
                ElementsAre(0, 3, 0, 4));
    EXPECT_THAT(status().toStdString(), testing::HasSubstr("went on from the bottom"));
    const QAccessibleInterface* const tool = QAccessible::queryAccessibleInterface(&table());
    const auto describes = [tool](int row) {
        return const_cast<QAccessibleInterface*>(tool)->tableInterface()->cellAt(row, 2)->text(
            QAccessible::Description);
    };
    EXPECT_EQ(describes(3), "Marked");
    EXPECT_EQ(describes(2), "");
    EXPECT_EQ(cell(3, 4), "3");
    openMenu(table(), 3, zelqColumn::Pid);
    choose("Hide PID 3");
    EXPECT_THAT(markedRows(), ElementsAre(0, 3));
    window().command(zelqId::kRemoveAllFilters);
    openMenu(table(), 2, zelqColumn::DetectPointType);
    choose("Select Marked");
    EXPECT_EQ(table().selectedRecords().size(), 3U);
    const auto ribbon = [this](int row) {
        const QRect cell = table().visualRect(table().model()->index(row, 0));
        return table().viewport()->grab(cell.adjusted(0, 2, 4 - cell.width(), -2)).toImage();
    };
    window().command(zelqId::kDeselectAll);
    table().horizontalScrollBar()->setValue(0);
    EXPECT_FALSE(isBlank(ribbon(3)));
    EXPECT_TRUE(isBlank(ribbon(1)));
    unload(0);
    EXPECT_EQ(browser.session().bookmarked().size(), 1U);
    EXPECT_THAT(markedRows(), ElementsAre(1));
}

TEST_F(ContextTest, TheOverviewAddsUp) {
    const QAccessibleInterface* const tool =
        QAccessible::queryAccessibleInterface(&window().overview());
    EXPECT_EQ(tool->text(QAccessible::Name), "Overview of the rows");
    EXPECT_EQ(window().overview().maximum(), 0);
    EXPECT_EQ(window().overview().x(), table().geometry().right() + 1);
    for (const int count : {0, 1, 300, 150'000}) {
        std::vector<TestEntry> entries(static_cast<std::size_t>(count), {.type = 0x15});
        std::size_t errors = 0;
        for (std::size_t i = 0; i < entries.size(); i += 1 + i / 2) {
            entries[i].type = 3;
            ++errors;
        }
        zelqOverview& overview = window().overview();
        load(write("some.log", entries));
        unload(-1);  // while it counts
        load(write("some.log", entries));
        EXPECT_TRUE(QTest::qWaitFor([&overview] { return overview.isExact(); }));
        EXPECT_EQ(overview.maximum(), std::max(1, count) - 1);
        std::vector<std::uint64_t> matches(entries.size() / 64 + 1);
        if (count > 1) {
            table().goToRow(count - 2);
            const QImage unmarked = overview.grab().toImage();
            QTest::keyClick(&table(), Qt::Key_F2, Qt::ControlModifier);
            EXPECT_GE(differing(unmarked, overview.grab().toImage()).height(), 5 - count / 50'000);
            matches[entries.size() / 2 / 64] = std::uint64_t{1} << entries.size() / 2 % 64;
            table().selectRows(zelqRowSelection::Rows(entries.size()).set(1));
        }
        overview.setMatches(matches);
        for (const int height : {1, 100, 700}) {
            double sum = 0;
            std::size_t end = 0;
            std::vector<std::size_t> found(3);
            for (const zelqOverview::Line& line : overview.lines(height)) {
                EXPECT_EQ(line.first, end);
                end = line.end;
                sum += line.errors * static_cast<double>(line.end - line.first);
                found[0] += line.match ? line.end > entries.size() / 2 : 0;
                found[1] += line.selected ? line.first <= 1 : 0;
                found[2] += line.marked ? line.end >= entries.size() - 1 : 0;
            }
            EXPECT_NEAR(sum, static_cast<double>(errors), 0.001) << count;
            EXPECT_EQ(end, entries.size());
            EXPECT_EQ(found, std::vector<std::size_t>(3, count > 1 ? 1 : 0)) << count;
        }
        if (count == 1) {
            QHelpEvent help(QEvent::ToolTip, {3, 9}, overview.mapToGlobal(QPoint(3, 9)));
            QApplication::sendEvent(&overview, &help);
            EXPECT_EQ(QToolTip::text(), "11-21-2026 12:00:00, rows 1 to 1\nErrors: 1 of 1");
        }
        if (count > 300) {
            const QImage picture = overview.grab().toImage();
            EXPECT_FALSE(isBlank(picture));
            QTest::mouseClick(&overview, Qt::LeftButton, {}, {9, overview.height() / 2});
            EXPECT_NEAR(table().currentIndex().row(), 0.5 * count, 0.02 * count);
            const int row = table().currentIndex().row();
            QTest::keyClick(&overview, Qt::Key_Down);
            EXPECT_GT(table().currentIndex().row(), row);
            EXPECT_EQ(table().selectedRecords().size(), 1U);
        }
    }
}

TEST_F(ContextTest, FilesThatAreDroppedAreRead) {
    std::vector<std::string> files;
    for (const std::string name : {"c.log", "a.log", "b.log", "d.log"}) {
        files.push_back(write(name, {{.pid = 1}}));
    }
    drop({files[0]}, {}, Qt::MoveAction);
    drop({files[0]}, {}, Qt::CopyAction, zelqRecordDrag::mimeType());
    EXPECT_EQ(loaded(), QStringList());
    drop({files[0], folder.file(""), files[1]});
    EXPECT_EQ(loaded(), QStringList({"a.log", "c.log"}));
    EXPECT_THAT(status().toStdString(), testing::HasSubstr("(is no file)"));
    drop({files[2], files[1]});
    EXPECT_EQ(loaded(), QStringList({"a.log", "c.log", "b.log"}));
    drop({files[3], files[1]}, Qt::ShiftModifier, Qt::LinkAction);
    EXPECT_EQ(loaded(), QStringList({"a.log", "d.log"}));
    for (int i = 0; i < 100; ++i) {
        files.push_back(write("x" + std::to_string(100 + i), {{.pid = 1}}));
    }
    drop(files);
    EXPECT_EQ(browser.session().logs().logCount(), 100);
    const QString reason = "(as many logs as can be are loaded already)";
    EXPECT_THAT(status().toStdString(),
                testing::HasSubstr(("Not taken: x196 " + reason + ", x197 ").toStdString()));
}

TEST_F(ContextTest, TheStatusLineTellsWhereRowsComeFrom) {
    load(write("a.log", {{.hour = 1, .name = "abc()"},
                         {.hour = 2, .second = 7, .headerLength = 16, .entryLength = 18},
                         {.date = {2026, 12, 1}, .hour = 1},
                         {.date = {2026, 13, 1}, .hour = 1}}));
    const std::array<QString, 4> places{"entry 0, byte 0|", "entry 1, byte 46, +1:00:07|",
                                        "entry 2, byte 64, +9 d 22:59:53|", "entry 3, byte 105|"};
    for (int row = 0; row < 4; ++row) {
        click(row);
        EXPECT_TRUE(status().endsWith("a.log, " + places[static_cast<std::size_t>(row)]))
            << status().toStdString();
    }
    click(0);
    click(1, Qt::ControlModifier);
    EXPECT_TRUE(status().endsWith("|Selected: 2 rows, 01:00:00 to 02:00:07, 1:00:07 long|"));
    window().command(zelqId::kSelectAll);
    EXPECT_TRUE(
        status().endsWith("|Selected: 4 rows, 11-21-2026 01:00:00 to 13-01-2026 01:00:00|"));
}

}  // namespace
