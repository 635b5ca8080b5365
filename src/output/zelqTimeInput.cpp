#include "output/zelqTimeInput.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <utility>

namespace {

constexpr bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

std::vector<std::string_view> numbersOf(std::string_view text) {
    std::vector<std::string_view> numbers;
    while (true) {
        const auto* const first = std::ranges::find_if(text, isDigit);
        if (first == text.end()) {
            return numbers;
        }
        const auto* const end = std::find_if_not(first, text.end(), isDigit);
        numbers.emplace_back(first, end);
        text = {end, text.end()};
    }
}

/// What of a time is neither digits nor what separates them.
std::string wordOf(std::string_view time) {
    std::string word;
    std::ranges::copy_if(time, std::back_inserter(word), [](char character) {
        return !isDigit(character) && std::string_view(":. ").find(character) == std::string::npos;
    });
    return word;
}

std::optional<std::uint32_t> valueOf(std::string_view digits, std::uint32_t most) {
    std::uint32_t value = 0;
    const auto result = std::from_chars(digits.begin(), digits.end(), value);
    return result.ec == std::errc{} && value <= most ? std::optional(value) : std::nullopt;
}

bool equalsIgnoringCase(std::string_view word, std::string_view other) {
    return std::ranges::equal(word, other, [](char a, char b) {
        const auto lower = [](char c) {
            return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
        };
        return lower(a) == lower(b);
    });
}

/// The seconds since midnight of hours, minutes and perhaps seconds.
std::optional<std::uint32_t> secondsOf(const std::vector<std::string_view>& numbers, bool morning,
                                       bool afternoon) {
    auto hour = valueOf(numbers[0], 23);
    const auto minute = valueOf(numbers[1], 59);
    const auto second = numbers.size() == 3 ? valueOf(numbers[2], 59) : 0;
    if (!hour || !minute || !second || ((morning || afternoon) && (*hour == 0 || *hour > 12))) {
        return std::nullopt;
    }
    if (morning || afternoon) {
        hour = *hour % 12 + (afternoon ? 12 : 0);
    }
    return (*hour * 60 + *minute) * 60 + *second;
}

}  // namespace

zelqTimeInput::zelqTimeInput(const zelqLocaleText& locale) {
    const std::string date = locale.date({.year = 2003, .month = 1, .day = 2});
    const auto numbers = numbersOf(date);
    for (std::size_t i = 0; i < order_.size() && i < numbers.size(); ++i) {
        order_[i] = numbers[i].size() > 2 ? Part::Year
                    : numbers[i] == "01"  ? Part::Month
                                          : Part::Day;
    }
    morning_ = wordOf(locale.utf8(locale.time({.seconds = 9 * 3600})));
    afternoon_ = wordOf(locale.utf8(locale.time({.seconds = 21 * 3600})));
    if (morning_ == afternoon_) {  // a clock of 24 hours
        units_ = std::move(morning_);
        morning_.clear();
        afternoon_.clear();
    }
}

bool zelqTimeInput::isMorning(std::string_view word) const {
    return equalsIgnoringCase(word, "am") || (!word.empty() && word == morning_);
}

bool zelqTimeInput::isAfternoon(std::string_view word) const {
    return equalsIgnoringCase(word, "pm") || (!word.empty() && word == afternoon_);
}

std::optional<zelqDate> zelqTimeInput::dateOf(const std::vector<std::string_view>& numbers) const {
    constexpr std::array kYearFirst{Part::Year, Part::Month, Part::Day};
    const auto& order = numbers[0].size() > 2 ? kYearFirst : order_;
    zelqDate date;
    for (std::size_t i = 0; i < order.size(); ++i) {
        const auto value = valueOf(numbers[i], order[i] == Part::Year ? 0xFFFF : 0xFF);
        if (!value) {
            return std::nullopt;
        }
        switch (order[i]) {
            case Part::Year:
                date.year = static_cast<std::uint16_t>(*value);
                break;
            case Part::Month:
                date.month = static_cast<std::uint8_t>(*value);
                break;
            case Part::Day:
                date.day = static_cast<std::uint8_t>(*value);
                break;
        }
    }
    return date;
}

std::optional<zelqTimeInput::Moment> zelqTimeInput::read(std::string_view text) const {
    Moment moment;
    std::vector<std::string_view> time;
    bool morning = false;
    bool afternoon = false;
    while (true) {
        const std::size_t start = text.find_first_not_of(" \t");
        if (start == std::string_view::npos) {
            break;
        }
        text.remove_prefix(start);
        // A "T" stands between the date and the time of ISO 8601.
        const std::size_t end = std::min(text.find_first_of(" \tT"), text.size());
        const std::string_view word = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const auto numbers = numbersOf(word);
        const bool isDate =
            numbers.size() == 3 && (word.find_first_of("-/") != std::string_view::npos ||
                                    std::ranges::any_of(numbers, [](std::string_view digits) {
                                        return digits.size() > 2;
                                    }));
        if (isDate && !moment.date) {
            moment.date = dateOf(numbers);
            if (!moment.date) {
                return std::nullopt;
            }
        } else if (!isDate && (numbers.size() == 2 || numbers.size() == 3) && time.empty()) {
            time = numbers;
            const std::string besides = wordOf(word);
            morning |= isMorning(besides);
            afternoon |= isAfternoon(besides);
            if (!besides.empty() && !morning && !afternoon && besides != units_) {
                return std::nullopt;
            }
        } else if (numbers.empty() && (isMorning(word) || isAfternoon(word))) {
            morning |= isMorning(word);
            afternoon |= isAfternoon(word);
        } else {
            return std::nullopt;
        }
    }
    if (time.empty() || (morning && afternoon)) {
        return std::nullopt;
    }
    const auto seconds = secondsOf(time, morning, afternoon);
    if (!seconds) {
        return std::nullopt;
    }
    moment.time.seconds = *seconds;
    return moment;
}
