#include <fstream>
#include <iterator>
#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/zelqSampleLog.h"
#include "support/LogImage.h"

namespace {

using testing::AllOf;
using testing::Gt;
using testing::IsEmpty;
using testing::Lt;

std::string sample(std::uint64_t seed, unsigned logNumber, int count,
                   std::string_view start = "2026-11-21T08:00:00") {
    zelqSampleLog log(seed, logNumber, parseSampleTime(start).value());
    std::string image;
    for (int i = 0; i < count; ++i) {
        const auto entry = log.next();
        image.append(reinterpret_cast<const char*>(entry.data()), entry.size());
    }
    return image;
}

TEST(SampleLog, EqualArgumentsGiveEqualBytes) {
    const std::string image = sample(7, 0, 300);
    EXPECT_NE(sample(8, 0, 300), image);
    EXPECT_NE(sample(7, 1, 300), image);
    EXPECT_NE(sample(7, 0, 300, "2026-11-22"), image);
    // The demo log is the same whatever compiler and library made this program.
    std::ifstream demo(DEMO_LOG, std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(demo), {}), image);
}

TEST(SampleLog, IsValidAndHasEverything) {
    constexpr int kCount = 5000;
    const std::string image = sample(1, 0, kCount, "2026-12-31T23:00:00");
    const DecodedLog log(image);
    ASSERT_EQ(log.size(), std::size_t{kCount});
    EXPECT_THAT(log.findings, IsEmpty());
    EXPECT_THAT(image.size() / kCount, AllOf(Gt(180U), Lt(220U)));

    std::map<std::uint16_t, int> types;
    std::map<std::string_view, int> kinds;
    std::map<std::string_view, int> detectPointTypes;
    std::map<int, int> blockCounts;
    std::map<int, int> years;
    int late = 0;
    for (std::size_t i = 0; i < log.size(); ++i) {
        ++types[log[i].entryType()];
        ++kinds[log[i].iconText()];
        ++detectPointTypes[log[i].detectPointType()];
        ++blockCounts[log[i].blockCount()];
        ++years[log[i].date().year];
        late += i > 0 && log[i].timestamp() < log[i - 1].timestamp() ? 1 : 0;
        EXPECT_THAT(log[i].function(), testing::Not(testing::HasSubstr("(")));
        EXPECT_THAT(log[i].pid(), AllOf(Gt(300U), Lt(30000U)));
        EXPECT_THAT(log[i].tid(), AllOf(Gt(0U), Lt(3000U)));
    }
    for (const zelqFormat::EntryLayout& layout : zelqFormat::kEntryLayouts) {
        EXPECT_TRUE(layout.type == 0 || types[layout.type] > 0) << layout.type;
    }
    EXPECT_GT(kinds["Trace"], kinds["Error"]);
    EXPECT_GT(kinds["Error"], kinds["Message"]);
    EXPECT_GT(kinds["Unknown"], 0);
    EXPECT_EQ(detectPointTypes.size(), 5U);
    EXPECT_EQ(blockCounts.size(), 6U);
    // The types without a date of their own show a plausible one nearly always.
    EXPECT_GT(years[2026], 0);
    EXPECT_GT(years[2026] + years[2027], kCount * 98 / 100);
    EXPECT_THAT(late, AllOf(Gt(kCount / 100), Lt(kCount / 33)));
}

TEST(SampleLog, TakesNoStartThatDoesNotExist) {
    using std::chrono::sys_days;
    EXPECT_EQ(parseSampleTime("2028-02-29T23:59:59"),
              sys_days{std::chrono::year{2028} / 3 / 1} - std::chrono::seconds{1});
    for (const char* text : {"", "2026-02-29", "2026-13-01", "2026-11-00", "2026-11-21T24:00:00",
                             "2026-11-21T08:60:00", "2026-11-21T08:00", "2026-11-21T08:00:00Z",
                             "2026-11-21 08:00:00", "26-11-21", "tomorrow"}) {
        EXPECT_EQ(parseSampleTime(text), std::nullopt) << text;
    }
}

}  // namespace
