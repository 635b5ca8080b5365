#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "log/zelqDescriptor.h"
#include "log/zelqFileIdentity.h"
#include "log/zelqSpool.h"
#include "log/zelqStatus.h"

/// A log that is read as a stream and not kept: a regular file, a pipe, standard input, a file that
/// the system makes up, or a device. A directory is none. Nobody but the caller's thread may use
/// it.
class zelqLogInput {
public:
    /// The name of standard input.
    static constexpr std::string_view kStandardInput = "-";

    struct Options {
        /// All can be read again: what the system does not give twice is put aside on the disk.
        bool again = false;
        /// Called before bytes of a pipe have to be waited for. May be empty.
        std::function<void()> waiting{};
    };

    /// Opens the log; the name of a pipe waits until somebody writes to it. Of a regular file that
    /// has a size, what is appended later is not read; anything else is read until it ends.
    zelqLogInput(const std::string& name, Options options);

    /// Whether the log could be opened and, so far, read.
    [[nodiscard]] const zelqStatus& status() const noexcept { return status_; }
    /// The number of bytes if it is known beforehand, else 0.
    [[nodiscard]] std::uint64_t size() const noexcept { return size_; }

    /// Reads what comes next and returns its size: 0 at the end and after a failure.
    [[nodiscard]] std::size_t read(std::span<std::byte> to);
    /// Goes back to the start. Only what was read so far will then be read.
    void rewind() noexcept;
    /// After rewind(): reads bytes from an offset on. Fewer than asked for where the log ends, and
    /// none after a failure.
    [[nodiscard]] std::size_t readAt(std::uint64_t offset, std::span<std::byte> to);

    /// The identity of the file that a name leads to, if there is one.
    [[nodiscard]] static std::optional<zelqFileIdentity> identityOf(const std::string& name);

private:
    [[nodiscard]] std::ptrdiff_t readNext(std::span<std::byte> to);
    void fail(const char* what, int error);

    zelqDescriptor file_;
    zelqSpool spool_;
    Options options_;
    bool isSized_ = false;     ///< a regular file that has a size, and is read by offset
    std::uint64_t start_ = 0;  ///< where the log begins in the file
    std::uint64_t size_ = 0;
    std::uint64_t position_ = 0;
    bool isRewound_ = false;
    zelqStatus status_;
};
