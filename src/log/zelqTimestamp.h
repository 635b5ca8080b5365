#pragma once

#include <compare>
#include <cstdint>

/// A date as a log has it: three numbers, which need not be a day of any calendar.
struct zelqDate {
    std::uint16_t year = 0;
    std::uint8_t month = 0;
    std::uint8_t day = 0;

    /// The date as one number that sorts as it does, and back.
    [[nodiscard]] constexpr std::uint32_t packed() const noexcept {
        return (std::uint32_t{year} << 16) | (std::uint32_t{month} << 8) | day;
    }
    [[nodiscard]] static constexpr zelqDate unpacked(std::uint32_t number) noexcept {
        return {.year = static_cast<std::uint16_t>(number >> 16),
                .month = static_cast<std::uint8_t>(number >> 8),
                .day = static_cast<std::uint8_t>(number)};
    }

    friend auto operator<=>(const zelqDate&, const zelqDate&) = default;
};

/// Seconds since midnight, 0 to 86399.
struct zelqTime {
    static constexpr std::uint32_t kSecondsPerDay = 86400;

    std::uint32_t seconds = 0;

    friend auto operator<=>(const zelqTime&, const zelqTime&) = default;
};

/// Date and time of an entry as one number that sorts as they do: year, month, day, hour, minute,
/// second and fraction, the most significant first. The bytes are the entry's own, in range or not.
class zelqTimestamp {
public:
    constexpr zelqTimestamp() = default;
    constexpr zelqTimestamp(zelqDate date, std::uint8_t hour, std::uint8_t minute,
                            std::uint8_t second, std::uint8_t fraction)
        : key_((std::uint64_t{date.packed()} << 32) | (std::uint64_t{hour} << 24) |
               (std::uint64_t{minute} << 16) | (std::uint64_t{second} << 8) | fraction) {}

    [[nodiscard]] constexpr std::uint64_t key() const noexcept { return key_; }

    [[nodiscard]] constexpr zelqDate date() const noexcept {
        return zelqDate::unpacked(static_cast<std::uint32_t>(key_ >> 32));
    }

    /// The bytes of the time as the entry has them.
    [[nodiscard]] constexpr std::uint8_t hour() const noexcept { return byteAt(24); }
    [[nodiscard]] constexpr std::uint8_t minute() const noexcept { return byteAt(16); }
    [[nodiscard]] constexpr std::uint8_t second() const noexcept { return byteAt(8); }
    [[nodiscard]] constexpr std::uint8_t fraction() const noexcept { return byteAt(0); }

    /// The time of day; a time past midnight is taken modulo a day.
    [[nodiscard]] constexpr zelqTime time() const noexcept {
        const std::uint32_t seconds = (hour() * 60U + minute()) * 60U + second();
        return {seconds % zelqTime::kSecondsPerDay};
    }

    // NOLINTNEXTLINE(clang-diagnostic-zero-as-null-pointer-constant): clang's own code
    friend constexpr auto operator<=>(zelqTimestamp, zelqTimestamp) = default;

private:
    [[nodiscard]] constexpr std::uint8_t byteAt(unsigned shift) const noexcept {
        return static_cast<std::uint8_t>(key_ >> shift);
    }

    std::uint64_t key_ = 0;
};
