#pragma once

#include <string>
#include <system_error>
#include <utility>

/// How an operation ended: the code is for deciding, the text for showing. A default one is a
/// success.
struct zelqStatus {
    std::error_code code{};
    std::string text{};  ///< what went wrong, without the name of the file; empty after a success

    [[nodiscard]] bool ok() const noexcept { return !code; }
    [[nodiscard]] bool is(std::errc condition) const noexcept { return code == condition; }

    /// A failure whose text is complete.
    [[nodiscard]] static zelqStatus failure(std::errc condition, std::string text) {
        return {.code = std::make_error_code(condition), .text = std::move(text)};
    }
    /// A failure of the system: `what` is followed by the text of `error`, which is an errno.
    [[nodiscard]] static zelqStatus systemFailure(const std::string& what, int error) {
        const std::error_code code(error, std::generic_category());
        return {.code = code, .text = what + ": " + code.message()};
    }
};
