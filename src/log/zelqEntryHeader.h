#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "log/zelqLogFormat.h"

/// The first 256 bytes of an entry's header after the reader's conversions: header length and entry
/// type first, numbers in little-endian order.
using zelqHeaderBuffer = std::array<std::byte, zelqFormat::kHeaderBufferSize>;

/// The header of one entry: what the entry brought itself, and after it what the entries before
/// left in the buffer that all headers of a file pass through. The caller puts the file's bytes
/// into the buffer, with header length and entry type in little-endian order.
struct zelqEntryHeader {
    zelqHeaderBuffer buffer{};
    std::uint16_t cutIndex = 0;  ///< where the name was cut, in the buffer; 0 if it was not
    std::byte cutByte{};         ///< what stood there

    /// Turns the numbers of an entry type to little-endian order and cuts its name.
    void convert(const zelqFormat::EntryLayout& layout) noexcept;

    /// The whole buffer as a file has to hold it for an entry that is to be read as this one was:
    /// header length and entry type are in big-endian order, too.
    [[nodiscard]] zelqHeaderBuffer asInFile() const noexcept;
};
