#include "output/zelqIsoTime.h"

#include <array>
#include <chrono>
#include <cstdint>

namespace {

std::chrono::year_month_day dayOf(zelqDate date) noexcept {
    return std::chrono::year(date.year) / date.month / date.day;
}

void writeTwoDigits(char* to, std::uint32_t value) {
    to[0] = static_cast<char>('0' + value / 10);
    to[1] = static_cast<char>('0' + value % 10);
}

void appendTime(zelqDate date, zelqTime time, std::string& text) {
    std::array<char, 19> written{"0000-00-00T00:00:0"};
    writeTwoDigits(&written[0], date.year / 100U);
    writeTwoDigits(&written[2], date.year % 100U);
    writeTwoDigits(&written[5], date.month);
    writeTwoDigits(&written[8], date.day);
    writeTwoDigits(&written[11], time.seconds / 3600);
    writeTwoDigits(&written[14], time.seconds / 60 % 60);
    writeTwoDigits(&written[17], time.seconds % 60);
    text.append(written.data(), written.size());
}

}  // namespace

bool zelqIsoTime::hasDate(zelqTimestamp time) noexcept {
    constexpr int kLastYear = 9999;
    const zelqDate date = time.date();
    return date.year >= 1 && date.year <= kLastYear && dayOf(date).ok();
}

void zelqIsoTime::append(zelqTimestamp time, std::string& text) {
    appendTime(time.date(), time.time(), text);
}

std::int64_t zelqIsoTime::seconds(zelqTimestamp time) noexcept {
    const std::chrono::sys_days day = dayOf(time.date());
    return std::int64_t{day.time_since_epoch().count()} * zelqTime::kSecondsPerDay +
           time.time().seconds;
}

void zelqIsoTime::append(std::int64_t seconds, std::string& text) {
    const std::chrono::sys_seconds time{std::chrono::seconds(seconds)};
    const auto midnight = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day day(midnight);
    appendTime({.year = static_cast<std::uint16_t>(int{day.year()}),
                .month = static_cast<std::uint8_t>(unsigned{day.month()}),
                .day = static_cast<std::uint8_t>(unsigned{day.day()})},
               {.seconds = static_cast<std::uint32_t>((time - midnight).count())}, text);
}
