#include "support/Fault.h"

#include <functional>
#include <map>
#include <new>

#include <gtest/gtest.h>

#include "log/zelqEntryReader.h"
#include "log/zelqLogReader.h"
#include "output/zelqListing.h"
#include "support/RandomLog.h"
#include "support/TestSession.h"

namespace {

namespace fs = std::filesystem;
using Kind = zelqFilterKind;

constexpr std::uint32_t kSmall = 40;

const std::string& imageOf(std::uint32_t firstPid, std::uint32_t count) {
    static std::map<std::pair<std::uint32_t, std::uint32_t>, std::string> made;
    std::string& image = made[{firstPid, count}];
    for (std::uint32_t i = image.empty() ? 0 : count; i < count; ++i) {
        appendEntry(image,
                    {.minute = static_cast<std::uint8_t>(i / 977),
                     .second = static_cast<std::uint8_t>(i * 7),
                     .pid = firstPid + i,
                     .tid = i % 4,
                     .majorError = i / 4 % 3,
                     .name = "function" + std::to_string(i % 6),
                     .entryLength = i % 5 == 4 ? std::optional<std::uint16_t>(24) : std::nullopt});
    }
    return image;
}

/// A session in which everything is in use, or one with a log that is large enough for threads to
/// help with it; and the files that are read and written.
struct State : TestSession {
    explicit State(std::uint32_t size) : log(folder.write("log", imageOf(900'000, size))) {
        rewrite();
        add("first", imageOf(0, size));
        if (size == kSmall) {
            add("second", imageOf(1000, size));
            for (zelqBCnrObject* record : session.shown().records()) {
                record->setSelected(record->pid() % 3 != 0);
            }
            session.applyFilter(valueFilter(session, Kind::Tid, {0, 1, 2}));
            session.applyFilter(valueFilter(session, Kind::MajorError, {0, 1}));
            session.setExpanded(session.shown().records().first(30), true);
            session.displayOnly(zelqDisplayed::Selected);
        }
    }
    void rewrite() const { EXPECT_EQ(folder.write("listing", "old"), listing); }
    [[nodiscard]] std::string text() const {
        const zelqLocaleText locale("C");
        zelqRecordFormatter formatter(locale, zelqDataReader(session.logs().dataSources()));
        zelqTextBuffer text;
        session.logs().forEach(
            [&](auto& record) { formatter.appendListing(record, zelqAddressForm::True, text); });
        return std::string(text.text());
    }
    /// All that an operation that fails must leave as it was, with PIDs for records.
    [[nodiscard]] std::vector<std::size_t> all() const {
        std::vector<std::size_t> all{static_cast<std::size_t>(session.logs().logCount())};
        const auto addList = [&all](std::span<zelqBCnrObject* const> records) {
            all.push_back(records.size());
            for (const zelqBCnrObject* record : records) {
                all.push_back(record->pid());
            }
        };
        const zelqExpandedRecords& tree = session.expanded();
        session.logs().forEach([&](const zelqBCnrObject& record) {
            const auto [first, count] =
                tree.contains(record) ? tree.linesOf(record) : zelqExpandedRecords::Lines{};
            all.insert(all.end(), {static_cast<std::size_t>(record.expandMark()), first, count,
                                   record.pid(), static_cast<std::size_t>(record.entryIndex()),
                                   static_cast<std::size_t>(record.addressForm()),
                                   record.selected() ? 1U : 0U});
        });
        addList(session.shown().records());
        addList(session.parked().records());
        for (const auto& filter : session.filters().filters()) {
            addList(filter->passed());
            addList(filter->rejected());
        }
        for (const std::string& files : {folder.file(""), std::string("/proc/self/fd")}) {
            all.push_back(static_cast<std::size_t>(
                std::distance(fs::directory_iterator(files), fs::directory_iterator())));
        }
        for (const auto& loaded : session.logs().logs()) {
            all.back() -= loaded.log->pieces() != nullptr ? 1U : 0U;  // its file stays open
        }
        return all;
    }

    TemporaryFolder folder;
    std::string log;
    std::string listing = folder.file("listing");
};

void require(bool done) {
    if (!done) {
        throw std::bad_alloc();
    }
}

/// With `numbered` the log is prepared to be shown as a whole.
void read(State& state, bool loads, std::optional<std::int32_t> numbered) {
    const int slot = loads ? 0 : state.session.logs().slotFor(state.log);
    zelqPreparedLog log = zelqPreparedLog::read(
        {.fileName = state.log,
         .logSlot = static_cast<std::uint16_t>(slot),
         .mostKept = state.session.logs().size() > 10'000 ? std::optional(SIZE_MAX) : std::nullopt},
        numbered);
    require(log.status.ok());
    if (loads) {
        (void)state.session.load(state.log, std::move(log));
    } else {
        EXPECT_EQ(state.session.add(state.log, std::move(log)), slot);
    }
}

void list(State& state, bool unnamed) {
    zelqOutputFile file(state.listing, {.unnamed = unnamed});
    std::uint64_t last = 0;
    require(zelqListing::write(state.session.logs(), zelqLocaleText("C"), file,
                               [&last](std::uint64_t done, std::uint64_t total) {
                                   return std::exchange(last, done) < done && done <= total;
                               })
                .status.ok());
    require(file.complete().ok());
    EXPECT_EQ(last, state.session.logs().size());
}

struct Operation {
    std::function<void(State&)> act;
    std::uint32_t size = kSmall;
    bool lists = false;
};

// clang-format off
const Operation kOperations[] = {
    {[](State& s) { read(s, false, 50'001); }, 50'001},
    {[](State& s) { list(s, true); }, 9000, true},
    {[](State& s) { list(s, false); }, kSmall, true},
    {[](State& s) { read(s, false, {}); }},
    {[](State& s) { read(s, false, 80); }},  // before a filter was there
    {[](State& s) { read(s, true, 0); }},
    {[](State& s) { read(s, true, {}); }, 9000},
    {[](State& s) { s.session.applyFilter(functionFilter(s.session, {"function1", "function5"})); }},
    {[](State& s) { s.session.applyFilter(valueFilter(s.session, Kind::Tid, {3})); }},
    {[](State& s) { s.session.removeFilter(Kind::Tid); }},
    {[](State& s) { s.session.removeAllFilters(); }},
    {[](State& s) { s.session.displayOnly(zelqDisplayed::Expanded); }},
    {[](State& s) { s.session.displayOnly(zelqDisplayed::NonSelected); }},
    {[](State& s) { s.session.displayAll(); }},
    {[](State& s) { s.session.setExpanded(s.session.parked().records(), true); }},
    {[](State& s) { s.session.setExpanded(s.session.parked().records().first(1), true); }},
    {[](State& s) { s.session.setExpanded(s.session.shown().records(), false); }},
    {[](State& s) { s.session.collapseAll(); }},
    {[](State& s) { (void)s.session.unload(0); }},
};
// clang-format on

class FaultTest : public testing::TestWithParam<Operation> {
protected:
    [[nodiscard]] std::unique_ptr<State> newState() const {
        auto state = std::make_unique<State>(GetParam().size);
        if (GetParam().lists) {  // dumped before, so that each listing is like the other
            state->session.logs().forEach([](auto& record) { record.nextAddressForm(); });
        }
        return state;
    }
};

TEST_P(FaultTest, LeavesEverythingAsItWasOrIsDone) {
    const auto [act, size, lists] = GetParam();
    auto done = newState();
    act(*done);
    const auto after = done->all();
    done.reset();                        // with its open files
    for (int run = 0; run < 6; ++run) {  // each sort of fault, once only and from then on
        auto state = newState();
        bool hasStruck = true;
        for (std::size_t number = 0; hasStruck; ++number) {
            SCOPED_TRACE(testing::Message() << "run " << run << ", call " << number);
            state->rewrite();
            const auto before = state->all();
            bool succeeds = true;
            {
                const Fault fault(static_cast<Fault::Sort>(run / 2), number, run % 2 != 0);
                try {
                    act(*state);
                } catch (const std::bad_alloc&) {
                    succeeds = false;
                }
                hasStruck = fault.hasStruck();
            }
            state->session.checkInvariants();
            ASSERT_TRUE(state->all() == (succeeds ? after : before));
            ASSERT_TRUE(succeeds || hasStruck);
            const std::string text = contentOf(state->listing);
            ASSERT_TRUE(text == "old" ? !(succeeds && lists) : lists && text == state->text());
            if (succeeds) {
                state = newState();
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Operations, FaultTest, testing::ValuesIn(kOperations),
                         [](const auto& row) { return "Row" + std::to_string(row.index); });

/// The system may be interrupted and do a part of what it is asked for.
TEST(Parts, ComeToTheSameAsTheWhole) {
    const TemporaryFolder folder;
    const std::string log = folder.write("log", randomImage(1, std::size_t{400} << 10, false));
    const zelqLocaleText locale("C");
    const auto listing = [&](const std::vector<std::size_t>& mostKept) {
        zelqSession session(&zelqRecordFormatter::lineCount);
        for (const std::size_t most : mostKept) {
            zelqReadResult read = zelqLogReader::read({.fileName = log, .mostKept = most});
            EXPECT_EQ(read.status.text, "");
            session.add(std::to_string(most), {.log = std::move(read.log)});
        }
        zelqOutputFile output(folder.file("out"), {});
        EXPECT_TRUE(zelqListing::write(session.logs(), locale, output, {}).status.ok());
        EXPECT_TRUE(output.complete().ok());
        std::string text = contentOf(folder.file("out"));
        zelqEntryReader::readInTimeOrder({.names = {log, log}}, [&text](const zelqEntry& entry) {
            text += ' ' + std::to_string(entry.place.offset + entry.record().pid());
            return true;
        });
        return text;
    };
    const std::vector<std::size_t> kept{1 << 30, 0};
    const std::string whole = listing(kept);
    EXPECT_GT(whole.size(), std::size_t{1} << 20);
    const Fault fault(Fault::Sort::Parts, 0, true);
    EXPECT_TRUE(listing(kept) == whole);
}

}  // namespace
