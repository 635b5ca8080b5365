#include <map>
#include <random>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "output/zelqRecordFormatter.h"
#include "session/zelqSession.h"
#include "support/Filters.h"
#include "support/LogImage.h"

namespace {

using Kind = zelqFilterKind;
using Words = std::vector<std::string>;

/// Actions, one word after another, and the rows afterwards: the TIDs, with "*" if selected, "-" if
/// expanded and "_" if the mark is blank. A word is a filter with
/// the values it accepts, "*" for all and "-" for none, or "delete", or a transition: "load:b",
/// "merge:b", "unload:0", "select:1,3" of the rows, and the names below.
struct Scenario {
    const char* actions;
    const char* rows;
};

void PrintTo(const Scenario& scenario, std::ostream* out) {  // NOLINT(*-naming)
    *out << scenario.actions;
}

Words split(const std::string& text, char separator) {
    Words words;
    std::istringstream stream(text);
    for (std::string word; std::getline(stream, word, separator);) {
        words.push_back(word);
    }
    return words;
}

const Words kFilters{"", "type", "time", "date", "pid", "tid", "maj", "min", "det", "func"};

class SessionTest : public testing::TestWithParam<Scenario> {
protected:
    SessionTest() { read("a"); }

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
        images_.push_back(
            std::make_unique<DecodedLog>(logImage(kLogs.at(name)), session_.logs().slotFor(name)));
        session_.add(name, {.log = std::move(images_.back()->log)});
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
            session_.sortShown();  // as the command does whatever ended its dialog
        }
    }

    std::vector<zelqBCnrObject*> shownWhere(bool selected) {
        std::vector<zelqBCnrObject*> records;
        for (zelqBCnrObject* record : session_.shown().records()) {
            if (record->selected() == selected) {
                records.push_back(record);
            }
        }
        return records;
    }

    void act(const std::string& action) {
        const std::map<std::string, std::function<void()>> transitions{
            {"remove", [this] { session_.removeAllFilters(); }},
            {"expand", [this] { session_.setExpanded(shownWhere(true), true); }},
            {"unexpand", [this] { session_.setExpanded(shownWhere(true), false); }},
            {"expandnon", [this] { session_.setExpanded(shownWhere(false), true); }},
            {"expandall", [this] { session_.setExpanded(session_.shown().records(), true); }},
            {"collapse", [this] { session_.collapseAll(); }},
            {"display", [this] { session_.displayAll(); }},
            {"selected", [this] { session_.displayOnly(zelqDisplayed::Selected); }},
            {"nonselected", [this] { session_.displayOnly(zelqDisplayed::NonSelected); }},
            {"expanded", [this] { session_.displayOnly(zelqDisplayed::Expanded); }},
            {"nonexpanded", [this] { session_.displayOnly(zelqDisplayed::NonExpanded); }},
        };
        const std::string verb = action.substr(0, action.find(':'));
        const std::string rest = verb == action ? "" : action.substr(verb.size() + 1);
        if (const auto found = transitions.find(verb); found != transitions.end()) {
            found->second();
        } else if (verb == "select") {
            const Words tids = split(rest, ',');
            for (zelqBCnrObject* record : session_.shown().records()) {
                record->setSelected(rest == "all" ||
                                    std::ranges::find(tids, std::to_string(record->tid())) !=
                                        tids.end());
            }
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
        session_.checkInvariants();
    }

    std::string rows() {
        std::string text;
        for (const zelqBCnrObject* record : session_.shown().records()) {
            text += (text.empty() ? "" : " ") + std::to_string(record->tid()) +
                    (record->selected() ? "*" : "");
            text += record->expanded()                              ? "-"
                    : record->expandMark() == zelqExpandMark::Blank ? "_"
                                                                    : "";
        }
        return text;
    }

    std::vector<std::unique_ptr<DecodedLog>> images_;  // have the bytes
    zelqSession session_{&zelqRecordFormatter::lineCount};
};

TEST_P(SessionTest, LeavesTheseRows) {
    for (const std::string& action : split(GetParam().actions, ' ')) {
        act(action);
    }
    EXPECT_EQ(rows(), GetParam().rows);
}

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
    {"pid:1 maj:2 merge:b unload:0 maj:delete", "13_ 11"},
    {"pid:1 maj:2 unload:-1 maj:delete pid:delete merge:b", "13 12 11"},
    {"select:1,3 pid:1 remove", "6 1* 2 3* 4 5"},
    {"select:1,3 expand maj:1 remove", "6 1* 2 3* 4 5"},
    {"select:1 expand select:3 expand select:1 tid:1,2 remove", "6 1* 2 3- 4 5"},
    {"merge:b select:13 pid:1 remove", "6 1 2 3 4 13*_ 12 11 5"},
    {"select:1,2 expandnon expand unexpand", "6- 1* 2* 3- 4- 5-"},
    {"merge:b select:13 expand", "6 1 2 3 4 13*_ 12 11 5"},
    {"merge:b expandall collapse", "6 1 2 3 4 13_ 12 11 5"},
    {"merge:b expandall unload:0", "13_ 12 11"},
    {"select:1,3 nonselected", "6 2 4 5"},
    {"select:1,3 expand selected expanded", "1*- 3*-"},
    {"select:1,3 expandall nonexpanded", ""},
    {"select:1,3 expand nonexpanded display", "6 1* 2 3* 4 5"},
    {"select:1 expand expanded display", "6 1*- 2 3 4 5"},
    // An empty list gets them in the order in which they were parked.
    {"select:3,4 selected select:all nonselected display", "6 1 2 5 3* 4*"},
    {"select:3,4 selected select:all nonselected display merge:b", "6 1 2 3* 4* 13 12 11 5"},
    {"select:3,4 selected pid:1,2 display", "6 1 2 3* 4* 5"},
    {"select:3,4 selected merge:b display", "6 1 2 3* 4* 13 12 11 5"},
    {"select:3,4 selected unload:0 display", ""},
    {"merge:b select:3,4 selected unload:1 display", "6 1 2 3* 4* 5"},
};

INSTANTIATE_TEST_SUITE_P(Scenarios, SessionTest, testing::ValuesIn(kScenarios),
                         [](const auto& row) { return "Row" + std::to_string(row.index); });

using Rows = std::vector<std::pair<std::uint32_t, int>>;

/// A session, and logs whose records are known by their pid: 100 times the number of the log, and
/// their number in it.
class NumberingTest : public testing::Test {
protected:
    void read(const std::vector<std::uint8_t>& seconds) {
        std::vector<TestEntry> entries;
        for (const std::uint8_t second : seconds) {
            const std::size_t pid = 100 * images_.size() + entries.size();
            entries.push_back({.second = second, .pid = static_cast<std::uint32_t>(pid)});
        }
        const std::string name = "log" + std::to_string(images_.size());
        images_.push_back(
            std::make_unique<DecodedLog>(logImage(entries), session_.logs().slotFor(name)));
        session_.add(name, {.log = std::move(images_.back()->log)});
    }
    /// The pid and the number of each record, row by row.
    Rows rows() {
        Rows rows;
        for (const zelqBCnrObject* record : session_.shown().records()) {
            EXPECT_EQ(session_.shown().rowOf(*record), rows.size());
            rows.emplace_back(record->pid(), record->entryIndex());
        }
        return rows;
    }

    std::vector<std::unique_ptr<DecodedLog>> images_;
    zelqSession session_{&zelqRecordFormatter::lineCount};
};

TEST_F(NumberingTest, MergedLogsAreNumberedOnAndFilterResultsByTheirPlace) {
    read({5, 1, 5});
    EXPECT_EQ(rows(), (Rows{{1, 1}, {0, 0}, {2, 2}}));
    read({5, 1});
    const Rows merged{{1, 1}, {101, 4}, {0, 0}, {2, 2}, {100, 3}};
    EXPECT_EQ(rows(), merged);
    (void)session_.unload(0);
    EXPECT_EQ(rows(), (Rows{{101, 4}, {100, 3}}));  // keep their numbers
    session_.applyFilter(std::make_unique<zelqFilterStage>(Kind::EntryType, zelqEntryTypeTest()));
    read({9, 3});
    EXPECT_EQ(rows(), (Rows{{101, 4}, {201, 3}, {100, 3}, {200, 2}}));  // places in the result
    session_.removeAllFilters();
    EXPECT_EQ(rows(), (Rows{{101, 1}, {201, 3}, {100, 0}, {200, 2}}));
}

TEST_F(NumberingTest, EntryNumbersWrapAtSixteenBitsUntilRecordsAreShown) {
    images_.push_back(std::make_unique<DecodedLog>(logImage(std::vector<TestEntry>(65538))));
    const zelqBCnrObject& last = (*images_[0])[65537];
    EXPECT_EQ(last.entryIndex(), 1);
    session_.add("log", {.log = std::move(images_[0]->log)});
    EXPECT_EQ(session_.shown().records()[65537], &last);
    EXPECT_EQ(last.entryIndex(), 65537);
}

TEST_F(NumberingTest, AListingThatWasAskedForCountsAsTheFirstDump) {
    read({1, 2, 3});
    const auto records = session_.shown().records();
    session_.setExpanded(records.first(1), true);
    session_.beginListing();
    session_.setExpanded(records.subspan(1, 1), true);
    EXPECT_EQ(session_.expanded().at(0).form, zelqAddressForm::Reversed);
    const std::size_t second = session_.expanded().linesOf(*records[1]).first;
    EXPECT_EQ(session_.expanded().at(second).form, zelqAddressForm::True);
    EXPECT_EQ(records[1]->addressForm(), zelqAddressForm::Reversed);  // for the listing
    session_.endListing();
    EXPECT_EQ(records[1]->addressForm(), zelqAddressForm::True);
    EXPECT_EQ(records[2]->addressForm(), zelqAddressForm::Reversed);
}

TEST(ExpandedRecords, TheTreeKeepsWhatTheWalkSays) {
    std::vector<TestEntry> entries;
    for (std::uint32_t i = 0; i < 300; ++i) {
        entries.push_back({.pid = i, .blocks = {{.data = std::string(i % 70, 'x')}}});
    }
    const DecodedLog log(logImage(entries));
    std::mt19937 random(5);
    std::vector<zelqBCnrObject*> expected;
    zelqExpandedRecords tree(&zelqRecordFormatter::lineCount);
    const auto expect = [&expected](zelqBCnrObject& record) {
        const auto place = std::find_if(expected.begin(), expected.end(), [&](const auto* other) {
            return other->entryIndex() > record.entryIndex();
        });
        expected.insert(place, &record);
    };
    for (int step = 0; step < 2000; ++step) {
        zelqBCnrObject& record = log[random() % log.size()];
        if (step % 400 == 399) {  // numbers that are not in order any more
            log.log->forEach([&random](zelqBCnrObject& each) {
                each.setEntryIndex(static_cast<std::int32_t>(random() % 100));
            });
            tree.refreshKeys();
        } else if (step % 500 == 250) {
            std::vector<zelqBCnrObject*> many;
            log.log->forEach([&](zelqBCnrObject& each) {
                if (!tree.contains(each)) {
                    many.push_back(&each);
                    expect(each);
                }
            });
            tree.insertAll(many, [](const auto& each) { return each.addressForm(); });
        } else if (tree.contains(record)) {
            tree.remove(record);
            std::erase(expected, &record);
        } else {
            expect(record);
            tree.insert(record, record.nextAddressForm());
        }
        std::vector<zelqBCnrObject*> order;
        tree.forEach([&order](zelqBCnrObject& each) { order.push_back(&each); });
        ASSERT_EQ(order, expected) << step;
    }
    std::size_t line = 0;
    for (const zelqBCnrObject* record : expected) {
        EXPECT_EQ(tree.linesOf(*record).first, line);
        EXPECT_EQ(tree.at(line).record, record);
        line += tree.linesOf(*record).count;
        EXPECT_EQ(tree.at(line - 1).record, record);
    }
    EXPECT_EQ(tree.lineCount(), line);
}

}  // namespace
