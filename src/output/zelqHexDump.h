#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "log/zelqDumpLines.h"
#include "log/zelqExpansionBlocks.h"

/// One block of expansion data, as it is dumped: line after line of 16 bytes, aligned to the
/// address.
class zelqDumpBlock {
public:
    static constexpr std::size_t kLineSize = 95;
    static constexpr std::size_t kBytesPerLine = zelqDumpLines::kBytesPerLine;
    // Columns of a line, where each begins. A byte takes three characters of the first one, and one
    // of the others.
    static constexpr std::size_t kHexColumn = 10;
    static constexpr std::size_t kAsciiColumn = kHexColumn + 49;
    static constexpr std::size_t kEbcdicColumn = kAsciiColumn + 18;
    static_assert(kEbcdicColumn + 18 == kLineSize);

    /// `address`: of the first byte, as the dump shows it.
    zelqDumpBlock(std::uint32_t address, std::span<const std::byte> data) noexcept
        : data_(data), address_(address) {}

    /// At least 1, even without data.
    [[nodiscard]] std::size_t lineCount() const noexcept {
        return zelqDumpLines::ofBlock(address_, data_.size());
    }

    /// Writes one line, counted from 0: the address, the bytes in hex, as ASCII and as EBCDIC.
    void writeLine(std::size_t number, std::span<char, kLineSize> line) const noexcept;

    /// Writes all lines, each with its "\n", and an empty one. `to` has room for linesSize() bytes;
    /// returns that number.
    std::size_t writeLines(char* to) const noexcept;
    [[nodiscard]] std::size_t linesSize() const noexcept {
        return lineCount() * (kLineSize + 1) + 1;
    }

    [[nodiscard]] std::span<const std::byte> data() const noexcept { return data_; }
    /// How many bytes of the first line lie before the block.
    [[nodiscard]] std::size_t offset() const noexcept { return address_ % kBytesPerLine; }

private:
    std::span<const std::byte> data_;
    std::uint32_t address_;
};

/// Goes through the blocks of a record's expansion data, as they are dumped.
class zelqBlockChain {
public:
    zelqBlockChain(std::span<const std::byte> data, std::size_t blockCount,
                   zelqAddressForm form) noexcept
        : blocks_(data, blockCount), form_(form) {}

    [[nodiscard]] bool atEnd() const noexcept { return blocks_.atEnd(); }
    /// The next block; not at the end.
    zelqDumpBlock next() noexcept;

private:
    zelqExpansionBlocks blocks_;
    zelqAddressForm form_;
};

/// Finds the lines of a dump by number. An empty line follows each block's lines. Finding a line
/// visits the blocks between it and the last line that was found; finding an earlier one starts
/// again at the first block.
class zelqDumpCursor {
public:
    explicit zelqDumpCursor(const zelqBlockChain& chain) noexcept : start_(chain), rest_(chain) {}

    /// Goes to a line, counted from 0. False if the dump has no such line; end() is then its line
    /// count.
    bool seek(std::size_t line) noexcept;

    /// The block of the line that was found, and the line's number in it, which is the block's line
    /// count for the empty line after it.
    [[nodiscard]] const zelqDumpBlock& block() const noexcept { return block_; }
    [[nodiscard]] std::size_t lineOfBlock() const noexcept { return line_ - first_; }
    /// The number of the first line after the block. Once a line was not found, the number of lines
    /// of the dump.
    [[nodiscard]] std::size_t end() const noexcept { return end_; }

private:
    zelqBlockChain start_;
    zelqBlockChain rest_;  ///< the blocks after the current one
    zelqDumpBlock block_{0, {}};
    std::size_t line_ = 0;
    std::size_t first_ = 0;  ///< the block's first line
    std::size_t end_ = 0;    ///< the line after the block's empty line; 0 before the first block
};
