#include "output/zelqLocaleText.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>

#include <iconv.h>
#include <langinfo.h>

namespace {

constexpr auto kFailed = static_cast<std::size_t>(-1);  ///< of iconv()

locale_t openLocale(const char* name) {
    const locale_t asked = ::newlocale(LC_TIME_MASK, name, nullptr);
    return asked != nullptr ? asked : ::newlocale(LC_TIME_MASK, "C", nullptr);
}

}  // namespace

zelqLocaleText::zelqLocaleText(const char* name)
    : locale_(openLocale(name)), dateOrder_(orderOf(::nl_langinfo_l(D_FMT, locale_.get()))) {}

zelqDateOrder zelqLocaleText::orderOf(std::string_view format) noexcept {
    constexpr std::string_view kFlagsAndModifiers = "-_0^#+EO123456789";
    for (std::size_t at = format.find('%'); at != format.npos; at = format.find('%', at + 1)) {
        at = format.find_first_not_of(kFlagsAndModifiers, at + 1);
        if (at == format.npos) {
            break;
        }
        switch (format[at]) {
            case 'd':
            case 'e':
                return zelqDateOrder::DayMonthYear;
            case 'y':
            case 'Y':
            case 'C':
            case 'F':
            case 'G':
                return zelqDateOrder::YearMonthDay;
            case 'm':
            case 'b':
            case 'B':
            case 'h':
            case 'D':
                return zelqDateOrder::MonthDayYear;
            default:  // a day of the week, or a percent sign
                break;
        }
    }
    return zelqDateOrder::MonthDayYear;
}

std::string zelqLocaleText::date(zelqDate date) const {
    return dateText(date, date.year, 4);
}

std::string zelqLocaleText::shortDate(zelqDate date) const {
    return dateText(date, date.year % 100, 2);
}

std::string zelqLocaleText::dateText(zelqDate date, int year, int yearDigits) const {
    std::array<char, 32> text{};
    const int month = date.month;
    const int day = date.day;
    switch (dateOrder_) {
        case zelqDateOrder::MonthDayYear:
            std::snprintf(text.data(), text.size(), "%02d-%02d-%0*d", month, day, yearDigits, year);
            break;
        case zelqDateOrder::DayMonthYear:
            std::snprintf(text.data(), text.size(), "%02d-%02d-%0*d", day, month, yearDigits, year);
            break;
        case zelqDateOrder::YearMonthDay:
            std::snprintf(text.data(), text.size(), "%0*d-%02d-%02d", yearDigits, year, month, day);
            break;
    }
    return text.data();
}

std::string zelqLocaleText::time(zelqTime time) const {
    std::tm clock{};
    clock.tm_hour = static_cast<int>(time.seconds / 3600);
    clock.tm_min = static_cast<int>(time.seconds / 60 % 60);
    clock.tm_sec = static_cast<int>(time.seconds % 60);
    clock.tm_mday = 1;
    std::array<char, 128> text{};
    const std::size_t size = ::strftime_l(text.data(), text.size(), "%X", &clock, locale_.get());
    return {text.data(), size};
}

std::string zelqLocaleText::utf8(std::string_view text) const {
    constexpr std::string_view kNoCharacter = "\xEF\xBF\xBD";
    if (std::ranges::all_of(text,
                            [](char byte) { return static_cast<unsigned char>(byte) < 0x80; })) {
        return std::string(text);
    }
    // That of the texts themselves, which need not be the one that the environment types in.
    const iconv_t conversion =
        ::iconv_open("UTF-8", ::nl_langinfo_l(_NL_TIME_CODESET, locale_.get()));
    std::string input(text);
    std::string result(4 * input.size(), '\0');
    char* from = input.data();
    std::size_t left = input.size();
    char* to = result.data();
    std::size_t room = result.size();
    const bool known = conversion != reinterpret_cast<iconv_t>(-1);  // NOLINT: what POSIX returns
    while (left > 0 && !(known && ::iconv(conversion, &from, &left, &to, &room) != kFailed)) {
        to = std::ranges::copy(kNoCharacter, to).out;
        room -= kNoCharacter.size();
        ++from;
        --left;
    }
    if (known) {
        ::iconv_close(conversion);
    }
    result.resize(result.size() - room);
    return result;
}
