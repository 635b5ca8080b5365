#include <algorithm>
#include <random>
#include <utility>

#include <gtest/gtest.h>

#include "output/zelqLineSearch.h"
#include "support/LogImage.h"

namespace {

using Block = zelqDumpBlock;
using Kind = zelqSearchPattern::Kind;

std::string lower(std::string text) {
    std::ranges::transform(text, text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return text;
}

/// The lines of an expanded record, in lower case; and what a reader sees in one piece: lines of
/// the summary, the addresses and digits of a line, the characters of a block in both columns.
struct Shown {
    Shown(const zelqBCnrObject& record, zelqAddressForm form, const zelqLocaleText& locale) {
        zelqRecordFormatter formatter(locale);
        std::string ascii;
        std::string ebcdic;
        for (std::size_t i = 0; i < zelqRecordFormatter::lineCount(record, form, {}); ++i) {
            const auto line = formatter.line(record, form, i);
            lines.push_back(lower(std::string(line.before).append(line.time).append(line.after)));
            const std::string& text = lines.back();
            if (i < zelqRecordFormatter::kDumpLine) {
                seen.push_back(text);
            } else if (text.size() == Block::kLineSize) {
                seen.push_back(text.substr(0, Block::kAsciiColumn));
                ascii += text.substr(Block::kAsciiColumn, Block::kBytesPerLine);
                ebcdic += text.substr(Block::kEbcdicColumn, Block::kBytesPerLine);
            } else {
                seen.insert(seen.end(), {std::exchange(ascii, {}), std::exchange(ebcdic, {})});
            }
        }
    }
    [[nodiscard]] std::string at(const zelqLineSearch::Place& place) const {
        std::string text;
        for (const auto& [line, column, size] : place) {
            EXPECT_LE(column + size, lines.at(line).size());
            text += lines.at(line).substr(column, size);
        }
        return text;
    }

    std::vector<std::string> lines;
    std::vector<std::string> seen;
};

TEST(LineSearch, FindsInTheLinesWhatAReaderSeesInThem) {
    std::mt19937 random(7);
    std::vector<TestEntry> entries(40);
    for (TestEntry& entry : entries) {
        entry.pid = static_cast<std::uint32_t>(random());
        entry.name = "Open";
        for (auto count = random() % 4; count > 0; --count) {
            TestBlock block{.address = static_cast<std::uint32_t>(random() % 64), .data = {}};
            for (auto size = random() % 70; size > 0; --size) {
                block.data += "aB7\xC1\x82\xF7\xE4\0"[random() % 8];
            }
            entry.blocks.push_back(block);
        }
    }
    const DecodedLog log(logImage(entries));
    const zelqLocaleText locale("C");
    int found = 0;
    for (int i = 0; i < 10000; ++i) {
        const auto form = i % 2 == 0 ? zelqAddressForm::True : zelqAddressForm::Reversed;
        const std::size_t number = random() % log.size();
        const Shown source(log[number], form, locale);
        const std::string& text = source.seen[random() % source.seen.size()];
        const std::string needle =
            text.substr(text.empty() ? 0 : random() % text.size(), 1 + random() % 6);
        if (needle.empty() || needle.find_first_of(". ") != std::string::npos) {
            continue;  // these stand for other bytes, too
        }
        const auto pattern =
            std::make_shared<const zelqSearchPattern>(zelqSearchPattern::Query{.text = needle});
        zelqLineSearch search(pattern, locale, {});
        const zelqBCnrObject& record = log[random() % 2 == 0 ? number : random() % log.size()];
        const Shown shown(record, form, locale);
        const bool expected = std::ranges::any_of(shown.seen, [&needle](const std::string& part) {
            return part.find(needle) != std::string::npos;
        });
        const std::vector<zelqLineSearch::Place> places = search.placesIn(record, form);
        ASSERT_EQ(search.isIn(record, form), expected) << needle;
        ASSERT_EQ(!places.empty(), expected) << needle;
        for (const zelqLineSearch::Place& place : places) {
            ASSERT_EQ(shown.at(place), needle);
        }
        found += expected ? 1 : 0;
    }
    EXPECT_GT(found, 1000);
    // The last digits of a line, by themselves and with what follows in the next one.
    const DecodedLog one(
        logImage({{.blocks = {{.address = 8, .data = "xx"}, {.address = 11, .data = "abcdefg"}}}}));
    const auto placesOf = [&](const zelqSearchPattern::Query& query) {
        const auto pattern = std::make_shared<const zelqSearchPattern>(query);
        return zelqLineSearch(pattern, locale, {}).placesIn(one[0], zelqAddressForm::True);
    };
    const Shown shown(one[0], zelqAddressForm::True, locale);
    for (const auto& [query, text] : std::vector<std::pair<zelqSearchPattern::Query, std::string>>{
             {{.text = "65"}, "65"}, {{.kind = Kind::Bytes, .text = "65 66"}, "6566"}}) {
        const auto places = placesOf(query);
        ASSERT_EQ(places.size(), 1U) << text;
        EXPECT_EQ(shown.at(places[0]), text);
    }
}

}  // namespace
