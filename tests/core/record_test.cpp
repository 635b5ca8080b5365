#include <algorithm>
#include <deque>
#include <numeric>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include "log/zelqColumnExtremes.h"
#include "support/LogImage.h"

namespace {

/// 32-bit numbers of bytes that are their offset + 0x40, read the one way and the other.
constexpr std::uint32_t big(std::uint32_t offset) {
    return 0x40414243 + 0x01010101 * offset;
}
constexpr std::uint32_t little(std::uint32_t offset) {
    return 0x43424140 + 0x01010101 * offset;
}

TEST(Record, ColumnsOfEachTypeComeFromItsOwnFields) {
    // Day at offset 8, month at 9, the year's bytes at 10 and 11, then hour to fraction.
    const zelqTimestamp dated({0x4A4B, 0x49, 0x48}, 0x4C, 0x4D, 0x4E, 0x4F);
    const zelqTimestamp raw({0x4B4A, 0x49, 0x48}, 0x4C, 0x4D, 0x4E, 0x4F);
    // The bytes of the two numbers that stand there instead, least significant first.
    const zelqTimestamp number({0x4849, 0x4A, 0x4B}, 0x4F, 0x4E, 0x4D, 0x4C);
    const TestColumns error{dated, big(16), big(20), big(24), big(28), big(32), "", ""};
    const TestColumns trace{dated, big(16), big(20), 0, 0, big(24), "", ""};
    const TestColumns message{dated, big(16), big(20), 0, 0, 0, "", ""};
    const TestColumns numbers{number, big(16), big(20), 0, 0, 0, "", ""};
    const TestColumns mixed{number, big(16), little(20), 0, 0, 0, "", ""};
    const TestColumns detected{number, big(16), big(20), 0, 0, big(8), "", ""};
    const TestColumns asRead{raw, little(16), little(20), 0, 0, 0, "", ""};
    struct Row {
        std::uint16_t type;
        int icon;
        TestColumns columns;
        std::size_t codeOffset = 0;
        unsigned code = 0;
        const char* codeText = "";
        const char* function = "";
    };
    // clang-format off
    const std::vector<Row> rows{
        {0x0003, 2, error, 36, 1, "Entry",    "hijklmno"},
        {0x0013, 2, error, 36, 2, "Exit",     "hijklmnopqrstuvw"},
        {0x0013, 2, error, 36, 5, "",         "hijklmnopqrstuvw"},
        {0x0005, 3, trace, 28, 3, "API Call", "`abcdefg"},
        {0x0015, 3, trace, 28, 4, "DEBUG",    "`abcdefghijklmnopqrstuvw"},
        {0x0015, 3, trace, 28, 0x01000000, "", "`abcdefghijklmnopqrstuvw"},
        {0x2002, 1, message},
        {0x2003, 1, detected},
        {0x2004, 1, detected},
        {0x2005, 1, mixed},
        {0x2022, 1, numbers},
        {0x2025, 1, numbers},
        {0x2026, 1, numbers},
        {0x2027, 1, asRead},
        {0x2028, 1, asRead},
        {0x0000, 6, asRead},
        {0x0004, 6, asRead},
        {0x1300, 6, asRead},
    };
    // clang-format on
    std::string image;
    for (const Row& row : rows) {
        std::string entry = logImage({{.type = row.type, .headerLength = 52}});
        std::iota(entry.begin() + 8, entry.end(), '\x48');
        if (row.codeOffset != 0) {
            std::string code;
            appendBig(code, row.code, 4);
            entry.replace(row.codeOffset, 4, code);
        }
        image += entry;
    }
    const DecodedLog log(image, 42);
    ASSERT_EQ(log.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        TestColumns columns = rows[i].columns;
        std::get<6>(columns) = rows[i].codeText;
        std::get<7>(columns) = rows[i].function;
        SCOPED_TRACE(testing::Message() << "row " << i);
        EXPECT_EQ(log[i].entryType(), rows[i].type);
        EXPECT_EQ(static_cast<int>(log[i].icon()), rows[i].icon);
        EXPECT_EQ(columnsOf(log[i]), columns);
        const bool named = rows[i].type == 0x2002;
        EXPECT_EQ(log[i].summaryFunction().string(), named ? "hijklmnopqrstuvw" : rows[i].function);
        EXPECT_EQ(log[i].summaryDetectPoint(), named ? little(32) : std::get<5>(columns));
        EXPECT_EQ(log[i].logIndex(), 42);
        EXPECT_EQ(log[i].entryIndex(), static_cast<int>(i));
    }
}

TEST(Record, NamesAreCutWithinTheirSearchRange) {
    struct Row {
        std::uint16_t type;
        std::size_t nameOffset;
        std::vector<std::pair<std::size_t, char>> bytes;  ///< among 'x', by offset in the entry
        std::size_t length;                               ///< of what is shown
    };
    // clang-format off
    const std::vector<Row> rows{
        {0x0003, 40, {{42, '('}}, 8},
        {0x0003, 40, {{47, '\0'}}, 7},
        {0x0005, 32, {}, 8},
        {0x0013, 40, {{40, '('}}, 0},
        {0x0013, 40, {{50, '('}, {60, '('}}, 10},
        {0x0013, 40, {{257, '('}}, 217},
        {0x0015, 32, {{258, '('}}, 226},
        // The summary shows a name of this type from offset 40 on, and nothing else does.
        {0x2002, 24, {{30, '\0'}, {50, '('}}, 10},  // the search goes on after a NUL
        {0x2002, 24, {{30, '('}, {45, '('}}, 220},  // cut once; only the buffer ends the rest
    };
    // clang-format on
    for (std::size_t i = 0; i < rows.size(); ++i) {
        std::string image = logImage({{.type = rows[i].type, .headerLength = 256}});
        std::fill(image.begin() + static_cast<int>(rows[i].nameOffset), image.end(), 'x');
        for (const auto& [offset, byte] : rows[i].bytes) {
            image[offset] = byte;
        }
        const DecodedLog log(image);
        EXPECT_EQ(log[0].summaryFunction().size(), rows[i].length) << "row " << i;
        EXPECT_EQ(log[0].function().size(), rows[i].nameOffset == 24 ? 0 : rows[i].length);
    }
}

TEST(Record, ShortHeadersShowWhatTheEntryBeforeLeftAndConvertItAgain) {
    const TestEntry whole{.numbers = {0x030207D1, 0x04050607, 0x01020304, 0x11121314, 0x21222324,
                                      0x31323334, 0x41424344, 3, 0x41424344, 0x45464748,
                                      0x49000000}};
    const TestEntry trace{.type = 0x0005, .numbers = {0x040307D2, 0x05060708}};
    const auto bare = [](std::uint16_t type) { return TestEntry{.type = type, .headerLength = 4}; };
    const DecodedLog log(logImage({whole, bare(0x13), bare(3), trace, bare(0x13)}));
    const zelqTimestamp time({2001, 2, 3}, 4, 5, 6, 7);
    const zelqTimestamp turned({0xD107, 2, 3}, 4, 5, 6, 7);
    const zelqTimestamp later({2002, 3, 4}, 5, 6, 7, 8);
    const zelqTimestamp laterTurned({0xD207, 3, 4}, 5, 6, 7, 8);
    const std::uint32_t p = 0x01020304, turnedP = 0x04030201, t = 0x11121314, turnedT = 0x14131211;
    // clang-format off
    const std::vector<TestColumns> expected{
        {time,   p,       t,       0x21222324, 0x31323334, 0x41424344, "API Call", "ABCDEFGHI"},
        {turned, turnedP, turnedT, 0x24232221, 0x34333231, 0x44434241, "API Call", "ABCDEFGHI"},
        {time,   p,       t,       0x21222324, 0x31323334, 0x41424344, "API Call", "ABCDEFGH"},
        // The type code, still in the file's order, ends the name that is read from the detect
        // point's bytes. Cutting the name puts a NUL on the first byte of the older name.
        {later,       turnedP, turnedT, 0, 0, 0x24232221, "", "DCBA"},
        {laterTurned, p,       t,       0x21222324, 0x34333231, 0x44434241, "API Call", ""},
    };
    // clang-format on
    ASSERT_EQ(log.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(columnsOf(log[i]), expected[i]) << "row " << i;
    }
}

/// A column is fitted to the widest names alone; of names of "M" these are the longest.
TEST(ColumnExtremes, AreTheWidestNamesAndTheLargestValues) {
    std::mt19937 random(3);
    std::deque<DecodedLog> logs;
    std::set<std::size_t> lengths;
    std::uint32_t pid = 0;
    zelqColumnExtremes all;
    for (int number = 0; number < 30; ++number) {
        std::vector<TestEntry> entries;
        for (auto count = random() % 12; count > 0; --count) {
            const std::size_t length =
                1 + random() % std::min<std::size_t>(200, 20 + 5 * lengths.size());
            lengths.insert(length);
            entries.push_back(
                {.pid = static_cast<std::uint32_t>(random()), .name = std::string(length, 'M')});
            pid = std::max(pid, entries.back().pid);
        }
        zelqColumnExtremes some;
        logs.emplace_back(logImage(entries)).log->forEach([&](const auto& one) { some.note(one); });
        all.merge(some);
        EXPECT_EQ(all.pid, pid);
        auto length = lengths.rbegin();
        for (const zelqText& name : all.names()) {
            EXPECT_EQ(name.size(), length != lengths.rend() ? *length++ : 0) << number;
        }
    }
}

}  // namespace
