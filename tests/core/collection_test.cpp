#include <algorithm>
#include <functional>
#include <new>
#include <random>
#include <tuple>

#include <gtest/gtest.h>

#include "log/zelqBSorter.h"
#include "support/LogImage.h"
#include "support/OutOfMemory.h"

#include "session/zelqLogCollection.h"
#include "session/zelqRecordDisplay.h"

namespace {

using Rows = std::vector<std::pair<std::uint32_t, int>>;

constexpr int kAll = zelqLogCollection::kAllLogs;

TEST(Collection, ANameGetsTheLowestFreeSlotOnce) {
    zelqLogCollection logs;
    for (int slot = 0; slot < 100; ++slot) {
        EXPECT_EQ(logs.assignLogSlot("log" + std::to_string(slot)), slot);
    }
    EXPECT_EQ(logs.assignLogSlot("one too many"), -1);
    EXPECT_FALSE(logs.clearLogSlot(100) || logs.clearLogSlot(-2));
    EXPECT_TRUE(logs.clearLogSlot(77) && logs.clearLogSlot(5) && logs.isNotLoaded(""));
    EXPECT_EQ(logs.assignLogSlot("log42"), -1);
    EXPECT_EQ(logs.assignLogSlot("new"), 5);
    EXPECT_TRUE(logs.clearLogSlot(kAll));
    EXPECT_EQ(logs.logCount(), 0);
}

/// A collection, a container, and logs whose records are known by their pid: 100 times the number
/// of the log, counted as they are read, and the number in the log.
class Display : public testing::Test {
protected:
    /// Reads a log with one entry for each second given.
    void read(const std::vector<std::uint8_t>& seconds) {
        std::vector<TestEntry> entries;
        for (const std::uint8_t second : seconds) {
            const std::size_t pid = 100 * images_.size() + entries.size();
            entries.push_back({.second = second, .pid = static_cast<std::uint32_t>(pid)});
        }
        const int slot = logs_.assignLogSlot("log" + std::to_string(images_.size()));
        images_.emplace_back(logImage(entries), slot);
        logs_.append(std::move(images_.back().log), slot);
    }
    /// Shows the result of a filter that passed these records.
    void filter(const std::vector<std::uint32_t>& pids, int slot) {
        std::vector<zelqBCnrObject*> result;
        for (const std::uint32_t pid : pids) {
            result.push_back(&(*logs_.logs()[pid / 100].log)[pid % 100]);
        }
        showFilteredRecords(container_, logs_, result, slot);
    }
    /// The pid and the number of each record in the container, row by row.
    [[nodiscard]] Rows rows() const {
        Rows rows;
        for (const zelqBCnrObject* record : container_.records()) {
            EXPECT_EQ(container_.rowOf(*record), rows.size());
            rows.emplace_back(record->pid(), record->entryIndex());
        }
        return rows;
    }

    zelqLogCollection logs_;
    zelqRecordList container_{zelqBCnrObject::InContainer};
    std::vector<DecodedLog> images_;
};

TEST_F(Display, MergedLogsAreNumberedOnAndFilterResultsByTheirPlace) {
    read({5, 1, 5});
    showRecords(container_, logs_, 0);
    EXPECT_EQ(rows(), (Rows{{1, 1}, {0, 0}, {2, 2}}));
    read({5, 1});
    const Rows merged{{1, 1}, {101, 4}, {0, 0}, {2, 2}, {100, 3}};
    showRecords(container_, logs_, kAll);
    EXPECT_EQ(rows(), merged);
    container_.removeAll();
    showRecords(container_, logs_, 1);
    EXPECT_EQ(rows(), (Rows{{101, 1}, {100, 0}}));

    container_.removeAll();
    filter({2, 101, 0, 100}, 1);
    EXPECT_EQ(rows(), (Rows{{101, 1}, {100, 3}}));  // the others are counted, though not shown
    container_.removeAll();
    filter({2, 101, 0}, kAll);
    filter({}, kAll);
    EXPECT_EQ(rows(), (Rows{{2, 0}, {101, 1}, {0, 2}}));  // sorted only beside other rows
    filter({2, 101, 0, 1}, kAll);
    EXPECT_EQ(rows(), (Rows{{1, 3}, {101, 1}, {2, 0}, {0, 2}}));
    showRecords(container_, logs_, kAll);
    EXPECT_EQ(rows(), merged);
}

TEST_F(Display, EntryNumbersWrapAtSixteenBitsUntilRecordsAreShown) {
    read(std::vector<std::uint8_t>(65538, 0));
    const zelqBCnrObject& last = (*logs_.logs()[0].log)[65537];
    EXPECT_EQ(last.entryIndex(), 1);
    showRecords(container_, logs_, kAll);
    EXPECT_EQ(container_.records()[65537], &last);
    EXPECT_EQ(last.entryIndex(), 65537);
}

TEST(Order, SortingEqualsAPlainSortByAllKeys) {
    // Year, month and day; the time's bytes as one number, so that hour 25 is behind 23; slot and
    // entry number.
    using Key = std::tuple<unsigned, unsigned, unsigned, unsigned, int, int>;
    std::minstd_rand random(4711);
    const auto bits = [&random] { return static_cast<std::uint32_t>(random() << 3); };
    // Bits that differ: the second's alone, or some of all nine keys; few, so that times repeat.
    for (const auto& [dates, times] : {std::pair{0U, 0x1F00U}, {0x81810181U, 0x81010180U}}) {
        for (const std::size_t perLog : {1U, 200U, 341U, 342U, 3000U}) {
            std::vector<std::pair<Key, zelqBCnrObject*>> expected;
            std::vector<DecodedLog> logs;
            for (const int slot : {11, 0, 99}) {
                std::vector<TestEntry> entries(perLog);
                for (TestEntry& entry : entries) {
                    entry.numbers = {bits() & dates, bits() & times};
                }
                logs.emplace_back(logImage(entries), slot);
                for (std::size_t i = 0; i < perLog; ++i) {
                    const std::uint32_t date = entries[i].numbers[0];
                    const int number = static_cast<int>(perLog - i);  // against the file's order
                    logs.back()[i].setEntryIndex(number);
                    expected.push_back({{date & 0xFFFF, date >> 16 & 0xFF, date >> 24,
                                         entries[i].numbers[1], slot, number},
                                        &logs.back()[i]});
                }
            }
            std::sort(expected.begin(), expected.end());  // no two are equal
            std::vector<zelqBCnrObject*> sorted;
            for (const auto& [key, record] : expected) {
                sorted.push_back(record);
            }
            const std::size_t count = sorted.size();
            // From one stray record to none that is in its place; or the end stands in front.
            for (const std::size_t swaps :
                 {std::size_t{0}, std::size_t{1}, count / 100, count / 20, count / 8, 9 * count}) {
                std::vector<zelqBCnrObject*> records = sorted;
                std::rotate(records.begin(),
                            records.begin() + static_cast<int>(swaps == 0 ? count / 3 : 0),
                            records.end());
                for (std::size_t i = 0; i < swaps; ++i) {
                    std::swap(records[random() % count], records[random() % count]);
                }
                zelqBSorter::sort(records);
                EXPECT_TRUE(records == sorted) << count << " records, " << swaps << " swaps";
            }
        }
    }
}

TEST(RecordList, LongListsAreMergedInOrder) {
    std::vector<TestEntry> entries(60000);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        entries[i].minute = static_cast<std::uint8_t>(i * 59 / entries.size());  // many are equal
    }
    std::vector<std::unique_ptr<DecodedLog>> logs;
    zelqRecordList rows(zelqBCnrObject::InContainer);
    for (const int slot : {1, 0, 2}) {
        logs.push_back(std::make_unique<DecodedLog>(logImage(entries), slot));
        zelqRecordList list(zelqBCnrObject::InContainer);
        logs.back()->log->number(0);
        logs.back()->log->forEach([&list](zelqBCnrObject& record) { list.add(record); });
        list.sort();
        rows.merge(std::move(list));
    }
    EXPECT_EQ(rows.size(), 3 * entries.size());
    EXPECT_TRUE(rows.isSorted());
    EXPECT_TRUE(std::is_sorted(rows.records().begin(), rows.records().end(), zelqBSorter{}));
}

TEST(RecordList, WithoutMemoryIsSortedAllTheSameOrLeftUnchanged) {
    using Records = std::vector<zelqBCnrObject*>;
    constexpr std::size_t kEach = 60000;  // two lists of this size are merged by two threads
    const DecodedLog log(logImage(std::vector<TestEntry>(2 * kEach)));
    log.log->number(0);
    Records all, some, others;
    log.log->forEach([&](zelqBCnrObject& record) {
        (all.size() % 2 == 0 ? some : others).push_back(&record);
        all.push_back(&record);
    });
    Records shuffled = others;
    std::shuffle(shuffled.begin(), shuffled.end(), std::minstd_rand(4711));
    Records withStrays = others;
    std::rotate(withStrays.begin(), withStrays.end() - 100, withStrays.end());

    zelqRecordList list(zelqBCnrObject::InContainer);
    zelqRecordList other(zelqBCnrObject::InContainer);
    struct Case {
        const char* name;
        Records added;   ///< to the records that the list has and are in order
        Records merged;  ///< those of the other list
        std::function<void()> change;
        std::size_t needed;  ///< allocations without which the lists stay unchanged
    };
    const auto sort = [&list] { list.sort(); };
    for (const Case& row :
         {Case{"sort", shuffled, {}, sort, 0}, Case{"sort strays", withStrays, {}, sort, 0},
          Case{"merge", {}, others, [&] { list.merge(std::move(other)); }, 1},
          Case{"assign", {}, {}, [&] { list.assign(all); }, 1}}) {
        bool hasFailed = true;
        for (std::size_t allocations = 0; hasFailed; ++allocations) {
            list.removeAll();
            list.addAll(some);
            list.sort();
            list.addAll(row.added);
            other.removeAll();
            other.addAll(row.merged);
            other.sort();
            bool hasThrown = false;
            {
                const OutOfMemory memory(allocations);
                try {
                    row.change();
                } catch (const std::bad_alloc&) {
                    hasThrown = true;
                }
                hasFailed = memory.hasFailed();
            }
            EXPECT_EQ(hasThrown, allocations < row.needed) << row.name << allocations;
            EXPECT_TRUE(std::ranges::equal(list.records(), hasThrown ? some : all)) << row.name;
            EXPECT_TRUE(std::ranges::equal(other.records(), hasThrown ? row.merged : Records()));
            EXPECT_FALSE(all[0]->isIn(zelqBCnrObject::Marked));
        }
    }
}

}  // namespace
