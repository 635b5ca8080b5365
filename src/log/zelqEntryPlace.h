#pragma once

#include <cstdint>

/// Where an entry stands in its file.
struct zelqEntryPlace {
    std::uint64_t number = 0;  ///< counted from 0
    std::uint64_t offset = 0;  ///< of its first byte
    /// The bytes that are there, header and all; fewer than the entry says where the file ends.
    std::uint32_t length = 0;
};
