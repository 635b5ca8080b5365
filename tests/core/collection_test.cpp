#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "log/zelqLogCollection.h"
#include "log/zelqRecordDisplay.h"
#include "support/LogImage.h"

namespace {

using Rows = std::vector<std::pair<std::uint32_t, int>>;

constexpr int kAll = zelqLogCollection::kAllLogs;

TEST(Collection, ANameGetsTheLowestFreeSlotOnce) {
    zelqLogCollection logs;
    for (int slot = 0; slot < 100; ++slot) {
        EXPECT_EQ(logs.assignLogSlot("log" + std::to_string(slot)), slot);
    }
    EXPECT_EQ(logs.assignLogSlot("one too many"), -1);
    EXPECT_FALSE(logs.isNotLoaded("log42"));
    for (const char* other : {"log", "LOG42", "./log42", "log42 "}) {
        EXPECT_TRUE(logs.isNotLoaded(other)) << other;
    }
    EXPECT_FALSE(logs.clearLogSlot(100) || logs.clearLogSlot(-2));
    EXPECT_TRUE(logs.remove(100).empty() && logs.remove(-2).empty());
    EXPECT_TRUE(logs.clearLogSlot(77));
    EXPECT_TRUE(logs.clearLogSlot(5));
    EXPECT_TRUE(logs.isNotLoaded(""));
    EXPECT_EQ(logs.assignLogSlot("log42"), -1);
    EXPECT_EQ(logs.assignLogSlot("new"), 5);
    EXPECT_EQ(logs.logName(5), "new");
    EXPECT_EQ(logs.assignLogSlot("new"), -1);
    EXPECT_TRUE(logs.clearLogSlot(kAll));
    EXPECT_EQ(logs.logCount(), 0);
    EXPECT_EQ(logs.assignLogSlot("log42"), 0);
}

/// A collection, a container, and logs whose records are known by their pid: 100 times the number
/// of the log, counted as they are read, and the number in the log.
class Display : public testing::Test {
protected:
    /// Reads a log with one entry for each second given; returns its slot.
    int read(const std::vector<std::uint8_t>& seconds) {
        std::vector<TestEntry> entries;
        for (const std::uint8_t second : seconds) {
            const std::size_t pid = 100 * images_.size() + entries.size();
            entries.push_back({.second = second, .pid = static_cast<std::uint32_t>(pid)});
        }
        const int slot = logs_.assignLogSlot("log" + std::to_string(images_.size()));
        images_.emplace_back(logImage(entries), slot);
        logs_.append(std::move(images_.back().log), slot);
        return slot;
    }
    /// Shows the result of a filter that passed these records; all logs must still be there.
    void filter(const std::vector<std::uint32_t>& pids, int slot) {
        std::vector<zelqBCnrObject*> result;
        result.reserve(pids.size());
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

private:
    std::vector<DecodedLog> images_;
};

TEST_F(Display, MergedLogsAreNumberedOnAndEqualTimesKeepSlotThenFileOrder) {
    showRecords(container_, logs_, kAll);
    EXPECT_EQ(rows(), Rows());
    read({5, 1, 5});
    showRecords(container_, logs_, 0);
    EXPECT_EQ(rows(), (Rows{{1, 1}, {0, 0}, {2, 2}}));
    read({5, 1, 5});
    const Rows merged{{1, 1}, {101, 4}, {0, 0}, {2, 2}, {100, 3}, {102, 5}};
    showRecords(container_, logs_, kAll);
    EXPECT_EQ(rows(), merged);
    showRecords(container_, logs_, kAll);
    EXPECT_EQ(rows(), merged);
    container_.removeAll();
    showRecords(container_, logs_, 1);
    EXPECT_EQ(rows(), (Rows{{101, 1}, {100, 0}, {102, 2}}));
}

TEST_F(Display, AFilterResultIsNumberedByPlaceAndSortedOnlyBesideOtherRows) {
    read({5, 1, 5});
    read({5, 1});
    showRecords(container_, logs_, kAll);
    container_.removeAll();
    filter({2, 101, 0, 100}, 1);
    EXPECT_EQ(rows(), (Rows{{101, 1}, {100, 3}}));  // the others are counted, though not shown
    container_.removeAll();
    filter({2, 101, 0}, kAll);
    EXPECT_EQ(rows(), (Rows{{2, 0}, {101, 1}, {0, 2}}));
    filter({2, 101, 0, 1}, kAll);
    EXPECT_EQ(rows(), (Rows{{1, 3}, {101, 1}, {2, 0}, {0, 2}}));
    showRecords(container_, logs_, kAll);
    EXPECT_EQ(rows(), (Rows{{1, 1}, {101, 4}, {0, 0}, {2, 2}, {100, 3}}));
    filter({2, 0}, kAll);
    EXPECT_EQ(rows(), (Rows{{1, 1}, {101, 4}, {2, 0}, {0, 1}, {100, 3}}));
    container_.removeAll();
    filter({2, 0}, kAll);
    filter({}, kAll);  // does nothing, not even sort
    EXPECT_EQ(rows(), (Rows{{2, 0}, {0, 1}}));
}

TEST_F(Display, EntryNumbersWrapAtSixteenBitsUntilRecordsAreShown) {
    read(std::vector<std::uint8_t>(65538, 0));
    const zelqBCnrObject& last = (*logs_.logs()[0].log)[65537];
    EXPECT_EQ(last.entryIndex(), 1);
    showRecords(container_, logs_, kAll);
    EXPECT_EQ(container_.records()[65537], &last);
    EXPECT_EQ(last.entryIndex(), 65537);
}

}  // namespace
