#include "output/zelqHexDump.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include "log/zelqDumpCharacters.h"

namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

/// The two digits of every byte, and two blanks: copying four characters takes one step, and two
/// of them belong to the next byte anyway.
constexpr std::array<std::array<char, 4>, 256> makeHexTable() {
    std::array<std::array<char, 4>, 256> table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        table[byte] = {kHexDigits[byte >> 4], kHexDigits[byte & 0xF], ' ', ' '};
    }
    return table;
}

constexpr auto kHex = makeHexTable();

void writeAddress(std::uint32_t address, char* to) {
    for (unsigned shift = 32; shift > 0; to += 2) {
        shift -= 8;
        std::memcpy(to, kHex[address >> shift & 0xFF].data(), 2);
    }
}

/// Writes bytes into the columns of a line, from the column `first` on.
inline void writeBytes(const std::byte* bytes, std::size_t first, std::size_t count, char* line) {
    char* const hex = line + zelqDumpBlock::kHexColumn + 3 * first;
    char* const ascii = line + zelqDumpBlock::kAsciiColumn + first;
    char* const ebcdic = line + zelqDumpBlock::kEbcdicColumn + first;
    for (std::size_t i = 0; i < count; ++i) {
        const auto byte = std::to_integer<std::size_t>(bytes[i]);
        std::memcpy(hex + 3 * i, kHex[byte].data(), 4);
        ascii[i] = zelqDumpCharacters::kAscii[byte];
        ebcdic[i] = zelqDumpCharacters::kEbcdic[byte];
    }
}

}  // namespace

void zelqDumpBlock::writeLine(std::size_t number, std::span<char, kLineSize> line) const noexcept {
    const auto start = static_cast<std::uint32_t>(address_ - offset() + kBytesPerLine * number);
    const std::size_t before = number == 0 ? offset() : 0;
    const std::size_t from = number == 0 ? 0 : number * kBytesPerLine - offset();
    const auto bytes = data_.subspan(from, std::min(kBytesPerLine - before, data_.size() - from));
    std::memset(line.data(), ' ', line.size());
    writeAddress(start, line.data());
    if (bytes.size() == kBytesPerLine) {
        writeBytes(bytes.data(), 0, kBytesPerLine, line.data());  // a loop without a count
        return;
    }
    for (std::size_t i = 0; i < before; ++i) {
        line[kHexColumn + 3 * i] = line[kHexColumn + 3 * i + 1] = '.';
        line[kAsciiColumn + i] = line[kEbcdicColumn + i] = '.';
    }
    writeBytes(bytes.data(), before, bytes.size(), line.data());
}

std::size_t zelqDumpBlock::writeLines(char* to) const noexcept {
    const std::size_t count = lineCount();
    for (std::size_t number = 0; number < count; ++number) {
        writeLine(number, std::span<char, kLineSize>(to, kLineSize));
        to[kLineSize] = '\n';
        to += kLineSize + 1;
    }
    *to = '\n';
    return count * (kLineSize + 1) + 1;
}

zelqDumpBlock zelqBlockChain::next() noexcept {
    const zelqExpansionBlock block = blocks_.next();
    return {zelqDumpLines::shownAddress(block.address, form_), block.data};
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
