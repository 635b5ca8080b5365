#include "output/zelqHexDump.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include "log/zelqByteOrder.h"
#include "log/zelqDumpCharacters.h"

namespace {

// Columns of a line. The text columns are 16 characters and two blanks wide.
constexpr std::size_t kHexColumn = 10;
constexpr std::size_t kAsciiColumn = kHexColumn + 49;
constexpr std::size_t kEbcdicColumn = kAsciiColumn + 18;
static_assert(kEbcdicColumn + 18 == zelqDumpBlock::kLineSize);

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

/// The two digits of every byte.
constexpr std::array<std::array<char, 2>, 256> makeHexTable() {
    std::array<std::array<char, 2>, 256> table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        table[byte] = {kHexDigits[byte >> 4], kHexDigits[byte & 0xF]};
    }
    return table;
}

constexpr auto kHex = makeHexTable();

std::uint32_t reverseBytes(std::uint32_t value) {
    std::array<std::byte, 4> bytes{};
    zelqByteOrder::storeBig32(bytes.data(), value);
    return zelqByteOrder::loadLittle32(bytes.data());
}

}  // namespace

void zelqDumpBlock::writeLine(std::size_t number, std::span<char, kLineSize> line) const noexcept {
    std::memset(line.data(), ' ', line.size());
    const auto start = static_cast<std::uint32_t>(address_ - offset() + kBytesPerLine * number);
    for (std::size_t digit = 0; digit < 8; ++digit) {
        line[digit] = kHexDigits[(start >> (28 - 4 * digit)) & 0xF];
    }
    char* hex = line.data() + kHexColumn;
    char* ascii = line.data() + kAsciiColumn;
    char* ebcdic = line.data() + kEbcdicColumn;
    const std::size_t before = number == 0 ? offset() : 0;
    for (std::size_t i = 0; i < before; ++i) {
        hex[0] = hex[1] = '.';
        hex += 3;
        *ascii++ = '.';
        *ebcdic++ = '.';
    }
    const std::size_t from = number == 0 ? 0 : number * kBytesPerLine - offset();
    const std::size_t count = std::min(kBytesPerLine - before, data_.size() - from);
    for (const std::byte value : data_.subspan(from, count)) {
        const auto byte = std::to_integer<std::size_t>(value);
        std::memcpy(hex, kHex[byte].data(), 2);
        hex += 3;
        *ascii++ = zelqDumpCharacters::kAscii[byte];
        *ebcdic++ = zelqDumpCharacters::kEbcdic[byte];
    }
}

zelqDumpBlock zelqBlockChain::next() noexcept {
    const zelqExpansionBlock block = blocks_.next();
    return {reversed_ ? reverseBytes(block.address) : block.address, block.data};
}

bool zelqDumpCursor::seek(std::size_t line) noexcept {
    if (line < first_) {
        *this = zelqDumpCursor(start_);
    }
    while (line >= end_ && !rest_.atEnd()) {
        block_ = rest_.next();
        first_ = end_;
        end_ += block_.lineCount() + 1;
    }
    line_ = line;
    return line < end_;
}
