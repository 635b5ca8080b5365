// What many rows take is done in threads. It has to come to what it comes to without.

#include <QScrollBar>
#include <QStatusBar>
#include <new>
#include <set>

#include "support/TestSession.h"

#include "GuiTest.h"

namespace {

using Kind = zelqFilterKind;
using Step = std::function<void(zelqBrowser&)>;

Step command(int id) {
    return [id](zelqBrowser& browser) { browser.mainWindow().command(id); };
}

Step filter(Kind kind, const std::vector<std::uint32_t>& values) {
    return [kind, values](zelqBrowser& browser) {
        zelqValueTest::Choice choice({0, 1, 2, 3, 4}, nullptr);
        std::vector<bool> items(5);
        for (const std::uint32_t value : values) {
            items[value] = true;
        }
        choice.accept(std::move(items));
        auto stage = std::make_unique<zelqFilterStage>(kind, zelqValueTest(kind, choice));
        browser.mainWindow().applyChoice(kind, std::move(stage), false);
    };
}

void selectThirds(zelqBrowser& browser) {
    browser.whenSettled([&browser] {
        zelqRecordContainer& table = browser.mainWindow().container();
        zelqRowSelection::Rows rows(table.rowsSelected().size());
        for (std::size_t row = 0; row < rows.size(); row += 3) {
            rows.set(row);
        }
        table.selectRows(std::move(rows));
    });
}

/// The window with the text of its expanded records; null if it was not made yet.
zelqBExpansionWindow* expansionOf(const zelqBrowser& browser) {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* const window = qobject_cast<zelqBExpansionWindow*>(widget);
        if (window != nullptr && &window->lines().records() == &browser.session().expanded()) {
            return window;
        }
    }
    return nullptr;
}

/// What is shown and said, with TIDs for records.
std::string stateOf(zelqBrowser& browser) {
    browser.session().checkInvariants();
    const zelqRecordContainer& table = browser.mainWindow().container();
    std::string state;
    std::size_t row = 0;
    for (const zelqBCnrObject* record : browser.session().shown().records()) {
        state += (table.rowsSelected().test(row++) ? " *" : " ") + std::to_string(record->tid()) +
                 std::string(record->expandMarkText());
    }
    state += " parked";
    for (const zelqBCnrObject* record : browser.session().parked().records()) {
        state += ' ' + std::to_string(record->tid());
    }
    state += " expanded";
    for (const zelqExpandedRecords::Place& place : browser.session().expanded().places()) {
        state += ' ' + std::to_string(place.record->tid()) +
                 (place.form == zelqAddressForm::Reversed ? "r" : "");
    }
    for (int id = zelqId::kEntryTypeFilter; id <= zelqId::kFunctionFilter; ++id) {
        const auto* item = browser.mainWindow().findChild<QAction*>(QString::number(id));
        state += item->isChecked() ? "x" : "-";
    }
    for (const QWidget* part : browser.mainWindow().statusBar()->findChildren<QWidget*>()) {
        const std::string said = part->property("text").toString().toStdString();
        state += part->isHidden() || said.empty() ? "" : '|' + said;
    }
    state += browser.mainWindow().cursor().shape() == Qt::ArrowCursor ? "" : " waits";
    if (zelqBExpansionWindow* const window = expansionOf(browser)) {
        const auto& lines = *window->findChild<QListView*>();
        state += window->isVisible() ? " seen " : " hidden ";
        state += std::to_string(lines.verticalScrollBar()->maximum()) + '/' +
                 std::to_string(lines.verticalScrollBar()->value()) + '/' +
                 std::to_string(lines.horizontalScrollBar()->maximum());
    }
    return state + ' ' + browser.fileName();
}

class BackgroundTest : public GuiTest {
protected:
    BackgroundTest() {
        std::uint32_t tid = 0;
        for (std::string& name : logs_) {
            std::vector<TestEntry> entries;
            for (std::uint32_t i = 0; i < 30; ++i, ++tid) {
                const auto cut = i % 7 == 6 ? std::optional<std::uint16_t>(24) : std::nullopt;
                entries.push_back({.second = static_cast<std::uint8_t>(i * 11 % 50),
                                   .pid = i % 5,
                                   .tid = tid,
                                   .majorError = i / 5 % 5,
                                   .entryLength = cut});
            }
            name = write(name, entries);
        }
    }
    [[nodiscard]] std::vector<Step> steps() const {
        const auto merge = [this](std::size_t log) {
            return [name = logs_[log]](zelqBrowser& one) { one.merge(name); };
        };
        return {merge(0),
                merge(1),
                selectThirds,
                command(zelqId::kExpandSelected),
                filter(Kind::Pid, {0, 1, 3}),
                command(zelqId::kReverseSelections),
                filter(Kind::MajorError, {0, 2, 3}),
                merge(2),
                command(zelqId::kExpand),
                command(zelqId::kDisplayOnlySelected),
                selectThirds,
                command(zelqId::kExpandNonSelected),
                command(zelqId::kDisplayOnlyExpanded),
                filter(Kind::Pid, {1, 2, 3, 4}),
                command(zelqId::kDisplayAll),
                [](zelqBrowser& one) { one.unloadLog(1); },
                command(zelqId::kDisplayOnlyNonSelected),
                command(zelqId::kRemoveAllFilters),
                command(zelqId::kExpandAll),
                command(zelqId::kUnexpandSelected),
                command(zelqId::kDisplayOnlyNonExpanded),
                merge(1),
                [this](zelqBrowser& one) { one.load(logs_[2]); },
                command(zelqId::kExpandAll)};
    }
    static bool isOfLogs(std::size_t step) {
        return step < 2 || step == 7 || step == 15 || step == 21 || step == 22;
    }
    static void waitFor(zelqBrowser& one) {
        ASSERT_TRUE(QTest::qWaitFor([&one] { return !one.isBusy(); }, 20000));
    }

    std::array<std::string, 3> logs_{"a", "b", "c"};
};

TEST_F(BackgroundTest, CommandsComeToTheSame) {
    zelqBrowser threaded;
    zelqBrowser queued;  // is asked for more before anything is done
    threaded.setMostAtOnce(0);
    queued.setMostAtOnce(0);
    std::size_t number = 0;
    for (const Step& step : steps()) {
        SCOPED_TRACE(number++);
        for (zelqBrowser* one : {&browser, &threaded}) {
            if (zelqBExpansionWindow* const window = expansionOf(*one)) {
                window->hide();
            }
            step(*one);
            waitFor(*one);
        }
        step(queued);
        if (isOfLogs(number - 1)) {  // while a log is read commands work on what is shown
            waitFor(queued);
        }
        EXPECT_EQ(stateOf(threaded), stateOf(browser));
    }
    // The last is a listing; that of the third waits for what was asked for before.
    const std::string listing = folder.file("listing");
    std::set<std::string> written;
    for (zelqBrowser* one : {&queued, &threaded, &browser}) {
        one->writeLog(listing);
        waitFor(*one);
        EXPECT_FALSE(written.insert(contentOf(listing)).second && written.size() > 1);
    }
    EXPECT_GT(written.begin()->size(), 5000U);
    expansionOf(queued)->hide();
    browser.expansionWindow().hide();
    QCoreApplication::processEvents();
    EXPECT_EQ(stateOf(queued), stateOf(browser));
}

TEST_F(BackgroundTest, ClosingEndsThemAtAnyTime) {
    for (std::size_t last = 0; last < steps().size(); ++last) {
        zelqBrowser closed;
        closed.mainWindow().show();
        for (std::size_t number = 0; number <= last; ++number) {
            closed.setMostAtOnce(number == last ? 0 : 1000);
            steps()[number](closed);
            if (number < last) {
                waitFor(closed);
            }
        }
        QCoreApplication::processEvents();
        closed.mainWindow().close();
        EXPECT_FALSE(closed.isBusy());
        EXPECT_EQ(closed.session().expanded().recordCount(), 0U);
        closed.session().checkInvariants();
    }
}

/// While a change waits for its thread, what the user does to the selection is not lost on rows
/// that change under it.
TEST_F(BackgroundTest, TheSelectionStaysWhileAChangeIsPrepared) {
    merge(logs_[0]);
    browser.setMostAtOnce(0);
    click(2);
    const std::vector<zelqBCnrObject*> selected = table().selectedRecords();
    filter(Kind::Pid, {selected.front()->pid()})(browser);
    click(4);
    EXPECT_EQ(table().selectedRecords(), selected);
    wait();
    EXPECT_EQ(table().selectedRecords(), selected);
    click(1);
    EXPECT_NE(table().selectedRecords(), selected);

    browser.change([](zelqSessionDraft& /*draft*/) { throw std::bad_alloc(); }, nullptr);
    EXPECT_TRUE(browser.isBusy());
    wait();
    EXPECT_TRUE(status().contains("Not done: there is not enough memory"));
    click(3);
    EXPECT_EQ(table().selectedRecords(), std::vector{table().cursoredRecord()});
}

}  // namespace
