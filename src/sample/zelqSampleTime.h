#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace zelqSampleTime {

/// Date and time of a sample entry, without a time zone.
using Time = std::chrono::sys_time<std::chrono::milliseconds>;

/// Reads "2026-11-21" or "2026-11-21T08:00:00", from the year 1000 on. Nothing for any other text,
/// nor for a day or a time that does not exist.
[[nodiscard]] std::optional<Time> parse(const std::string& text);

}  // namespace zelqSampleTime
