#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <new>
#include <random>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "output/zelqRecordFormatter.h"
#include "session/zelqRecordMatcher.h"
#include "session/zelqRecordSearch.h"
#include "support/LogImage.h"

namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using Kind = zelqSearchPattern::Kind;

zelqRecordMatcher matcherOf(const zelqSearchPattern::Query& query) {
    static const zelqLocaleText locale("C");
    return {std::make_shared<zelqSearchPattern>(query),
            {.time = [](zelqTime time) { return locale.time(time); },
             .date = [](zelqDate date) { return locale.date(date); }}};
}

std::string lower(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char c) {
        const bool letter = (c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7);
        return static_cast<char>(letter ? c + 32 : c);
    });
    return text;
}

/// What a reader sees of a record: cells, and the two text columns of each block of the dump with
/// the lines joined. Taken from the listing, not from the tables of the search.
std::vector<std::string> seenOf(const zelqBCnrObject& record, const TestEntry& entry) {
    const zelqLocaleText locale("C");
    std::vector<std::string> seen{std::string(record.iconText()),
                                  "+",
                                  locale.time(record.time()),
                                  locale.date(record.date()),
                                  std::to_string(entry.pid),
                                  std::to_string(entry.tid),
                                  std::to_string(record.majorError()),
                                  std::to_string(record.minorError()),
                                  std::to_string(record.detectPoint()),
                                  std::string(record.detectPointType()),
                                  entry.name};
    for (const TestBlock& block : entry.blocks) {
        const auto* const bytes = reinterpret_cast<const std::byte*>(block.data.data());
        const zelqDumpBlock dump(0, {bytes, block.data.size()});
        for (const std::size_t column : {59U, 77U}) {
            std::string& text = seen.emplace_back();
            for (std::size_t line = 0; line < dump.lineCount(); ++line) {
                std::array<char, zelqDumpBlock::kLineSize> characters{};
                dump.writeLine(line, characters);
                text.append(characters.data() + column, 16);
            }
            text.resize(block.data.size());
        }
    }
    return seen;
}

/// Few different bytes, so that much is found: both codes of some letters, blanks and others.
std::string randomData(std::mt19937& random, std::size_t size) {
    constexpr std::string_view kBytes = "aAb.7 \xC1\x81\x82\xF7\x40\x4B\0\xE4"sv;
    std::string data;
    while (data.size() < size) {
        data += kBytes[random() % kBytes.size()];
    }
    return data;
}

TEST(Search, FindsWhatAReaderSees) {
    std::mt19937 random(11);
    std::vector<TestEntry> entries;
    for (int i = 0; i < 300; ++i) {
        TestEntry entry{.type = static_cast<std::uint16_t>(i % 3 == 0 ? 0x15 : 0x13),
                        .hour = static_cast<std::uint8_t>(i % 24),
                        .pid = static_cast<std::uint32_t>(random()),
                        .tid = static_cast<std::uint32_t>(i),
                        .name = "Ab\xC4\xE4" + std::to_string(i % 7)};
        for (auto block = random() % 3; block > 0; --block) {
            entry.blocks.push_back({.data = randomData(random, random() % 60)});
        }
        entries.push_back(entry);
    }
    const DecodedLog log(logImage(entries));
    // As it is, and in lower case.
    std::vector<std::array<std::vector<std::string>, 2>> seen;
    for (std::size_t number = 0; number < entries.size(); ++number) {
        const auto texts = seenOf(log[number], entries[number]);
        seen.push_back({texts, texts});
        std::ranges::transform(texts, seen.back()[1].begin(), lower);
    }
    int hits = 0;
    for (int i = 0; i < 2000; ++i) {
        const auto& texts = seen[random() % seen.size()][random() % 2];
        const std::string& text = texts[random() % texts.size()];
        std::string needle = text.substr(text.empty() ? 0 : random() % text.size(), random() % 20);
        if (needle.empty() || needle.find(' ') != std::string::npos) {
            continue;  // a blank stands for one of EBCDIC, too, which is not seen
        }
        const bool matchCase = random() % 2 == 0;
        zelqRecordMatcher matcher = matcherOf({.text = needle, .matchCase = matchCase});
        needle = matchCase ? needle : lower(needle);
        for (std::size_t number = 0; number < entries.size(); ++number) {
            const auto& places = seen[number][matchCase ? 0 : 1];
            const bool expected = std::ranges::any_of(places, [&needle](const auto& place) {
                return place.find(needle) != std::string::npos;
            });
            ASSERT_EQ(matcher.matches(log[number]), expected) << needle << " in " << number;
            hits += expected ? 1 : 0;
        }
    }
    EXPECT_GT(hits, 10000);
}

TEST(Search, PatternsOfEachKind) {
    const DecodedLog log(logImage({{.hour = 7,
                                    .pid = 770,
                                    .name = "Disk\xE4\xE0(int)",
                                    .blocks = {{.data = "0123456789abcdefGHI\0end"s},
                                               {.data = "\xC4\xC9\xE2\xD2\x40\xC6"s}}}}));
    constexpr Kind kExpression = Kind::RegularExpression;
    for (const auto& [query, found] : std::vector<std::pair<zelqSearchPattern::Query, bool>>{
             {{Kind::Bytes, "66 47"}, true},  // across the lines of the dump
             {{Kind::Bytes, "6647 4849 00"}, true},
             {{Kind::Bytes, "64 C4"}, false},  // across blocks
             {{Kind::Bytes, "00 08"}, false},  // the head of a block
             {{Kind::Text, "FGHI"}, true},
             {{Kind::Text, "FGHI", true}, false},
             {{Kind::Text, "I.end", true}, true},
             {{Kind::Text, "disk f"}, true},        // in EBCDIC, with its blank
             {{Kind::Text, "DISK.F", true}, true},  // as the dump shows it
             {{Kind::Text, "endDISK"}, false},
             {{Kind::Text, "DISK\u00C4"}, true},
             {{Kind::Text, "\u00C4\u00C0"}, true},
             {{Kind::Text, "DISK\u00C4", true}, false},
             {{Kind::Text, "\u4E00"}, false},
             {{Kind::Text, "770"}, true},
             {{Kind::Text, "771"}, false},
             {{Kind::Text, "07:00:00"}, true},
             {{Kind::Text, "11-21-2026"}, true},
             {{kExpression, "^[0-9]+a.*hi[.]end$"}, true},
             {{kExpression, "^77\\d$"}, true},
             {{kExpression, "^disk f$"}, true},
             {{kExpression, "^disk f$", true}, false},
             {{kExpression, "DISK\u00C4"}, true},
             {{kExpression, "d.*D", true}, false},
         }) {
        zelqRecordMatcher matcher = matcherOf(query);
        EXPECT_EQ(matcher.matches(log[0]), found) << query.text;
    }
    for (const auto& [query, what] : std::vector<std::pair<zelqSearchPattern::Query, std::string>>{
             {{Kind::Text, ""}, "nothing"},
             {{Kind::Text, std::string(1001, 'a')}, "1000"},
             {{Kind::Bytes, "C1 4G"}, "character 4: a byte has two digits"},
             {{Kind::Bytes, "C1 G"}, "character 4: this is no hexadecimal digit"},
             {{Kind::Bytes, "C1 4"}, "character 4: a byte has two digits"},
             {{Kind::Bytes, " "}, "nothing"},
             {{kExpression, "a[b"}, "[b"},
             {{kExpression, "ab\u4E00"}, "character 3"},
             {{kExpression, "((a{100}){100}){100}"}, "repetition"}}) {
        const zelqSearchPattern pattern(query);
        EXPECT_THAT(pattern.status().text, testing::HasSubstr(what));
        EXPECT_FALSE(pattern.isInText(query.text));
    }
    EXPECT_THAT(zelqSearchPattern({.text = "aba"}).placesInText("xababaaba"),
                testing::ElementsAre(testing::FieldsAre(1, 3), testing::FieldsAre(6, 3)));
    EXPECT_THAT(zelqSearchPattern({kExpression, "b*"}).placesInText("abbab"),
                testing::ElementsAre(testing::FieldsAre(1, 2), testing::FieldsAre(4, 1)));
}

/// What a search knows while it goes on must not change any more: it is asked at random moments.
class RecordSearchTest : public testing::Test {
protected:
    void expect(const zelqRecordSearch::Step& step, std::size_t hit, bool wrapped, bool complete) {
        ASSERT_TRUE(!complete || !step.undecided);
        if (!step.undecided) {
            ASSERT_EQ(step.place, hits.empty() ? std::nullopt : std::optional(hit));
            ASSERT_EQ(step.wrapped, wrapped && !hits.empty());
        }
    }
    void check(std::size_t place, bool complete) {
        const auto after = std::ranges::upper_bound(hits, place);
        const auto from = std::ranges::lower_bound(hits, place);
        const std::size_t first = hits.empty() ? 0 : hits.front();
        const std::size_t last = hits.empty() ? 0 : hits.back();
        expect(search.next(place), after == hits.end() ? first : *after, after == hits.end(),
               complete);
        expect(search.next(place, true), from == hits.end() ? first : *from, from == hits.end(),
               complete);
        expect(search.previous(place), from == hits.begin() ? last : *(from - 1),
               from == hits.begin(), complete);
        const bool isHit = from != hits.end() && *from == place;
        ASSERT_EQ(search.isMatch(place), complete ? isHit : isHit && search.isMatch(place));
        if (complete) {
            ASSERT_EQ(search.matchesBefore(place), from - hits.begin());
            ASSERT_EQ((search.bits().at(place / 64) >> place % 64 & 1U) != 0, isHit);
        }
    }

    std::mt19937 random{5};
    std::vector<std::size_t> hits;
    zelqRecordSearch search;  ///< the same one for all
};

TEST_F(RecordSearchTest, StepsFromMatchToMatchWhileItGoesOn) {
    for (int round = 0; round < 60; ++round) {
        const std::size_t count =  // also where the search's words and pieces end
            round % 4 == 0 ? std::size_t{64} << round % 3 * 2 : 1 + random() % 700;
        hits.clear();
        for (std::size_t place = 0; place < count; ++place) {
            if (random() % 100 < static_cast<unsigned>(round)) {
                hits.push_back(place);
            }
        }
        std::atomic<std::size_t> allowed = 0;
        search.start({.count = count, .from = random() % count, .makeMatcher = [&] {
                          return [&, looked = std::size_t{0}](std::size_t place) mutable {
                              EXPECT_LT(place, count);
                              while (allowed <= looked) {
                                  std::this_thread::yield();
                              }
                              ++looked;
                              return std::ranges::binary_search(hits, place);
                          };
                      }});
        for (int step = 0; step < 50; ++step) {
            check(random() % count, false);
            allowed = allowed + random() % (count / 20 + 1);
        }
        if (round % 3 == 0) {  // it can be stopped at any moment
            std::jthread release([&] { allowed = count; });
            search.stop();
            EXPECT_FALSE(search.isRunning());
            EXPECT_LE(search.searched(), count);
            continue;
        }
        allowed = count;
        while (search.isRunning()) {
            std::this_thread::yield();
        }
        ASSERT_TRUE(search.isComplete());
        for (std::size_t place = 0; place < count; ++place) {
            check(place, true);
        }
        EXPECT_EQ(search.matches(), hits.size());
        EXPECT_EQ(search.bits().size(), (count + 63) / 64);
    }
    search.clear();
    EXPECT_EQ(search.matches() + search.searched() + search.count(), 0U);
}

TEST_F(RecordSearchTest, SaysWhyItCouldNotGoOn) {
    search.start({.count = 1000, .from = 0, .makeMatcher = [] {
                      return [](std::size_t place) {
                          return place < 999 ? place % 2 == 0 : throw std::bad_alloc();
                      };
                  }});
    while (search.isRunning()) {
        std::this_thread::yield();
    }
    EXPECT_FALSE(search.status().ok() || search.isComplete());
    EXPECT_EQ(search.next(10).place, 12U);
    hits = {7};
    search.start({.count = 8, .from = 0, .makeMatcher = [this] {
                      return [this](std::size_t place) { return place == hits[0]; };
                  }});
    while (search.isRunning()) {
        std::this_thread::yield();
    }
    EXPECT_TRUE(search.status().ok());
    check(0, true);
}

}  // namespace
