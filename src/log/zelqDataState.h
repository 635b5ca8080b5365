#pragma once

#include <cstdint>
#include <string_view>

/// Whether the data of a record can be shown.
enum class zelqDataState : std::uint8_t {
    Here,
    Pending,     ///< they are being read
    Changed,     ///< the file holds other bytes now, or has become shorter
    Unreadable,  ///< the system could not read them
};

namespace zelqDataStates {

/// What stands in a listing in the place of data that are not here.
[[nodiscard]] constexpr std::string_view text(zelqDataState state) noexcept {
    switch (state) {
        case zelqDataState::Changed:
            return "The log has changed on disk since it was read.";
        case zelqDataState::Unreadable:
            return "The data cannot be read from the disk.";
        case zelqDataState::Here:
        case zelqDataState::Pending:
            break;
    }
    return {};
}

}  // namespace zelqDataStates
