#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "log/zelqByteOrder.h"
#include "log/zelqLogFormat.h"

/// One block of expansion data: the address of its first byte, and what is there of its bytes.
struct zelqExpansionBlock {
    std::uint32_t address;
    std::span<const std::byte> data;
};

/// Goes through the blocks of a record's expansion data. Lengths are not trusted: a block that is
/// shorter than its own header has no data, and nothing is read past the end of the expansion data.
class zelqExpansionBlocks {
public:
    zelqExpansionBlocks(std::span<const std::byte> data, std::size_t blockCount) noexcept
        : data_(data), blocksLeft_(blockCount) {}

    [[nodiscard]] bool atEnd() const noexcept { return blocksLeft_ == 0; }
    /// The next block; not at the end.
    zelqExpansionBlock next() noexcept {
        std::array<std::byte, zelqFormat::kBlockHeaderSize>
            header{};  // what is missing counts as 0
        std::copy_n(data_.begin(), std::min(data_.size(), header.size()), header.begin());
        const std::size_t length = zelqByteOrder::loadBig16(header.data());
        const std::size_t end = std::min(length, data_.size());
        const std::size_t from = std::min(header.size(), end);
        const zelqExpansionBlock block{.address = zelqByteOrder::loadBig32(header.data() + 4),
                                       .data = data_.subspan(from, end - from)};
        data_ = data_.subspan(end);
        --blocksLeft_;
        return block;
    }

private:
    std::span<const std::byte> data_;  ///< from the next block on
    std::size_t blocksLeft_;
};
