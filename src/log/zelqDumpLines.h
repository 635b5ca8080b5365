#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "log/zelqByteOrder.h"
#include "log/zelqExpansionBlocks.h"

/// Whether a dump shows the addresses of its blocks as they are or with their bytes in reverse
/// order. The first dump of a record, wherever it goes, shows them reversed and every later one
/// true; readers of old listings expect it.
enum class zelqAddressForm : std::uint8_t { Reversed, True };

/// How many lines the dump of a record's data has in each form of the addresses. A line holds 16
/// bytes, aligned to the address as it is shown; an empty line follows each block.
struct zelqDumpLines {
    static constexpr std::size_t kBytesPerLine = 16;

    std::uint32_t whenReversed = 0;
    std::uint32_t whenTrue = 0;

    [[nodiscard]] std::uint32_t in(zelqAddressForm form) const noexcept {
        return form == zelqAddressForm::Reversed ? whenReversed : whenTrue;
    }

    [[nodiscard]] static std::uint32_t shownAddress(std::uint32_t address,
                                                    zelqAddressForm form) noexcept {
        return form == zelqAddressForm::Reversed ? zelqByteOrder::reversed(address) : address;
    }
    /// Of one block, without the empty line: at least 1, even without data. `address`: as shown.
    [[nodiscard]] static std::size_t ofBlock(std::uint32_t address, std::size_t size) noexcept {
        return std::max<std::size_t>(
            1, (address % kBytesPerLine + size + kBytesPerLine - 1) / kBytesPerLine);
    }
    /// Of all blocks.
    [[nodiscard]] static std::size_t count(std::span<const std::byte> data, std::size_t blockCount,
                                           zelqAddressForm form) noexcept {
        std::size_t lines = 0;
        for (zelqExpansionBlocks blocks(data, blockCount); !blocks.atEnd();) {
            const zelqExpansionBlock block = blocks.next();
            lines += ofBlock(shownAddress(block.address, form), block.data.size()) + 1;
        }
        return lines;
    }
    [[nodiscard]] static zelqDumpLines of(std::span<const std::byte> data,
                                          std::size_t blockCount) noexcept {
        const auto lines = [&](zelqAddressForm form) {
            return static_cast<std::uint32_t>(count(data, blockCount, form));
        };
        return {.whenReversed = lines(zelqAddressForm::Reversed),
                .whenTrue = lines(zelqAddressForm::True)};
    }
};
