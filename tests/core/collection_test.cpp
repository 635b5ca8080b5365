#include <algorithm>
#include <random>
#include <tuple>

#include <gtest/gtest.h>

#include "log/zelqBSorter.h"
#include "session/zelqLogCollection.h"
#include "support/LogImage.h"

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

TEST(Collection, ManyRecordsAreSortedByThreadsUnlessTheyAreStopped) {
    std::minstd_rand random(4711);
    std::vector<TestEntry> entries(250'000);
    for (TestEntry& entry : entries) {
        entry.numbers = {0, static_cast<std::uint32_t>(random() % 50'000)};  // times repeat
    }
    DecodedLog log(logImage(entries), 0);
    log.log->number(0);
    std::vector<zelqBCnrObject*> records;
    log.log->forEach([&records](zelqBCnrObject& record) { records.push_back(&record); });
    std::vector<zelqBCnrObject*> sorted = records;
    std::stable_sort(sorted.begin(), sorted.end(), zelqBSorter());
    std::stop_source stop;
    stop.request_stop();
    EXPECT_THROW(zelqBSorter::sort(records, zelqParallel(stop.get_token())), zelqStopped);
    std::ranges::shuffle(records, random);
    zelqBSorter::sort(records);
    EXPECT_TRUE(records == sorted);
}

}  // namespace
