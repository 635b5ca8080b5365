#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "log/zelqLogReader.h"
#include "support/LogImage.h"

namespace {

using namespace std::string_literals;
using Kind = zelqFinding::Kind;

/// All that the reader says of each record; of its data, where they lie in the file.
auto contentsOf(const zelqLog& log, const std::byte* file) {
    std::vector<std::tuple<TestColumns, int, int, bool, std::ptrdiff_t, std::size_t>> contents;
    log.forEach([&](const zelqBCnrObject& record) {
        const auto data = record.expansionData();
        contents.emplace_back(columnsOf(record), record.entryIndex(), record.blockCount(),
                              record.hasExpansion(), data.empty() ? 0 : data.data() - file,
                              data.size());
    });
    return contents;
}

TEST(Reader, LengthsAndBlockChainsAreTakenAsTheyStand) {
    constexpr std::optional<std::size_t> kNone;
    struct Row {
        const char* what;
        TestEntry entry;
        std::size_t records;
        int blocks;
        std::optional<std::size_t> dataSize;  ///< none for what cannot be expanded
    };
    // clang-format off
    std::vector<Row> rows{
        {"no data", {}, 2, 0, 0},
        {"two blocks", {.blocks = {{0, "ab"}, {0, "c"}}}, 2, 2, 19},
        {"block length 0", {.data = "\0\0\0\0rest"s}, 2, 1, 8},
        {"length 0 behind a block", {.data = "\0\4\0\0\0\0\0\0"s}, 2, 2, 8},
        {"length 1, then 256", {.data = "\0\1\0"s}, 2, 2, 3},
        {"chain past the entry", {.data = "\xFF\xFF\0\0"s}, 2, 1, 4},
        {"prefix reaching into the next entry", {.data = "\0\4zz\0\2"s}, 2, 2, 6},
        {"header 0, its own first block", {.headerLength = 0, .data = "abcd"}, 2, 1, 8},
        {"header 3", {.headerLength = 3, .data = "abcd"}, 2, 1, 5},
        {"header 256", {.headerLength = 256, .data = "\0\2\0\2"s}, 2, 2, 4},
        {"header 257", {.headerLength = 257, .data = "\0\2\0\2"s}, 2, 2, 4},
        {"header 65531", {.headerLength = 65531, .entryLength = 65535}, 2, 0, 0},
        {"header 65535", {.headerLength = 65535, .entryLength = 65535}, 2, 0, kNone},
        {"entry ends in its header", {.entryLength = 23}, 2, 0, kNone},
        {"entry ends behind its prefix", {.entryLength = 8}, 2, 0, kNone},
    };
    // clang-format on
    for (const std::uint16_t n : std::initializer_list<std::uint16_t>{0, 1, 2, 3, 4, 5, 6, 7}) {
        rows.push_back({"short entry", {.entryLength = n}, 1, 0, kNone});
        TestEntry noHeader{.headerLength = 0, .entryLength = n};
        rows.push_back({"both", noHeader, 1, n > 4, n < 4 ? kNone : std::optional(n - 4UL)});
        const std::string block = "\0"s + static_cast<char>(n) + std::string(n, '\xFF');
        const std::string two = block.substr(0, n) + block.substr(0, n);
        if (n > 1) {
            rows.push_back({"short blocks", {.data = two}, 2, 2, two.size()});
        }
    }
    Row longest{"longest chain", {.headerLength = 4}, 2, 32763, 65526};
    for (int i = 0; i < longest.blocks; ++i) {
        longest.entry.data += "\0\2"s;
    }
    rows.push_back(longest);
    for (Row& row : rows) {
        row.entry.type = 1;  // its header has 20 bytes
        const DecodedLog log(logImage({row.entry, {.pid = 777, .blocks = {{0, "zz"}}}}));
        SCOPED_TRACE(testing::Message() << row.what << row.entry.entryLength.value_or(0));
        ASSERT_EQ(log.size(), row.records);
        EXPECT_EQ(log[0].blockCount(), row.blocks);
        EXPECT_EQ(log[0].expandMarkText(), row.dataSize.has_value() ? "+" : "");
        EXPECT_EQ(log[0].expansionData().size(), row.dataSize.value_or(0));
        EXPECT_EQ(log[row.records - 1].pid(), row.records == 2 ? 777U : log[0].pid());
    }
}

TEST(Reader, WhatIsMissingOfAHeaderIsReadFromTheNextEntryOrKeepsWhatTheBufferHeld) {
    const TestEntry reaching{.type = 1, .numbers = {1, 2}, .headerLength = 16, .entryLength = 8};
    std::string image = logImage({reaching, {.date = {.year = 0x0304, .month = 2, .day = 1}}});
    EXPECT_EQ(DecodedLog(image)[0].pid(), 0x04030201U);  // unconverted, at offset 16
    image = logImage({{.pid = 0x01020304}, {.pid = 0xAABBCCDD}});
    EXPECT_EQ(DecodedLog(image.substr(0, image.size() / 2 + 18))[1].pid(), 0xAABB0201U);
}

TEST(Reader, AFileMayEndAtAnyByte) {
    const std::string image =
        logImage({{.pid = 1, .name = "Open", .blocks = {{0, "0123456789"}, {16, ""}}},
                  {.type = 0x0015, .pid = 2, .name = "Close(int)", .blocks = {{0, "x"}}},
                  {.type = 0x2004, .numbers = {1, 2, 3, 4}, .blocks = {{0, "abc"}, {4, "defg"}}}});
    struct Place {
        std::size_t start, end, data;  ///< the data's place is counted from the start
        std::vector<std::size_t> blocks;
    };
    const std::vector<Place> places{
        {0, 71, 45, {45, 63}}, {71, 123, 43, {43}}, {123, 170, 24, {24, 35}}};
    const DecodedLog whole(image);
    ASSERT_EQ(whole.bytes.size(), places.back().end);
    const auto wholeContents = contentsOf(*whole.log, whole.bytes.data());
    for (std::size_t cut = 1; cut <= image.size(); ++cut) {
        SCOPED_TRACE(testing::Message() << "cut at " << cut);
        const DecodedLog log(image.substr(0, cut));
        const std::size_t last = cut <= places[0].end ? 0 : cut <= places[1].end ? 1 : 2;
        ASSERT_EQ(log.size(), last + 1);
        auto contents = contentsOf(*log.log, log.bytes.data());
        const auto& [start, end, dataPlace, blocks] = places[last];
        const std::size_t there = cut - start;
        EXPECT_EQ(log[last].blockCount(),
                  std::count_if(blocks.begin(), blocks.end(),
                                [there](std::size_t block) { return block < there; }));
        EXPECT_EQ(log[last].hasExpansion(), there > 1);  // else the entry's length is missing
        if (there >= 8) {
            const auto data = log[last].expansionData();
            EXPECT_EQ(data.size(), there - std::min(there, dataPlace));
            EXPECT_TRUE(data.empty() || data.data() == log.bytes.data() + start + dataPlace);
        }
        if (cut < end) {
            contents.pop_back();
            // What the file does not hold is no damage of its own.
            const auto needed = there < 2 ? 8 : end - start;
            EXPECT_THAT(log.findings, testing::ElementsAre(zelqFinding{Kind::FileEndsInEntry, last,
                                                                       cut, there, needed}));
        } else {
            EXPECT_THAT(log.findings, testing::IsEmpty());
        }
        EXPECT_TRUE(std::equal(contents.begin(), contents.end(), wholeContents.begin()));
    }
}

TEST(Reader, DamageIsReportedWithItsPlace) {
    struct Row {
        TestEntry entry;  ///< from offset 24 on, with a header of 24 bytes
        bool atEnd;
        std::vector<zelqFinding> findings;
    };
    // clang-format off
    const std::vector<Row> rows{
        {{}, false, {}},
        {{.data = "\0\x08zzzzzz"s}, true, {}},
        {{.entryLength = 7}, false,
         {{Kind::EntryEndsInHeader, 1, 24, 7, 24}, {Kind::EntryTooShort, 1, 24, 7}}},
        {{.headerLength = 3, .entryLength = 7}, false,
         {{Kind::HeaderTooShort, 1, 28, 3}, {Kind::EntryTooShort, 1, 24, 7}}},
        {{.headerLength = 257}, false, {{Kind::HeaderTooLong, 1, 28, 257}}},
        {{.entryLength = 23}, false, {{Kind::EntryEndsInHeader, 1, 24, 23, 24}}},
        {{.headerLength = 200, .entryLength = 24}, false,  // 65 bytes are there
         {{Kind::EntryEndsInHeader, 1, 24, 24, 204}, {Kind::FileEndsInEntry, 1, 89, 65, 204}}},
        {{.entryLength = 100}, true, {{Kind::FileEndsInEntry, 1, 48, 24, 100}}},
        {{.data = "\0\0zz"s}, false, {{Kind::BlockEmpty, 1, 48}}},
        {{.data = "\0\4zz\0\7zzzzz"s}, false,
         {{Kind::BlockTooShort, 1, 48, 4}, {Kind::BlockTooShort, 1, 52, 7}}},
        {{.data = "\0\x08zzzzzz\0\x09zzzzzz"s}, false, {{Kind::BlockPastEntry, 1, 56, 9, 8}}},
        {{.data = "\1\1"}, true, {{Kind::BlockPastEntry, 1, 48, 257, 2}}},
    };
    // clang-format on
    for (std::size_t i = 0; i < rows.size(); ++i) {
        TestEntry entry = rows[i].entry;
        entry.type = 1;
        const std::string behind = rows[i].atEnd ? "" : logImage({{}});
        EXPECT_EQ(DecodedLog(logImage({{.type = 1}, entry}) + behind).findings, rows[i].findings)
            << "row " << i;
    }
    const DecodedLog log(logImage({{.type = 1, .data = "\1\1"}}) + "z");
    EXPECT_EQ(log.size(), 1U);
    EXPECT_THAT(log.findings,
                testing::ElementsAre(zelqFinding{Kind::BlockPastEntry, 0, 24, 257, 2},
                                     zelqFinding{Kind::FileEndsBehindEntry, 0, 26, 1}));
}

/// Entries of many lengths and types, sound and damaged, over 2 MiB in all.
std::string mixedImage() {
    std::string image;
    for (unsigned i = 0; i < 400; ++i) {
        TestEntry entry{.type = static_cast<std::uint16_t>(i % 2 == 0 ? 0x0013 : 0x2002 + i % 7),
                        .pid = i,
                        .name = "Run(" + std::to_string(i),
                        .blocks = {{0, std::string(i * 7919 % 16000, 'b')}},
                        .data = std::string(i % 5, '\0')};
        if (i % 3 == 0) {
            entry.headerLength = static_cast<std::uint16_t>(i);
        } else if (i % 11 == 0) {
            entry.entryLength = static_cast<std::uint16_t>(8 + i % 30);
        }
        appendEntry(image, entry);
    }
    return image;
}

TEST(Reader, DecodingInPiecesChangesNothing) {
    for (const std::string& end :
         {""s, "\0\x60zz"s, logImage({{.data = "\1"}}) + "z", logImage({{.entryLength = 5}})}) {
        const DecodedLog whole(mixedImage() + end);
        ASSERT_GE(whole.size(), 400U);
        for (const std::size_t step : {1999U, 65535U, 1U << 20}) {
            std::vector<std::byte> bytes = whole.bytes;
            std::vector<zelqFinding> findings;
            zelqLog log("");
            zelqLogDecoder decoder(log, 0, [&](const auto& found) { findings.push_back(found); });
            for (std::size_t size = 0; size < bytes.size(); size += step) {
                decoder.decode(std::span(bytes).first(size), false);
            }
            EXPECT_GT(log.size(), 200U);
            decoder.decode(bytes, true);
            EXPECT_EQ(contentsOf(log, bytes.data()), contentsOf(*whole.log, whole.bytes.data()));
            EXPECT_EQ(findings, whole.findings);
        }
    }
}

TEST(Reader, WhatIsNoReadableFileGivesNoRecordsAndDoesNotBlock) {
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo(folder.file("fifo").c_str(), 0600), 0);
    const std::string empty = folder.write("empty.log", "");
    for (const std::string& name : {folder.file("missing"), folder.file("."), folder.file("fifo"),
                                    folder.file("empty.log/a.log"), ""s, empty}) {
        const zelqReadResult result = readLog({.fileName = name});
        ASSERT_NE(result.log, nullptr) << name;
        EXPECT_EQ(result.log->size(), 0U) << name;
        EXPECT_EQ(result.problem.empty(), name == empty) << name;
    }
}

}  // namespace
