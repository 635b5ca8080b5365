#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "log/zelqDumpLines.h"

/// Where the data of a record are: in memory, or in the log's file, out of which zelqDataReader
/// reads them. One number of 64 bits. Of data in a file it also holds how many lines their dump
/// has, so that millions of records can be expanded without the file being read again.
class zelqDataPlace {
public:
    /// A file that is longer than this cannot be read on demand.
    static constexpr std::uint64_t kMostOffset = (std::uint64_t{1} << 47) - 1;

    /// Nowhere.
    zelqDataPlace() = default;
    explicit zelqDataPlace(const std::byte* address) noexcept
        : bits_(reinterpret_cast<std::uintptr_t>(address)) {}
    /// `offset`: 0 to kMostOffset.
    zelqDataPlace(std::uint64_t offset, const zelqDumpLines& lines) noexcept
        : bits_(kInFile | offset) {
        const std::int64_t more = std::int64_t{lines.whenReversed} - lines.whenTrue;
        if (lines.whenTrue <= kMostLines && more > -kMoreBias && more < kMoreBias) {
            bits_ |= std::uint64_t{lines.whenTrue} << kLinesShift |
                     static_cast<std::uint64_t>(more + kMoreBias) << kMoreShift;
        }
    }

    [[nodiscard]] bool isInFile() const noexcept { return (bits_ & kInFile) != 0; }
    /// Of data in memory.
    [[nodiscard]] const std::byte* address() const noexcept {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the number was made of this pointer
        return reinterpret_cast<const std::byte*>(static_cast<std::uintptr_t>(bits_));
    }
    /// Of data in a file: the offset in it.
    [[nodiscard]] std::uint64_t offset() const noexcept { return bits_ & kMostOffset; }
    /// Of data in a file: the lines of their dump; nothing if they are too many to be noted here.
    [[nodiscard]] std::optional<zelqDumpLines> lines() const noexcept {
        const auto more = static_cast<std::int64_t>(bits_ >> kMoreShift & (2 * kMoreBias - 1));
        const auto lines = static_cast<std::uint32_t>(bits_ >> kLinesShift & kMostLines);
        if (more == 0) {
            return std::nullopt;
        }
        return zelqDumpLines{.whenReversed = static_cast<std::uint32_t>(lines + more - kMoreBias),
                             .whenTrue = lines};
    }

private:
    // From the top: one bit that no address of a program has; the lines when addresses are shown
    // true; how many more they are when these are reversed, plus a bias, or 0 where both do not fit
    // in; the offset.
    static constexpr std::uint64_t kInFile = std::uint64_t{1} << 63;
    static constexpr unsigned kLinesShift = 53;
    static constexpr std::uint32_t kMostLines = (1U << 10) - 1;
    static constexpr unsigned kMoreShift = 47;
    static constexpr std::int64_t kMoreBias = 32;

    std::uint64_t bits_ = 0;
};
