#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <numeric>
#include <optional>
#include <random>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "output/zelqRecordFormatter.h"
#include "support/LogImage.h"
#include "support/TestLocales.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

constexpr auto kReversed = zelqAddressForm::Reversed;
constexpr auto kTrue = zelqAddressForm::True;

const zelqLocaleText kLocale("C");

std::vector<std::string> listingLines(const zelqBCnrObject& record, zelqAddressForm form) {
    std::string text;
    zelqRecordFormatter(kLocale).appendListing(record, form, text);
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// The lines of the dump in the listing of an entry whose expansion data are these bytes.
std::vector<std::string> dump(const std::string& data, zelqAddressForm form) {
    const DecodedLog log(logImage({{.data = data}, {}}));
    const std::vector<std::string> lines = listingLines(log[0], form);
    EXPECT_GE(lines.size(), 6U);
    EXPECT_THAT(std::vector(lines.end() - 3, lines.end()),
                ElementsAre("", std::string(93, '*'), ""));
    return {lines.begin() + 3, lines.end() - 3};
}

std::string block(std::size_t length, std::uint32_t address, const std::string& data = "") {
    std::string bytes;
    appendBig(bytes, length, 2);
    appendBig(bytes, 0xABCD, 2);
    appendBig(bytes, address, 4);
    return bytes + data;
}

TEST(LocaleText, DatesAreTheirNumbersAndTimesAreInFull) {
    const zelqLocaleText text("C");
    EXPECT_EQ(text.date({.year = 58629, .month = 13, .day = 0}), "13-00-58629");
    EXPECT_EQ(text.date({.year = 7, .month = 255, .day = 1}), "255-01-0007");
    EXPECT_EQ(text.time({86399}), "23:59:59");
    EXPECT_EQ(zelqLocaleText("xx_NOWHERE").time({3661}), "01:01:01");
}

TEST(LocaleText, TheOrderIsThatOfTheLocalesFormat) {
    constexpr auto kMonth = zelqDateOrder::MonthDayYear;
    constexpr auto kDay = zelqDateOrder::DayMonthYear;
    constexpr auto kYear = zelqDateOrder::YearMonthDay;
    for (const auto& [format, order] : std::map<std::string_view, zelqDateOrder>{
             {"%m/%d/%y", kMonth},   {"%d.%m.%Y", kDay},      {"%Y-%m-%d", kYear},
             {"%-m/%-d/%y", kMonth}, {"%-d/%-m/%y", kDay},    {"%y/%-m/%-d", kYear},
             {"%D", kMonth},         {"%e-%m-%Y", kDay},      {"%F", kYear},
             {"%b %d %Y", kMonth},   {"%Od-%Om-%Oy", kDay},   {"%Ey %b %d", kYear},
             {"%B %e, %Y", kMonth},  {"%A, %d %b %Y", kDay},  {"%OC%Oy %b %Od", kYear},
             {"%h %d", kMonth},      {"%%m %_d.%m.%Y", kDay}, {"%G-W%V-%u", kYear},
             {"m/d", kMonth},        {"y %0^e", kDay},        {"%a %#EY", kYear},
             {"", kMonth},           {"%A d%02d %4Y", kDay},  {"d %+4Y", kYear},
             {"%", kMonth},          {"%-", kMonth}}) {
        EXPECT_EQ(zelqLocaleText::orderOf(format), order) << format;
    }
}

TEST(LocaleText, DatesAndTimesAreThoseOfTheLocale) {
    TestLocales::use();
    const zelqDate date{.year = 2026, .month = 11, .day = 21};
    const zelqLocaleText german("de_DE.ISO-8859-1");
    EXPECT_EQ(german.date(date) + ' ' + german.shortDate(date), "21-11-2026 21-11-26");
    const zelqLocaleText japanese("ja_JP.EUC-JP");
    EXPECT_EQ(japanese.date(date) + ' ' + japanese.shortDate(date), "2026-11-21 26-11-21");
    EXPECT_EQ(japanese.time({3661}),
              "01\xBB\xFE"
              "01\xCA\xAC"
              "01\xC9\xC3");
}

TEST(RecordText, OnlyTheSummaryMakesAMonthThatDoesNotExistJanuary) {
    for (const auto& [month, shown] : std::vector<std::pair<std::uint8_t, std::string>>{
             {0, "01"}, {1, "01"}, {2, "02"}, {12, "12"}, {13, "01"}, {255, "01"}}) {
        const DecodedLog log(logImage({{.date = {.year = 2005, .month = month, .day = 0}}}));
        zelqRecordFormatter formatter(kLocale);
        EXPECT_EQ(formatter.line(log[0], kTrue, 1).before.substr(6, 9), shown + "-00-05 ")
            << int{month};
        EXPECT_EQ(log[0].date().month, month);
    }
}

/// Address, hex, ASCII and EBCDIC; the line after a block is without an address.
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

TEST(RecordText, DumpOfBlocks) {
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
        {"length 0 ends the chain", kTrue, block(0, 0x51, "never seen") + block(9, 0x60, "x"),
         {{"00000050", "..", ".", "."}, end}},
        // The second block's length and second word stand where the first one's address does.
        {"length 4", kTrue, std::string("\0\4\0\0", 4) + block(9, 0x60, "x"),
         {{"0009ABC0", dotPairs.substr(0, 39), dots16.substr(3), dots16.substr(3)}, end,
          {"00000060", "78", "x", "."}, end}},
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

TEST(RecordText, DumpOfEveryByte) {
    std::string bytes(256, '\0');
    std::iota(bytes.begin(), bytes.end(), '\0');
    const std::string none(16, '.');
    const std::string ascii = none + none + R"( !"#$%&'()*+,-./0123456789:;<=>?)" +
                              "@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_" +
                              "`abcdefghijklmnopqrstuvwxyz{|}~." + std::string(128, '.');
    const std::string ebcdic = std::string(80, '.') + "&..........$...." + none +
                               "...........#@..." + ".abcdefghi......" + ".jklmnopqr......" +
                               ".~stuvwxyz......" + none + "{ABCDEFGHI......" +
                               "}JKLMNOPQR.....\\" + ".1STUVWXYZ......" + "0123456789|.....";
    std::string shownAscii, shownEbcdic;
    for (const std::string& line : dump(block(8 + 256, 0, bytes), kTrue)) {
        shownAscii += line.empty() ? "" : line.substr(59, 16);
        shownEbcdic += line.empty() ? "" : line.substr(77, 16);
    }
    EXPECT_EQ(shownAscii, ascii);
    EXPECT_EQ(shownEbcdic, ebcdic);
}

std::string textOf(const zelqRecordFormatter::Line& line) {
    return std::string(line.before).append(line.time).append(line.after);
}

TEST(RecordText, LinesInAnyOrderAreThoseOfTheListing) {
    std::string mixed, shorter;
    for (std::size_t i = 0; i < 60; ++i) {
        mixed += block(8 + i, 7 * static_cast<std::uint32_t>(i), std::string(i, 'x'));
        shorter.append("\0\4\xFF\xFF", 4);  // what follows is its address
    }
    const DecodedLog log(logImage({{.name = "f", .data = mixed},
                                   {.data = shorter},
                                   {.type = 0x0001, .data = block(0xFFFF, 1, "cut")},
                                   {}}));
    zelqRecordFormatter formatter(kLocale);
    log.log->forEach([&formatter](const zelqBCnrObject& record) {
        const std::array lines{listingLines(record, kReversed), listingLines(record, kTrue)};
        std::vector<std::size_t> forwards(lines[0].size());
        std::iota(forwards.begin(), forwards.end(), std::size_t{0});
        const std::vector<std::size_t> backwards(forwards.rbegin(), forwards.rend());
        std::vector<std::size_t> jumps = forwards;
        std::shuffle(jumps.begin(), jumps.end(), std::mt19937(1));
        for (const auto& order : {forwards, backwards, jumps}) {
            for (const std::size_t number : order) {
                const zelqAddressForm form = number % 8 == 0 ? kReversed : kTrue;
                const auto& expected = lines[static_cast<std::size_t>(form)];
                ASSERT_EQ(zelqRecordFormatter::lineCount(record, form), expected.size());
                if (number < expected.size()) {
                    const std::string line = textOf(formatter.line(record, form, number));
                    ASSERT_EQ(line == " " ? "" : line, expected[number]) << number;
                }
            }
        }
    });
}

/// A locale whose times are longer than the summary's column for them, and longest before noon.
class LongTimes {
public:
    LongTimes() {
        const std::string source =
            folder_.write("source",
                          "comment_char %\nescape_char /\nLC_TIME\nd_fmt \"%m//%d//%y\"\n"
                          "t_fmt \"%I h %M min %S s %p\"\nam_pm \"before noon\";\"later\"\n"
                          "END LC_TIME\n");
        // It reports what the source leaves out as a failure, and writes the rest.
        const std::string command = "localedef -c -i " + source + " " + folder_.file("long") +
                                    " >" + folder_.file("log") + " 2>&1";
        [[maybe_unused]] const int status = std::system(command.c_str());
        ::setenv("LOCPATH", folder_.file("").c_str(), 1);
        text_.emplace("long");
        ::unsetenv("LOCPATH");
    }
    [[nodiscard]] const zelqLocaleText& text() const { return *text_; }

private:
    TemporaryFolder folder_;
    std::optional<zelqLocaleText> text_;
};

TEST(RecordText, LongestLineIsThatOfTheLines) {
    const LongTimes locale;
    const zelqLocaleText& longTimes = locale.text();
    ASSERT_EQ(longTimes.time({0}), "12 h 00 min 00 s before noon");
    const std::string name(100, 'n');
    constexpr std::uint32_t kWidest = 0x80000000;
    struct Row {
        const zelqLocaleText* locale;
        TestEntry entry;
    };
    for (const Row& row :
         std::vector<Row>{{&kLocale, {.name = "short", .blocks = {{.data = "data"}}}},
                          {&kLocale, {.type = 0x0001, .name = name, .blocks = {{}}}},
                          {&kLocale, {.pid = kWidest, .name = name}},
                          {&kLocale, {.type = 0x0015, .pid = 12345, .majorError = 7, .name = name}},
                          {&kLocale, {.type = 0x2002, .majorError = kWidest, .name = name}},
                          {&longTimes, {.hour = 1, .majorError = kWidest, .name = name}}}) {
        const DecodedLog log(logImage({row.entry}));
        zelqRecordFormatter formatter(*row.locale);
        std::size_t longest = 0;
        for (std::size_t i = 0; i < zelqRecordFormatter::lineCount(log[0], kTrue); ++i) {
            longest = std::max(longest, textOf(formatter.line(log[0], kTrue, i)).size());
        }
        EXPECT_EQ(formatter.longestLine(log[0]), longest);
    }
}

}  // namespace
