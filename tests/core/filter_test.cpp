#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "session/zelqRecordTest.h"
#include "support/LogImage.h"

using testing::ElementsAre;

namespace {

TEST(Filter, EveryEntryTypeHasACategory) {
    using Category = zelqEntryTypeTest::Category;
    const std::set<unsigned> traces{0x0002, 0x0005, 0x0006, 0x0015, 0x1002};
    const std::set<unsigned> errors{0x0001, 0x0003, 0x0004, 0x0013, 0x1001};
    for (unsigned type = 0; type <= 0xFFFF; ++type) {
        ASSERT_EQ(zelqEntryTypeTest::categoryOf(static_cast<std::uint16_t>(type)),
                  traces.contains(type)   ? Category::Trace
                  : errors.contains(type) ? Category::Error
                                          : Category::Message)
            << type;
    }
}

TEST(Filter, ValuesAscendAsTheAttributesDo) {
    DecodedLog read(logImage({{.date = {2027, 1, 2}, .hour = 25, .pid = 4294967295, .name = "b"},
                              {.date = {2026, 12, 31}, .minute = 255, .pid = 7, .name = "\344"},
                              {.date = {65535, 0, 0}, .hour = 1, .pid = 80, .name = "B"},
                              {.type = 0x2002, .date = {2027, 1, 2}, .hour = 1, .pid = 7}}));
    zelqLogCollection logs;
    logs.append(std::move(read.log), "log", 0);
    using Kind = zelqFilterKind;
    EXPECT_THAT(zelqValueTest::valuesOf(Kind::Pid, logs), ElementsAre(7, 80, 4294967295));
    EXPECT_THAT(zelqValueTest::valuesOf(Kind::Time, logs),
                ElementsAre(3600, 58500));  // 25:00 is 01:00
    EXPECT_THAT(zelqValueTest::valuesOf(Kind::Date, logs),
                ElementsAre(zelqDate{2026, 12, 31}.packed(), zelqDate{2027, 1, 2}.packed(),
                            zelqDate{65535, 0, 0}.packed()));
    EXPECT_THAT(zelqFunctionTest::valuesOf(logs), ElementsAre("", "B", "b", "\344"));
}

}  // namespace
