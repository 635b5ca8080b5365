#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "session/zelqFilterStage.h"
#include "support/LogImage.h"

using testing::ElementsAre;

namespace {

TEST(Filter, EveryEntryTypeHasACategory) {
    const std::vector<unsigned> traces{0x0002, 0x0005, 0x0006, 0x0015, 0x1002};
    const std::vector<unsigned> errors{0x0001, 0x0003, 0x0004, 0x0013, 0x1001};
    using Kind = zelqFilterKind;
    const zelqFilterStage trace(Kind::EntryType, zelqEntryTypeTest{true, false, false});
    const zelqFilterStage error(Kind::EntryType, zelqEntryTypeTest{false, true, false});
    const zelqFilterStage message(Kind::EntryType, zelqEntryTypeTest{false, false, true});
    std::vector<TestEntry> entries(0x10000);
    for (std::size_t type = 0; type < entries.size(); ++type) {
        entries[type].type = static_cast<std::uint16_t>(type);
    }
    const DecodedLog log(logImage(entries));
    for (unsigned type = 0; type <= 0xFFFF; ++type) {
        const bool isTrace = std::find(traces.begin(), traces.end(), type) != traces.end();
        const bool isError = std::find(errors.begin(), errors.end(), type) != errors.end();
        ASSERT_EQ(trace.passes(log[type]), isTrace) << type;
        ASSERT_EQ(error.passes(log[type]), isError) << type;
        ASSERT_EQ(message.passes(log[type]), !isTrace && !isError) << type;
    }
}

TEST(Filter, ValuesAscendAsTheAttributesDo) {
    DecodedLog read(logImage({{.date = {2027, 1, 2}, .hour = 25, .pid = 4294967295, .name = "b"},
                              {.date = {2026, 12, 31}, .minute = 255, .pid = 7, .name = "\344"},
                              {.date = {65535, 0, 0}, .hour = 1, .pid = 80, .name = "B"},
                              {.type = 0x2002, .date = {2027, 1, 2}, .hour = 1, .pid = 7}}));
    zelqLogCollection logs;
    logs.append(std::move(read.log), "log", 0);
    const auto valuesOf = [&logs](zelqFilterKind kind) {
        return zelqValueTest::valuesOf(kind, logs);
    };
    EXPECT_THAT(valuesOf(zelqFilterKind::Pid), ElementsAre(7, 80, 4294967295));
    EXPECT_THAT(valuesOf(zelqFilterKind::Time), ElementsAre(3600, 58500));  // 25:00 is 01:00
    EXPECT_THAT(valuesOf(zelqFilterKind::Date),
                ElementsAre(zelqDate{2026, 12, 31}.packed(), zelqDate{2027, 1, 2}.packed(),
                            zelqDate{65535, 0, 0}.packed()));
    EXPECT_THAT(zelqFunctionTest::valuesOf(logs), ElementsAre("", "B", "b", "\344"));
}

}  // namespace
