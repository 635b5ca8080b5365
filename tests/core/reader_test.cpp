#include <algorithm>
#include <cstring>
#include <functional>
#include <map>
#include <random>
#include <span>
#include <stop_token>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "log/zelqEntryStream.h"
#include "log/zelqLogReader.h"
#include "support/LogImage.h"

namespace {

using namespace std::string_literals;
using Kind = zelqFinding::Kind;

TEST(Reader, TakesLengthsAndBlockChainsAsTheyStandAndReportsWhatIsWrong) {
    constexpr std::optional<std::size_t> kNone;
    struct Row {
        const char* what;
        TestEntry entry;  ///< the second one, at offset 24; its header has 24 bytes if not told
        std::size_t records;
        int blocks;
        std::optional<std::size_t> dataSize;  ///< none for what cannot be expanded
        std::vector<zelqFinding> findings{};
        std::optional<std::string> behind{};  ///< in place of a third entry
    };
    // clang-format off
    std::vector<Row> rows{
        {"no data", {}, 3, 0, 0},
        {"block 8", {.data = "\0\x08zzzzzz"s}, 2, 1, 8, {}, ""},
        {"block 0", {.data = "\0\0\0\0rest"s}, 3, 1, 8, {{Kind::BlockEmpty, 1, 48}}},
        {"block 4, then 0", {.data = "\0\4\0\0\0\0\0\0"s}, 3, 2, 8,
         {{Kind::BlockTooShort, 1, 48, 4}, {Kind::BlockEmpty, 1, 52}}},
        {"block 1, then 256", {.data = "\0\1\0"s}, 3, 2, 3,
         {{Kind::BlockTooShort, 1, 48, 1}, {Kind::BlockPastEntry, 1, 49, 256, 2}}},
        {"block 7, then 2, whose prefix reaches into the next entry", {.data = "\0\7zzzzz\0\2"s},
         3, 2, 9, {{Kind::BlockTooShort, 1, 48, 7}, {Kind::BlockTooShort, 1, 55, 2}}},
        {"block past the entry", {.data = "\xFF\xFF\0\0"s}, 3, 1, 4,
         {{Kind::BlockPastEntry, 1, 48, 65535, 4}}},
        {"file ends in a block prefix", {.data = "\1\1"}, 2, 1, 2,
         {{Kind::BlockPastEntry, 1, 48, 257, 2}, {Kind::FileEndsBehindEntry, 1, 50, 1}}, "z"},
        {"file ends in a block length", {.data = "\1"}, 2, 1, 1,
         {{Kind::BlockPastEntry, 1, 48, 256, 1}}, ""},
        {"header 0, its own first block", {.headerLength = 0, .data = "abcd"}, 3, 1, 8,
         {{Kind::HeaderTooShort, 1, 28, 0}, {Kind::BlockEmpty, 1, 28}}},
        {"header 3", {.headerLength = 3, .data = "abcd"}, 3, 1, 5,
         {{Kind::HeaderTooShort, 1, 28, 3}, {Kind::BlockPastEntry, 1, 31, 0x0161, 5}}},
        {"header 256", {.headerLength = 256, .data = "\0\x08zzzzzz"s}, 3, 1, 8},
        {"header 257", {.headerLength = 257, .data = "\0\2\0\2"s}, 3, 2, 4,
         {{Kind::HeaderTooLong, 1, 28, 257}, {Kind::BlockTooShort, 1, 285, 2},
          {Kind::BlockTooShort, 1, 287, 2}}},
        {"header 65535", {.headerLength = 65535, .entryLength = 65535}, 3, 0, kNone,
         {{Kind::HeaderTooLong, 1, 28, 65535}, {Kind::EntryEndsInHeader, 1, 24, 65535, 65539}}},
        {"header past the file", {.headerLength = 200, .entryLength = 24}, 2, 0, kNone,
         {{Kind::EntryEndsInHeader, 1, 24, 24, 204}, {Kind::FileEndsInEntry, 1, 99, 75, 204}}},
        {"entry past the file", {.entryLength = 65535}, 2, 0, 0,
         {{Kind::FileEndsInEntry, 1, 48, 24, 65535}}, ""},
        {"entry 23", {.entryLength = 23}, 3, 0, kNone, {{Kind::EntryEndsInHeader, 1, 24, 23, 24}}},
        {"entry 8", {.entryLength = 8}, 3, 0, kNone, {{Kind::EntryEndsInHeader, 1, 24, 8, 24}}},
        {"entry 7", {.entryLength = 7}, 2, 0, kNone,
         {{Kind::EntryEndsInHeader, 1, 24, 7, 24}, {Kind::EntryTooShort, 1, 24, 7}}},
        {"entry 7, header 0", {.headerLength = 0, .entryLength = 7}, 2, 1, 3,
         {{Kind::HeaderTooShort, 1, 28}, {Kind::BlockEmpty, 1, 28},
          {Kind::EntryTooShort, 1, 24, 7}}},
        {"entry 0, header 0", {.headerLength = 0, .entryLength = 0}, 2, 0, kNone,
         {{Kind::HeaderTooShort, 1, 28}, {Kind::EntryEndsInHeader, 1, 24, 0, 4},
          {Kind::EntryTooShort, 1, 24, 0}}},
    };
    // clang-format on
    Row longest{"longest chain", {.headerLength = 4}, 3, 32763, 65526};
    for (std::size_t i = 0; i < 32763; ++i) {
        longest.entry.data += "\0\2"s;
        longest.findings.push_back({Kind::BlockTooShort, 1, 32 + 2 * i, 2});
    }
    rows.push_back(longest);
    for (Row& row : rows) {
        row.entry.type = 1;
        const TestEntry third{.pid = 777, .blocks = {{0, "zz"}}};
        const DecodedLog log(logImage({{.type = 1}, row.entry}) +
                             row.behind.value_or(logImage({third})));
        SCOPED_TRACE(row.what);
        ASSERT_EQ(log.size(), row.records);
        EXPECT_EQ(log[1].blockCount(), row.blocks);
        EXPECT_EQ(log[1].expandMarkText(), row.dataSize.has_value() ? "+" : "");
        EXPECT_EQ(log[1].dataSize(), row.dataSize.value_or(0));
        EXPECT_EQ(log[row.records - 1].pid() == 777, row.records == 3);
        EXPECT_EQ(log.findings, row.findings);
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
    const std::string image = logImage({{.name = "Open", .blocks = {{0, "0123456789"}, {16, ""}}},
                                        {.type = 0x2004, .numbers = {1, 2}, .blocks = {{4, "d"}}}});
    constexpr std::size_t kSecond = 71;
    const DecodedLog whole(image);
    const auto wholeContents = contentsOf(*whole.log, whole.bytes.data());
    for (std::size_t cut = 1; cut < image.size(); ++cut) {
        const DecodedLog log(image.substr(0, cut));
        const std::size_t last = cut > kSecond ? 1 : 0;
        ASSERT_EQ(log.size(), last + 1);
        const std::size_t there = cut - last * kSecond;
        const std::size_t size = last == 0 ? kSecond : image.size() - kSecond;
        EXPECT_EQ(log[last].hasExpansion(), there > 1) << cut;  // else the length is missing
        // What the file does not hold is no damage of its own.
        const zelqFinding cutHere{Kind::FileEndsInEntry, last, cut, there, there < 2 ? 8 : size};
        EXPECT_EQ(log.findings, std::vector(cut == kSecond ? 0 : 1, cutHere));
        EXPECT_TRUE(last == 0 || contentsOf(*log.log, log.bytes.data())[0] == wholeContents[0]);

        // If reading failed there, nothing is known of the file's end.
        bool isGiven = false;
        const auto read = [&](std::span<std::byte> to) -> std::optional<std::size_t> {
            if (std::exchange(isGiven, true)) {
                return std::nullopt;
            }
            std::memcpy(to.data(), image.data(), cut);
            return cut;
        };
        zelqEntryStream stream(read, 0,
                               [](const zelqFinding& finding) { ADD_FAILURE() << finding.text(); });
        while (stream.next()) {
        }
        EXPECT_EQ(stream.count(), last + 1);
    }
}

TEST(Reader, AFileThatShrinksOrGrowsIsReadUpToTheSizeItHadAtMost) {
    const TemporaryFolder folder;
    const std::string name = folder.write("some.log", "");
    for (const auto& [size, read] : {std::pair{5U, 20U}, {50U, 50U}, {100U, 100U}, {300U, 100U}}) {
        std::filesystem::resize_file(name, 100);
        zelqLogFile file(name);
        EXPECT_TRUE(file.readMore(20));
        std::filesystem::resize_file(name, size);
        while (file.readMore(7)) {
        }
        EXPECT_EQ(file.bytesRead(), read);
        EXPECT_EQ(file.status().text, "");
    }
}

TEST(Reader, ReadsALogOfSeveralSegmentsAsOneImageAndStopsWithinFewEntries) {
    std::string image;
    while (image.size() < (std::size_t{9} << 20)) {  // segments of 2, 4 and 8 MiB
        appendEntry(image, {.pid = static_cast<std::uint32_t>(image.size()),
                            .name = "Name" + std::to_string(image.size() % 977),
                            .blocks = {{0, std::string(image.size() % 40000, 'x')}}});
        appendEntry(image, {.headerLength = 200, .entryLength = 9});  // ends in its header
    }
    image.insert(200, logImage({{.headerLength = 3}}));  // damage, which gives findings
    const TemporaryFolder folder;
    zelqReadRequest request{.fileName = folder.write("some.log", image)};
    const zelqReadResult result = zelqLogReader::read(request);
    const DecodedLog expected(image);
    EXPECT_TRUE(result.status.ok());
    EXPECT_FALSE(result.firstEntryIsDamaged);
    EXPECT_EQ(result.findings, expected.findings.size());
    ASSERT_EQ(result.log->size(), expected.size());
    std::size_t offset = 0;
    for (std::size_t i = 0; i < expected.size(); ++i) {
        ASSERT_EQ(result.log->offsetOf(i), offset) << i;
        offset += 256U * static_cast<unsigned char>(image[offset]) +
                  static_cast<unsigned char>(image[offset + 1]);
        ASSERT_EQ(columnsOf((*result.log)[i]), columnsOf(expected[i])) << i;
        const auto data = dataOf((*result.log)[i]);
        const auto wanted = dataOf(expected[i]);
        ASSERT_TRUE(std::equal(data.begin(), data.end(), wanted.begin(), wanted.end())) << i;
    }

    const auto readAndStop = [&request](const std::string& when) {
        std::stop_source stop;
        std::pair calls{0, 0};
        const auto stopIf = [&](const char* now) { return when == now && stop.request_stop(); };
        stopIf("before");
        request.stop = stop.get_token();
        request.findings = [&](const auto&) { ++calls.first, stopIf("finding"); };
        request.progress = [&](auto...) { ++calls.second, stopIf("progress"); };
        EXPECT_EQ(zelqLogReader::read(request).log, nullptr) << when;
        return calls;
    };
    EXPECT_EQ(readAndStop("progress").second, 1);
    image.clear();
    for (int i = 0; i < (1 << 17); ++i) {
        appendEntry(image, {.headerLength = 200, .entryLength = 8});
    }
    request.fileName = folder.write("short.log", image);
    EXPECT_EQ(readAndStop("before"), std::pair(0, 0));
    EXPECT_LE(readAndStop("finding").first, 8192);
    request.mostKept = 0;
    EXPECT_LE(readAndStop("finding").first, 8192);
}

/// An entry of a pipe is shown as soon as nothing that may follow can change it.
TEST(Reader, KnowsAnEntryThatIsWholeThoughTheFileMayGoOn) {
    for (const auto& [data, isWhole] : std::map<std::string, bool>{{"", true},
                                                                   {"\0\5\0\0x"s, true},
                                                                   {"\0\6\0\0x"s, true},
                                                                   {"\0\0\0\0x"s, true},
                                                                   {"\0\4\0\0x"s, false},
                                                                   {"x", false}}) {
        std::string image = logImage({{.data = data}});
        for (const std::size_t missing : {std::size_t{0}, std::size_t{1}}) {
            const auto bytes =
                std::as_writable_bytes(std::span(image.data(), image.size() - missing));
            zelqLogDecoder decoder(0, {});
            EXPECT_EQ(decoder.decode(bytes, false), isWhole && missing == 0) << image.size();
            EXPECT_TRUE(decoder.count() != 0 || decoder.decode(bytes, true));
        }
    }
}

TEST(Reader, SaysWhyAFileIsNotReadAndReadsNoFurtherThanItsLastEntry) {
    const TemporaryFolder folder;
    const auto sparse = folder.write("sparse", "");
    std::filesystem::resize_file(sparse, std::uintmax_t{1} << 40);  // its first entry has length 0
    struct Row {
        std::string name;
        std::errc code;
        std::size_t records;
        bool firstEntryIsDamaged;
    };
    for (const auto& [name, code, records, damaged] : std::vector<Row>{
             {folder.file("nosuch"), std::errc::no_such_file_or_directory, 0, false},
             {folder.file(""), std::errc::is_a_directory, 0, false},
             {sparse, {}, 1, true},
             {folder.write("empty", ""), {}, 0, false},
             {folder.write("text", "Some text that is no log"), {}, 1, true},
             {"/proc/version", {}, 1, true}}) {  // has a size of 0 and is none the less not empty
        const zelqReadResult result = zelqLogReader::read({.fileName = name});
        EXPECT_TRUE(result.status.code == std::make_error_code(code) || result.status.ok()) << name;
        EXPECT_EQ(result.status.ok(), code == std::errc{}) << name;
        EXPECT_EQ(result.log->size(), records) << name;
        EXPECT_EQ(result.firstEntryIsDamaged, damaged) << name;
        EXPECT_EQ(result.log->file().identity().has_value(),
                  code != std::errc::no_such_file_or_directory);
        EXPECT_LE(result.log->file().bytesRead(), std::size_t{1} << 20) << name;
    }
}

/// The names of a log change as the entries write over the start of the header buffer and cut what
/// it holds; what is kept of them must be right and bounded.
TEST(Reader, KeepsNamesThatShareTheirEndsAsTheyWere) {
    std::mt19937 random(1);
    zelqTextTable table;
    std::string buffer(256, '\0');
    std::vector<std::pair<zelqTextTable::Place, std::string>> texts;
    for (int i = 0; i < 200000; ++i) {
        const std::size_t written = i % 97 == 0 ? random() % 228 : random() % 3;
        for (std::size_t at = 0; at < written; ++at) {
            buffer[32 + at - 4] = static_cast<char>('a' + random() % 26);
        }
        if (random() % 50 == 0) {
            buffer[28 + random() % 226] = '\0';
        }
        const std::size_t position = random() % 2 == 0 ? 32 : 40;
        const std::string_view text(buffer.data() + position - 4);
        texts.emplace_back(table.intern(text, position), text);
    }
    for (const auto& [place, text] : texts) {
        ASSERT_EQ(zelqTextTable::textAt(place).string(), text);
    }
    table.clear();
    EXPECT_EQ(table.memoryUse(), 0U);
    const auto again = table.intern(texts.back().second, 32);
    EXPECT_GT(table.memoryUse(), 0U);  // it is kept anew
    EXPECT_EQ(zelqTextTable::textAt(again).string(), texts.back().second);
}

TEST(Reader, NoLogTakesMoreMemoryForRecordsAndTextsThan16TimesItsSize) {
    const std::string name(250, 'n');
    std::mt19937 random(1);
    const auto letters = [&random](std::size_t count) {
        std::string text(count, ' ');
        std::generate(text.begin(), text.end(),
                      [&random] { return static_cast<char>('0' + random() % 200); });
        return text;
    };
    /// An entry of which a header of `headerLength` is read, beyond its end too.
    const auto entry = [](std::uint16_t type, std::uint16_t headerLength, const std::string& rest) {
        std::string image;
        for (const std::size_t value :
             {8 + rest.size(), std::size_t{0}, std::size_t{headerLength}, std::size_t{type}}) {
            appendBig(image, value, 2);
        }
        return image + rest;
    };
    /// Short entries, and behind them a long one whose bytes all of them read as their names.
    const auto group = [&](std::uint16_t type, std::size_t nameOffset, std::size_t fresh) {
        const auto headerLength = static_cast<std::uint16_t>(nameOffset + fresh - 4);
        std::string image;
        for (std::size_t at = 8; at < nameOffset; at += 8) {
            image += entry(type, headerLength, "");
        }
        return image + entry(type, headerLength, letters(nameOffset + fresh - 8));
    };
    const std::vector<std::pair<const char*, std::function<std::string()>>> rows{
        {"shortest entries", [&] { return entry(0x15, 4, "") + entry(0x13, 4, ""); }},
        {"the first two bytes of a name, all of it now and then",
         [&, left = 0]() mutable {
             left = left == 0 ? 1000 : left - 1;
             // The first letters are the start of the name that the third entry before has.
             return left == 1000 ? group(0x15, 32, 40)
                                 : entry(0x15, 30, letters(2)).replace(2, 2, letters(2));
         }},
        {"40 bytes of a trace's name", [&] { return group(0x15, 32, 40); }},
        {"41 bytes of an error's name", [&] { return group(0x13, 40, 41); }},
        {"a whole name", [&] { return entry(0x15, 252, letters(248)); }},
    };
    for (const auto& [what, next] : rows) {
        std::string image = entry(0x15, 256, name);
        while (image.size() < (std::size_t{2} << 20)) {
            image += next();
        }
        const DecodedLog log(image);
        EXPECT_LE(log.log->memoryUse(), 16 * image.size() + (std::size_t{3} << 20)) << what;
    }
}

}  // namespace
