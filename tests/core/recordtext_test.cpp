#include <algorithm>
#include <array>
#include <random>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "output/zelqRecordFormatter.h"
#include "support/LogImage.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

constexpr auto kReversed = zelqAddressForm::Reversed;
constexpr auto kTrue = zelqAddressForm::True;

class RecordText : public testing::Test {
protected:
    std::string dateLine(const zelqBCnrObject& record) {
        std::string line;
        formatter_.appendDateLine(record, line);
        return line;
    }
    /// The lines of a record's listing.
    std::vector<std::string> listing(const zelqBCnrObject& record, zelqAddressForm form) {
        std::string text;
        formatter_.appendListing(record, form, text);
        EXPECT_EQ(text.back(), '\n');
        std::istringstream stream(text);
        std::vector<std::string> lines;
        for (std::string line; std::getline(stream, line);) {
            lines.push_back(line);
        }
        return lines;
    }
    /// The lines of the dump alone, of an entry whose expansion data are these bytes.
    std::vector<std::string> dump(const std::string& data, zelqAddressForm form) {
        const DecodedLog log(logImage({{.data = data}, {}}));
        const std::vector<std::string> lines = listing(log[0], form);
        EXPECT_GE(lines.size(), 6U);
        EXPECT_THAT(std::vector(lines.end() - 3, lines.end()),
                    ElementsAre("", std::string(93, '*'), ""));
        return {lines.begin() + 3, lines.end() - 3};
    }

    zelqLocaleText locale_{"C"};
    zelqRecordFormatter formatter_{locale_};
};

std::string block(std::size_t length, std::uint32_t address, const std::string& data = "") {
    std::string bytes;
    appendBig(bytes, length, 2);
    appendBig(bytes, 0xABCD, 2);
    appendBig(bytes, address, 4);
    return bytes + data;
}

TEST_F(RecordText, OnlyTheSummaryMakesAMonthThatDoesNotExistJanuary) {
    for (const auto& [month, shown] : std::vector<std::pair<std::uint8_t, std::string>>{
             {0, "01"}, {1, "01"}, {2, "02"}, {12, "12"}, {13, "01"}, {255, "01"}}) {
        const DecodedLog log(logImage({{.date = {.year = 2005, .month = month, .day = 0}}}));
        EXPECT_EQ(dateLine(log[0]).substr(6, 9), shown + "-00-05 ") << int{month};
        EXPECT_EQ(log[0].date().month, month);
    }
}

/// Address, hex, ASCII and EBCDIC; the line behind a block is without an address.
using DumpLine = std::array<std::string, 4>;

std::string paddedLine(const DumpLine& line) {
    if (line[0].empty()) {
        return "";
    }
    std::string text;
    for (std::size_t i = 0; i < line.size(); ++i) {
        constexpr std::array<std::size_t, 4> kWidths{10, 49, 18, 18};
        text += line[i] + std::string(kWidths[i] - line[i].size(), ' ');
    }
    return text;
}

TEST_F(RecordText, DumpOfBlocks) {
    const std::string hex16 = "61 62 63 64 65 66 67 68 69 6A 6B 6C 6D 6E 6F 70";
    const std::string text16 = "abcdefghijklmnop";
    const std::string dots16(16, '.');
    const std::string dotPairs = ".. .. .. .. .. .. .. .. .. .. .. .. .. .. .. ";
    const DumpLine end{};
    struct Row {
        const char* name;
        zelqAddressForm form;
        std::string data;
        std::vector<DumpLine> lines;
    };
    // clang-format off
    const std::vector<Row> rows{
        {"first dump", kReversed, block(13, 0x1003, "\xC1" "A\x0F\xF0z"),
         {{"03100000", "C1 41 0F F0 7A", ".A..z", "A..0."}, end}},
        {"first dump gets an offset", kReversed, block(9, 0x0FEEDDCC, "A"),
         {{"CCDDEE00", dotPairs + "41", std::string(15, '.') + "A", dots16}, end}},
        {"16 bytes not aligned", kTrue, block(24, 0x2F, text16),
         {{"00000020", dotPairs + "61", std::string(15, '.') + "a", dots16},
          {"00000030", hex16.substr(3), text16.substr(1), dots16.substr(1)}, end}},
        {"no data", kTrue, block(8, 0x40), {{"00000040"}, end}},
        {"no data not aligned", kTrue, block(8, 0x42), {{"00000040", ".. ..", "..", ".."}, end}},
        {"length 0 ends the chain", kTrue, block(0, 0x51, "never seen") + block(9, 0x60, "x"),
         {{"00000050", "..", ".", "."}, end}},
        // The second block's length and second word stand where the first one's address does.
        {"length 4", kTrue, std::string("\0\4\0\0", 4) + block(9, 0x60, "x"),
         {{"0009ABC0", dotPairs.substr(0, 39), dots16.substr(3), dots16.substr(3)}, end,
          {"00000060", "78", "x", "."}, end}},
        {"length 7", kTrue, block(7, 0x70) + block(9, 0x60, "x").substr(1),
         {{"00000070"}, end, {"00000060", "78", "x", "."}, end}},
        {"past the data", kTrue, block(9, 0x80, "x") + block(0xFFFF, 0x90, "yz"),
         {{"00000080", "78", "x", "."}, end, {"00000090", "79 7A", "yz", ".."}, end}},
        {"header cut", kTrue, block(9, 0x80, "x") + block(0x20, 0x12345678).substr(0, 6),
         {{"00000080", "78", "x", "."}, end, {"12340000"}, end}},
        {"header cut at the address", kReversed, block(0x20, 0x12345678).substr(0, 2),
         {{"00000000"}, end}},
    };
    // clang-format on
    for (const Row& row : rows) {
        std::vector<std::string> lines;
        std::transform(row.lines.begin(), row.lines.end(), std::back_inserter(lines), paddedLine);
        EXPECT_THAT(dump(row.data, row.form), ElementsAreArray(lines)) << row.name;
    }
}

TEST_F(RecordText, DumpOfEveryByte) {
    std::string bytes(256, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(i);
    }
    const std::string none(16, '.');
    const std::string ascii = none + none + R"( !"#$%&'()*+,-./0123456789:;<=>?)" +
                              "@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_" +
                              "`abcdefghijklmnopqrstuvwxyz{|}~." + std::string(128, '.');
    const std::string ebcdic = std::string(80, '.') + "&..........$...." + none +
                               "...........#@..." + ".abcdefghi......" + ".jklmnopqr......" +
                               ".~stuvwxyz......" + none + "{ABCDEFGHI......" +
                               "}JKLMNOPQR.....\\" + ".1STUVWXYZ......" + "0123456789|.....";
    const std::string digits = "0123456789ABCDEF";
    const std::vector<std::string> lines = dump(block(8 + 256, 0, bytes), kTrue);
    ASSERT_EQ(lines.size(), 17U);
    for (std::size_t i = 0; i < 16; ++i) {
        std::string hex;
        for (const char low : digits) {
            hex += {digits[i], low, ' '};
        }
        EXPECT_EQ(lines[i], std::string("000000") + digits[i] + "0  " + hex + ' ' +
                                ascii.substr(16 * i, 16) + "  " + ebcdic.substr(16 * i, 16) + "  ");
    }
}

TEST_F(RecordText, WindowAndListingHaveTheSameLines) {
    std::minstd_rand random(4711);
    const auto below = [&random](unsigned limit) {
        return static_cast<unsigned>(random() >> 8) % limit;
    };
    std::size_t dumpLines = 0;
    for (int round = 0; round < 3000; ++round) {
        std::string data;
        for (unsigned blocks = below(6); blocks > 0; --blocks) {
            std::string bytes(below(50), '\0');
            std::generate(bytes.begin(), bytes.end(),
                          [&] { return static_cast<char>(below(256)); });
            const std::array lengths{8 + bytes.size(), 8 + bytes.size(), std::size_t{below(12)},
                                     std::size_t{below(0x10000)}};
            data += block(lengths[below(lengths.size())], below(3) << 30 | below(0x1000), bytes);
        }
        data.resize(data.size() - std::min<std::size_t>(data.size(), below(3) * below(8)));
        const std::uint16_t type = below(2) == 0 ? 0x0013 : 0x2025;
        const DecodedLog log(logImage({{.type = type, .data = data}}));
        for (const zelqAddressForm form : {kReversed, kTrue}) {
            std::vector<std::string> expected = listing(log[0], form);
            ASSERT_GE(expected.size(), 6U);
            for (const std::size_t blank :
                 {std::size_t{2}, expected.size() - 3, expected.size() - 1}) {
                EXPECT_EQ(expected[blank], "");
                expected[blank] = " ";  // the window shows these lines so
            }
            std::vector<std::string> window(zelqRecordFormatter::lineCount(log[0], form));
            for (std::size_t i = 0; i < window.size(); ++i) {
                window[i] = formatter_.line(log[0], form, i);
            }
            ASSERT_EQ(window, expected) << "round " << round;
            for (std::size_t i = 3; i < expected.size() - 3; ++i) {
                ASSERT_TRUE(expected[i].empty() || expected[i].size() == 95) << "round " << round;
                ++dumpLines;
            }
        }
    }
    EXPECT_GT(dumpLines, 30000U);
}

}  // namespace
