#include <map>

#include <gtest/gtest.h>

#include "output/zelqRecordFormatter.h"
#include "support/LogImage.h"
#include "support/TestLocales.h"

namespace {

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
    EXPECT_EQ(japanese.utf8(japanese.time({3661}) + '\xA4'), "01時01分01秒\uFFFD");
}

TEST(RecordText, OnlyTheSummaryMakesAMonthThatDoesNotExistJanuary) {
    for (const auto& [month, shown] : std::vector<std::pair<std::uint8_t, std::string>>{
             {0, "01"}, {1, "01"}, {2, "02"}, {12, "12"}, {13, "01"}, {255, "01"}}) {
        const DecodedLog log(logImage({{.date = {.year = 2005, .month = month, .day = 0}}}));
        const zelqLocaleText locale("C");
        zelqRecordFormatter formatter(locale);
        EXPECT_EQ(formatter.line(log[0], zelqAddressForm::True, 1).before.substr(6, 9),
                  shown + "-00-05 ")
            << int{month};
        EXPECT_EQ(log[0].date().month, month);
    }
}

TEST(RecordText, NoLineIsLongerThanTheLongestTime) {
    TestLocales::use();
    const zelqLocaleText longTimes("long");
    ASSERT_EQ(longTimes.time({0}), "12 h 00 min 00 s before noon");
    const DecodedLog log(
        logImage({{.hour = 1, .majorError = 1U << 31, .name = std::string(100, 'n')}}));
    zelqRecordFormatter formatter(longTimes);
    const auto line = formatter.line(log[0], zelqAddressForm::True, 0);
    EXPECT_EQ(formatter.longestLine(log[0]),
              line.before.size() + line.time.size() + line.after.size());
}

}  // namespace
