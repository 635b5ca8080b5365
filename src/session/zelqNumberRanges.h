#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "log/zelqStatus.h"

/// A set of 32-bit numbers, given as ranges.
class zelqNumberRanges {
public:
    /// Adds the numbers of a text such as "1-10,42,0x80000001": numbers from 0 to 4294967295,
    /// decimal or, after "0x", hexadecimal, and ranges with both their ends. A text that is no such
    /// list gives a failure that names the part that is wrong, and adds nothing.
    [[nodiscard]] zelqStatus add(std::string_view list);

    [[nodiscard]] bool empty() const noexcept { return ranges_.empty(); }
    [[nodiscard]] bool contains(std::uint32_t number) const noexcept;

private:
    struct Range {
        std::uint32_t first;
        std::uint32_t last;
    };

    std::vector<Range> ranges_;  ///< ascending, without overlaps
};
