#pragma once

#include <clocale>
#include <memory>
#include <string>
#include <string_view>

#include <locale.h>  // newlocale; NOLINT(modernize-deprecated-headers)

#include "log/zelqTimestamp.h"

/// The order of a numeric date.
enum class zelqDateOrder { MonthDayYear = 0, DayMonthYear = 1, YearMonthDay = 2 };

/// Dates and times as the user's locale writes them. Dates are their three numbers as they stand,
/// in the locale's order, whether or not a calendar has such a day. Can be used from any thread.
class zelqLocaleText {
public:
    /// `name`: a locale as setlocale() takes it; "" is the one that the environment asks for. One
    /// that is not installed is replaced by "C".
    explicit zelqLocaleText(const char* name = "");

    /// "11-21-2026": two digits each and at least four for the year.
    [[nodiscard]] std::string date(zelqDate date) const;
    /// The same with the last two digits of the year, "11-21-26".
    [[nodiscard]] std::string shortDate(zelqDate date) const;
    /// The locale's time of day with seconds ("%X"), in the locale's character set.
    [[nodiscard]] std::string time(zelqTime time) const;
    /// A text in the locale's character set, as time() gives it, in UTF-8. Bytes that are no
    /// character of that set become U+FFFD.
    [[nodiscard]] std::string utf8(std::string_view text) const;

    /// The order in which a date format, as strftime() takes it, names day, month and year;
    /// month-day-year if it names none of them.
    [[nodiscard]] static zelqDateOrder orderOf(std::string_view format) noexcept;

private:
    [[nodiscard]] std::string dateText(zelqDate date, int year, int yearDigits) const;

    struct FreeLocale {
        using pointer = locale_t;
        void operator()(locale_t locale) const noexcept { ::freelocale(locale); }
    };

    std::unique_ptr<locale_t, FreeLocale> locale_;
    zelqDateOrder dateOrder_;
};
