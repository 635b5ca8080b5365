#include "output/zelqLineSearch.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "log/zelqUtf8.h"

namespace {

using Block = zelqDumpBlock;
using Column = zelqSearchPattern::Column;

constexpr std::size_t kSummaryLines = 2;

/// Where the characters of bytes stand in a line: `count` of them, from the one in place `first`.
zelqLineSearch::Piece pieceOf(std::size_t line, std::size_t first, std::size_t count,
                              Column column) {
    switch (column) {
        case Column::Ascii:
            return {.line = line, .column = Block::kAsciiColumn + first, .size = count};
        case Column::Ebcdic:
            return {.line = line, .column = Block::kEbcdicColumn + first, .size = count};
        case Column::Hexadecimal:
            break;
    }
    return {.line = line, .column = Block::kHexColumn + 3 * first, .size = 3 * count - 1};
}

/// `line`: the block's first one.
zelqLineSearch::Place placeOf(const Block& block, std::size_t line,
                              const zelqSearchPattern::Place& found, Column column) {
    zelqLineSearch::Place place;
    std::size_t at = block.offset() + found.offset;
    const std::size_t end = at + found.size;
    while (at < end) {
        const std::size_t first = at % Block::kBytesPerLine;
        const std::size_t count = std::min(end - at, Block::kBytesPerLine - first);
        place.push_back(pieceOf(line + at / Block::kBytesPerLine, first, count, column));
        at += count;
    }
    return place;
}

}  // namespace

zelqLineSearch::zelqLineSearch(std::shared_ptr<const zelqSearchPattern> pattern,
                               const zelqLocaleText& locale, zelqDataReader data)
    : pattern_(std::move(pattern)),
      formatter_(locale, std::move(data)),
      matchesDigits_(pattern_->canBeMadeOf("0123456789ABCDEFabcdef. ")) {}

/// Calls `visit(line, text)` for the lines and the starts of lines that are searched one by one,
/// until it returns true.
template <typename Visit>
bool zelqLineSearch::visitTexts(const zelqBCnrObject& record, zelqAddressForm form,
                                const Visit& visit) {
    for (std::size_t number = 0; number < kSummaryLines; ++number) {
        const zelqRecordFormatter::Line line = formatter_.line(record, form, number);
        line_.assign(line.before);
        // A character that is no ASCII counts as one, but is not found.
        line_.append(std::ranges::all_of(line.time, [](char c) { return (c & 0x80) == 0; })
                         ? line.time
                         : std::string(zelqUtf8::length(line.time), '\0'));
        line_.append(line.after);
        if (visit(number, std::string_view(line_))) {
            return true;
        }
    }
    if (!matchesDigits_) {
        return false;
    }
    std::size_t number = zelqRecordFormatter::kDumpLine;
    for (zelqBlockChain blocks = formatter_.blocksOf(record, form); !blocks.atEnd();) {
        const Block block = blocks.next();
        for (std::size_t line = 0; line < block.lineCount(); ++line) {
            std::array<char, Block::kLineSize> text;
            block.writeLine(line, text);
            if (visit(number + line, std::string_view(text.data(), Block::kAsciiColumn - 2))) {
                return true;
            }
        }
        number += block.lineCount() + 1;
    }
    return false;
}

bool zelqLineSearch::isIn(const zelqBCnrObject& record, zelqAddressForm form) {
    for (zelqBlockChain blocks = formatter_.blocksOf(record, form); !blocks.atEnd();) {
        const Block block = blocks.next();
        if (!block.data().empty() && pattern_->isInData(block.data())) {
            return true;
        }
    }
    formatter_.forget();
    return pattern_->isForTexts() &&
           visitTexts(record, form, [this](std::size_t /*line*/, std::string_view text) {
               return pattern_->isInText(text);
           });
}

std::vector<zelqLineSearch::Place> zelqLineSearch::placesIn(const zelqBCnrObject& record,
                                                            zelqAddressForm form) {
    std::vector<Place> places;
    formatter_.forget();
    visitTexts(record, form, [&](std::size_t line, std::string_view text) {
        for (const auto& found : pattern_->placesInText(text)) {
            places.push_back({{.line = line, .column = found.offset, .size = found.size}});
        }
        return false;
    });
    std::size_t line = zelqRecordFormatter::kDumpLine;
    for (zelqBlockChain blocks = formatter_.blocksOf(record, form); !blocks.atEnd();) {
        const Block block = blocks.next();
        for (const Column column : {Column::Hexadecimal, Column::Ascii, Column::Ebcdic}) {
            for (const auto& found : pattern_->placesInData(block.data(), column)) {
                places.push_back(placeOf(block, line, found, column));
            }
        }
        line += block.lineCount() + 1;
    }
    std::ranges::sort(places);
    return places;
}
