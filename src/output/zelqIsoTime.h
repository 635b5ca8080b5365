#pragma once

#include <string>

#include "log/zelqTimestamp.h"

/// Times of entries by ISO 8601, without a zone: a log has none.
namespace zelqIsoTime {

/// True for a day of the Gregorian calendar in the years 1 to 9999, which four digits can write.
[[nodiscard]] bool hasDate(zelqTimestamp time) noexcept;

/// Appends "2026-11-21T08:00:00"; a time past midnight is taken modulo a day, as the window shows
/// it. The time must have a date.
void append(zelqTimestamp time, std::string& text);

/// The seconds from the start of 1970-01-01 in the log's own clock. The time must have a date.
[[nodiscard]] std::int64_t seconds(zelqTimestamp time) noexcept;
/// The same the other way.
void append(std::int64_t seconds, std::string& text);

}  // namespace zelqIsoTime
