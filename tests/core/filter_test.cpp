#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "output/zelqSearchTexts.h"
#include "session/zelqRecordTest.h"
#include "session/zelqSelection.h"
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

TEST(Filter, AcceptsSmallAndLargeValuesAlike) {
    const std::vector<std::uint32_t> pids{0, 65535, 65536, 4294967295};
    std::vector<TestEntry> entries;
    for (const std::uint32_t pid : pids) {
        entries.push_back({.pid = pid});
    }
    const DecodedLog log(logImage(entries));
    for (unsigned accepted = 0; accepted < 16; ++accepted) {
        zelqValueTest::Choice choice(pids, nullptr);
        choice.accept({(accepted & 1U) != 0, (accepted & 2U) != 0, (accepted & 4U) != 0,
                       (accepted & 8U) != 0});
        const zelqValueTest test(zelqFilterKind::Pid, choice);
        const auto accepts = test.matcher();
        for (std::size_t i = 0; i < pids.size(); ++i) {
            EXPECT_EQ(accepts(log[i]), (accepted >> i & 1U) != 0) << accepted << ' ' << pids[i];
        }
    }
}

/// Each condition as the options of the shell give it, and the records that meet it.
TEST(Selection, AcceptsWhatMeetsAllConditions) {
    const DecodedLog log(logImage(
        {{.type = 0x13, .hour = 8, .pid = 1, .detectPointCode = 1, .name = "Open"},
         {.type = 0x15, .hour = 8, .second = 59, .pid = 10, .name = "Op*n"},
         {.type = 0x13, .date = {2026, 11, 22}, .hour = 24, .pid = 0x80000001},
         {.type = 0x13, .date = {2026, 11, 22}, .hour = 23, .pid = 42, .tid = 7, .name = "x\ny"},
         {.type = 0x0004,
          .pid = 11},  // one of the errors, shown as unknown, its year not converted
         {.type = 0x7777, .date = {2026, 11, 22}, .hour = 8, .name = "nothing"}}));
    static const zelqLocaleText locale("C");
    using Kind = zelqFilterKind;
    using Selection = zelqSelection;
    struct Case {
        std::function<zelqStatus(Selection&)> set;
        std::set<std::size_t> accepted;
    };
    const auto span = [](const char* from, const char* to) {
        return [from, to](Selection& s) {
            const zelqStatus status = *from != '\0' ? s.setFrom(from) : zelqStatus();
            return status.ok() && *to != '\0' ? s.setTo(to) : status;
        };
    };
    const auto numbers = [](Kind kind, const char* list) {
        return [kind, list](Selection& s) { return s.addNumbers(kind, list); };
    };
    const auto type = [](const char* name) {
        return [name](Selection& s) { return s.addType(name); };
    };
    const auto function = [](const char* glob, bool matchCase) {
        return [=](Selection& s) { return s.addFunction(glob, matchCase); };
    };
    const std::vector<Case> cases{
        {span("2026-11-22", ""), {2, 3, 4, 5}},
        {span("", "2026-11-21"), {0, 1}},
        {span("2026-11-21T08:00:01", "2026-11-22 00:00"), {1, 2}},  // 24:00 is 00:00
        {span("08:00", "08:00"), {0, 1, 5}},
        {span("08:00", "08:00:00"), {0, 5}},
        {span("23:00", "08:00:00"), {0, 2, 3, 5}},
        {numbers(Kind::Pid, "1-10,42,0x80000001"), {0, 1, 2, 3}},
        {numbers(Kind::Pid, "5-4294967295,3-9"), {1, 2, 3, 4}},
        {numbers(Kind::Tid, "7"), {3}},
        {type("error"), {0, 2, 3, 4}},
        {type("unknown"), {4, 5}},
        {type("message"), {5}},
        {[](Selection& s) { return s.addDetectPointType("entry"); }, {0}},
        {function("Op?n", true), {0, 1}},
        {function("Op\\*n", true), {1}},
        {function("o[!a-o]*", false), {0, 1}},
        {function("O[", true), {}},
        {function("x*y", true), {3}},
        {[&](Selection& s) {
             EXPECT_TRUE(span("", "08:00")(s).ok() && type("trace")(s).ok());
             return type("unknown")(s);
         },
         {1, 5}},
        {[](Selection& s) {
             s.setInverted(true);
             return s.addPattern({.text = "Open", .matchCase = true}, zelqSearchTexts::of(locale));
         },
         {1, 2, 3, 4, 5}},
    };
    EXPECT_TRUE(Selection().isEverything());
    for (const Case& one : cases) {
        Selection selection;
        ASSERT_TRUE(one.set(selection).ok());
        EXPECT_FALSE(selection.isEverything());
        std::set<std::size_t> accepted;
        for (std::size_t i = 0; i < log.size(); ++i) {
            if (selection.accepts(log[i])) {
                accepted.insert(i);
            }
        }
        EXPECT_EQ(accepted, one.accepted) << &one - cases.data();
    }
    for (const auto& wrong : std::initializer_list<std::function<zelqStatus(Selection&)>>{
             span("2026-13-01", ""), span("8:00", ""), span("", "24:00"), span("2026-11-21T", ""),
             numbers(Kind::Pid, ""), numbers(Kind::Pid, "1,"), numbers(Kind::Pid, "10-1"),
             numbers(Kind::Pid, "4294967296"), numbers(Kind::Pid, "-1"), type("Error"),
             function("[z-a]", true), function("\u03A9*", true)}) {
        Selection selection;
        EXPECT_FALSE(wrong(selection).ok());
        EXPECT_TRUE(selection.isEverything());
    }
}

}  // namespace
