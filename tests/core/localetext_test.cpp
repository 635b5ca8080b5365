#include <gtest/gtest.h>

#include "output/zelqLocaleText.h"

namespace {

TEST(LocaleText, DatesAreTheirNumbersAndTimesAreInFull) {
    const zelqLocaleText text("C");
    EXPECT_EQ(text.dateOrder(), zelqDateOrder::MonthDayYear);
    EXPECT_EQ(text.date({.year = 2026, .month = 11, .day = 21}), "11-21-2026");
    EXPECT_EQ(text.date({.year = 58629, .month = 13, .day = 0}), "13-00-58629");
    EXPECT_EQ(text.date({.year = 7, .month = 255, .day = 1}), "255-01-0007");
    EXPECT_EQ(text.time({0}), "00:00:00");
    EXPECT_EQ(text.time({86399}), "23:59:59");
    EXPECT_EQ(zelqLocaleText("xx_NOWHERE").time({3661}), "01:01:01");
}

}  // namespace
