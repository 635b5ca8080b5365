#pragma once

#include <exception>
#include <new>
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
    /// What an exception says.
    [[nodiscard]] static zelqStatus of(const std::exception_ptr& exception) {
        try {
            std::rethrow_exception(exception);
        } catch (const std::bad_alloc&) {
            return failure(std::errc::not_enough_memory, "there is not enough memory");
        } catch (const std::system_error& error) {
            return {.code = error.code(), .text = error.what()};
        } catch (const std::exception& error) {
            return failure(std::errc::state_not_recoverable, error.what());
        }
    }
};
