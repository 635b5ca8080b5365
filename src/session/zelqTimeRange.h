#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "log/zelqBCnrObject.h"
#include "log/zelqStatus.h"

/// The records from one moment to another, by the date and the time of day that their columns show.
/// Both ends belong to it. A moment is a date, a time or both:
///
/// - "2026-11-21": the whole day.
/// - "2026-11-21T14:05:30", "2026-11-21 14:05": with minutes only, the whole minute.
/// - "14:05", "14:05:30": this time on any day. If both ends are times and the end is earlier, the
///   range goes over midnight.
class zelqTimeRange {
public:
    // A text that is none of these gives a failure and changes nothing.
    [[nodiscard]] zelqStatus setFrom(std::string_view text);
    [[nodiscard]] zelqStatus setTo(std::string_view text);

    [[nodiscard]] bool isEverything() const noexcept { return !from_ && !to_; }
    [[nodiscard]] bool contains(const zelqBCnrObject& record) const noexcept;

private:
    struct Moment {
        std::optional<zelqDate> date;
        // What it spans of the day, in seconds since midnight.
        std::uint32_t first;
        std::uint32_t last;
    };

    [[nodiscard]] static std::optional<Moment> momentOf(std::string_view text);
    static zelqStatus set(std::optional<Moment>& end, std::string_view text);

    std::optional<Moment> from_;
    std::optional<Moment> to_;
};
