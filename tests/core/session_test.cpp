#include <map>
#include <random>
#include <set>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/TestSession.h"

namespace {

using Kind = zelqFilterKind;
using Words = std::vector<std::string>;

/// What is done, one word after another, and the rows that then stand there by their TID. A word is
/// a filter with the values it accepts, "*" for all and "-" for none, or "delete", or "load:b",
/// "merge:b", "unload:0" or "remove". What else becomes of a session is compared by its fuzzer.
struct Scenario {
    const char* actions;
    const char* rows;
};

Words split(const std::string& text, char separator) {
    Words words;
    std::istringstream stream(text);
    for (std::string word; std::getline(stream, word, separator);) {
        words.push_back(word);
    }
    return words;
}

const Words kFilters{"", "type", "time", "date", "pid", "tid", "maj", "min", "det", "func"};

class FilteredSession {
public:
    FilteredSession() { read("a"); }

    void read(const std::string& name) {
        const zelqDate later{.year = 2027, .month = 1, .day = 2};
        static const std::map<std::string, std::vector<TestEntry>> kLogs{
            {"a",
             {{.hour = 1, .pid = 1, .tid = 1, .majorError = 1, .name = "Open"},
              {.hour = 2, .pid = 1, .tid = 2, .majorError = 2, .minorError = 5, .name = "Read"},
              {.hour = 3, .pid = 2, .tid = 3, .majorError = 1, .name = "open"},
              {.hour = 4, .pid = 2, .tid = 4, .majorError = 2, .detectPoint = 10, .name = "Open"},
              {.type = 5, .date = later, .hour = 26, .pid = 3, .tid = 5},
              {.type = 0x2002, .hour = 0, .pid = 3, .tid = 6}}},
            {"b",
             {{.hour = 9, .pid = 1, .tid = 11, .majorError = 1},
              {.hour = 8, .pid = 7, .tid = 12, .majorError = 1},
              {.hour = 7, .pid = 1, .tid = 13, .majorError = 2, .entryLength = 32}}}};
        logs_.add(name, logImage(kLogs.at(name)));
    }

    void filter(Kind kind, const std::string& values) {
        if (values == "delete") {
            session_.removeFilter(kind);
        } else if (kind == Kind::EntryType) {
            const auto shows = [&values](const char* type) {
                return values == "*" || values.find(type) != std::string::npos;
            };
            session_.applyFilter(std::make_unique<zelqFilterStage>(
                kind, zelqEntryTypeTest{shows("TRC"), shows("ERR"), shows("MSG")}));
        } else if (kind == Kind::Function) {
            session_.applyFilter(functionFilter(session_, split(values, ',')));
        } else {
            std::vector<std::uint32_t> numbers;
            for (const std::string& value : split(values, ',')) {
                numbers.push_back(static_cast<std::uint32_t>(std::stoul(value)));
            }
            session_.applyFilter(valueFilter(session_, kind, numbers));
        }
        if (kind != Kind::EntryType && kind != Kind::Function) {
            session_.sortShown();  // as the command of the kind does whatever became of its dialog
        }
    }

    void act(const std::string& action) {
        const std::string verb = action.substr(0, action.find(':'));
        const std::string rest = verb == action ? "" : action.substr(verb.size() + 1);
        if (verb == "remove") {
            session_.removeAllFilters();
        } else if (verb == "load") {
            (void)session_.unload(zelqLogCollection::kAllLogs);
            read(rest);
        } else if (verb == "merge") {
            read(rest);
        } else if (verb == "unload") {
            (void)session_.unload(std::stoi(rest));
        } else {
            const auto kind = std::ranges::find(kFilters, verb) - kFilters.begin();
            filter(static_cast<Kind>(kind), rest == "-" ? "" : rest);
        }
    }

    std::string rows() {
        std::string rows;
        for (const zelqBCnrObject* record : session_.shown().records()) {
            rows.append(rows.empty() ? "" : " ").append(std::to_string(record->tid()));
        }
        return rows;
    }

private:
    TestSession logs_;
    zelqSession& session_ = logs_.session;
};

const Scenario kScenarios[] = {
    {"pid:1 maj:1", "1"},
    {"tid:- pid:1", ""},
    {"time:7200", "2 5"},  // 26 o'clock is 2 o'clock
    {"date:132841730", "5"},
    {"min:5 det:0", "2"},
    {"func:Open", "1 4"},
    {"func:Open func:delete", "1 4 2 3 5 6"},  // come back at the end, unsorted
    {"type:TRC,MSG", "6 5"},
    {"type:ERR type:delete", "1 2 3 4 5 6"},
    {"type:ERR type:delete pid:delete", "6 1 2 3 4 5"},
    // What the second filter had rejected is given back to the first one's result and stays there.
    {"pid:1 maj:1 pid:2 maj:delete", "2 3 4"},
    {"pid:1 maj:1 pid:delete min:0", "1"},
    {"type:ERR maj:1 pid:1 type:delete", "1 5 6"},
    {"pid:1 merge:b pid:1,7", "1 2 13 12 11"},
    {"pid:1 maj:1 merge:b maj:delete", "1 2 13 11"},  // of b, too
    {"maj:1 load:b", "11 12"},                        // the order of the file
    {"maj:1 load:b maj:delete", "13 12 11"},
    {"pid:1 maj:2 merge:b unload:0 maj:delete", "13 11"},
    {"pid:1 maj:2 unload:-1 maj:delete pid:delete merge:b", "13 12 11"},
};

TEST(Session, FiltersLeaveTheseRows) {
    for (const auto& [actions, expected] : kScenarios) {
        FilteredSession session;
        for (const std::string& action : split(actions, ' ')) {
            session.act(action);
        }
        EXPECT_EQ(session.rows(), expected) << actions;
    }
}

TEST(Session, EntryNumbersWrapAtSixteenBitsUntilRecordsAreShown) {
    DecodedLog log(logImage(std::vector<TestEntry>(65538)));
    const zelqBCnrObject& last = log[65537];
    EXPECT_EQ(last.entryIndex(), 1);
    zelqSession session(&zelqRecordFormatter::lineCount);
    session.add("log", {.log = std::move(log.log)});
    EXPECT_EQ(session.shown().records()[65537], &last);
    EXPECT_EQ(last.entryIndex(), 65537);
}

TEST(Session, AListingThatWasAskedForCountsAsTheFirstDump) {
    TestSession logs;
    zelqSession& session = logs.session;
    logs.add("log", logImage({{}, {}, {}}));
    const auto records = session.shown().records();
    session.setExpanded(records.first(1), true);
    session.beginListing();
    session.setExpanded(records.subspan(1, 1), true);
    EXPECT_EQ(session.expanded().at(0).form, zelqAddressForm::Reversed);
    const std::size_t second = session.expanded().linesOf(*records[1]).first;
    EXPECT_EQ(session.expanded().at(second).form, zelqAddressForm::True);
    EXPECT_EQ(records[1]->addressForm(), zelqAddressForm::Reversed);  // for the listing
    session.endListing();
    EXPECT_EQ(records[1]->addressForm(), zelqAddressForm::True);
    EXPECT_EQ(records[2]->addressForm(), zelqAddressForm::Reversed);
}

/// One record at a time is inserted into the tree, of many the tree is built anew.
TEST(Session, FewAndManyRecordsAreExpandedInTurn) {
    TestSession logs;
    logs.add("log", logImage(std::vector<TestEntry>(90)));
    const auto records = logs.session.shown().records();
    std::mt19937 random(3);
    std::set<std::pair<std::size_t, zelqAddressForm>> rows;
    std::vector<bool> dumped(records.size());
    for (int step = 0; step < 400; ++step) {
        const std::size_t first = random() % records.size();
        const std::size_t count = step % 3 == 0 ? records.size() - first : 1;
        const bool expand = random() % 2 == 0;
        logs.session.setExpanded(records.subspan(first, count), expand);
        for (std::size_t row = first; row < first + count; ++row) {
            if (!expand) {
                rows.erase({row, zelqAddressForm::True});
                rows.erase({row, zelqAddressForm::Reversed});
            } else if (!rows.contains({row, zelqAddressForm::Reversed})) {
                rows.emplace(row, dumped[row] ? zelqAddressForm::True : zelqAddressForm::Reversed);
                dumped[row] = true;
            }
        }
        std::vector<std::pair<std::size_t, zelqAddressForm>> expanded;
        for (const zelqExpandedRecords::Place& place : logs.session.expanded().places()) {
            expanded.emplace_back(logs.session.shown().rowOf(*place.record), place.form);
        }
        ASSERT_THAT(expanded, testing::ElementsAreArray(rows)) << step;
    }
}

}  // namespace
