#include <algorithm>
#include <functional>
#include <new>
#include <random>
#include <tuple>

#include <gtest/gtest.h>

#include "log/zelqBSorter.h"
#include "session/zelqLogCollection.h"
#include "session/zelqRecordList.h"
#include "support/LogImage.h"
#include "support/OutOfMemory.h"

namespace {

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

TEST(Order, SortingEqualsAPlainSortByAllKeys) {
    // Year, month and day; the time's bytes as one number, so that hour 25 is after 23; slot and
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
            // The number of strays grows; without any the list is rotated.
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
        Records added;   ///< to the list, which is in order
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
