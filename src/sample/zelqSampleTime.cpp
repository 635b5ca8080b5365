#include "sample/zelqSampleTime.h"

#include <cstddef>

namespace {

constexpr std::string_view kDateForm = "0000-00-00";
constexpr std::string_view kDateTimeForm = "0000-00-00T00:00:00";

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// True if `text` has digits where `form` has zeros and equals it everywhere else.
bool matches(std::string_view text, std::string_view form) {
    if (text.size() != form.size()) {
        return false;
    }
    for (std::size_t i = 0; i < form.size(); ++i) {
        if (form[i] == '0' ? !isDigit(text[i]) : text[i] != form[i]) {
            return false;
        }
    }
    return true;
}

unsigned number(std::string_view digits) {
    unsigned value = 0;
    for (const char digit : digits) {
        value = value * 10 + static_cast<unsigned>(digit - '0');
    }
    return value;
}

}  // namespace

std::optional<zelqSampleTime> parseSampleTime(std::string_view text) {
    const bool hasTime = matches(text, kDateTimeForm);
    if (!hasTime && !matches(text, kDateForm)) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date{
        std::chrono::year{static_cast<int>(number(text.substr(0, 4)))},
        std::chrono::month{number(text.substr(5, 2))}, std::chrono::day{number(text.substr(8, 2))}};
    const unsigned hour = hasTime ? number(text.substr(11, 2)) : 0;
    const unsigned minute = hasTime ? number(text.substr(14, 2)) : 0;
    const unsigned second = hasTime ? number(text.substr(17, 2)) : 0;
    if (!date.ok() || hour > 23 || minute > 59 || second > 59) {
        return std::nullopt;
    }
    return std::chrono::sys_days{date} + std::chrono::hours{hour} + std::chrono::minutes{minute} +
           std::chrono::seconds{second};
}
