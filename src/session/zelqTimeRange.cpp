#include "session/zelqTimeRange.h"

#include <array>
#include <charconv>
#include <compare>
#include <string>
#include <utility>

namespace {

/// The digits of a form such as "dd:dd" as numbers; each run of "d" is one. Nothing if the text
/// has another form.
template <std::size_t kCount>
std::optional<std::array<unsigned, kCount>> numbersOf(std::string_view text,
                                                      std::string_view form) {
    if (text.size() != form.size()) {
        return std::nullopt;
    }
    std::array<unsigned, kCount> numbers{};
    std::size_t count = 0;
    for (std::size_t at = 0; at < form.size(); ++at) {
        if (form[at] != 'd') {
            if (text[at] != form[at]) {
                return std::nullopt;
            }
            ++count;
        } else if (text[at] < '0' || text[at] > '9') {
            return std::nullopt;
        } else {
            numbers[count] = numbers[count] * 10 + static_cast<unsigned>(text[at] - '0');
        }
    }
    return numbers;
}

/// Days that no calendar has are refused, though records may have them.
std::optional<zelqDate> dateOf(std::string_view text) {
    const auto numbers = numbersOf<3>(text, "dddd-dd-dd");
    if (!numbers) {
        return std::nullopt;
    }
    const auto [year, month, day] = *numbers;
    if (month < 1 || month > 12 || day < 1 || day > 31) {
        return std::nullopt;
    }
    return zelqDate{.year = static_cast<std::uint16_t>(year),
                    .month = static_cast<std::uint8_t>(month),
                    .day = static_cast<std::uint8_t>(day)};
}

/// The first and the last second of a time of day.
std::optional<std::pair<std::uint32_t, std::uint32_t>> secondsOf(std::string_view text) {
    auto numbers = numbersOf<3>(text, "dd:dd:dd");
    const auto shorter = numbersOf<2>(text, "dd:dd");
    if (shorter) {
        numbers = {(*shorter)[0], (*shorter)[1], 0};
    }
    if (!numbers || (*numbers)[0] > 23 || (*numbers)[1] > 59 || (*numbers)[2] > 59) {
        return std::nullopt;
    }
    const std::uint32_t first = ((*numbers)[0] * 60 + (*numbers)[1]) * 60 + (*numbers)[2];
    return std::pair(first, shorter ? first + 59 : first);
}

}  // namespace

std::optional<zelqTimeRange::Moment> zelqTimeRange::momentOf(std::string_view text) {
    constexpr std::size_t kDateSize = 10;
    if (const auto date = dateOf(text)) {
        return Moment{.date = date, .first = 0, .last = zelqTime::kSecondsPerDay - 1};
    }
    std::optional<zelqDate> date;
    if (text.size() > kDateSize && (text[kDateSize] == 'T' || text[kDateSize] == ' ')) {
        date = dateOf(text.substr(0, kDateSize));
        if (!date) {
            return std::nullopt;
        }
        text.remove_prefix(kDateSize + 1);
    }
    const auto seconds = secondsOf(text);
    return seconds ? std::optional(
                         Moment{.date = date, .first = seconds->first, .last = seconds->second})
                   : std::nullopt;
}

zelqStatus zelqTimeRange::set(std::optional<Moment>& end, std::string_view text) {
    const std::optional<Moment> moment = momentOf(text);
    if (!moment) {
        return zelqStatus::failure(std::errc::invalid_argument,
                                   std::string("'").append(text) +
                                       "' is no date (2026-11-21), no time (14:05 or 14:05:30) and "
                                       "not both (2026-11-21T14:05:30)");
    }
    end = moment;
    return {};
}

zelqStatus zelqTimeRange::setFrom(std::string_view text) {
    return set(from_, text);
}

zelqStatus zelqTimeRange::setTo(std::string_view text) {
    return set(to_, text);
}

bool zelqTimeRange::contains(const zelqBCnrObject& record) const noexcept {
    const std::uint32_t seconds = record.time().seconds;
    const auto momentOf = [&record, seconds](std::uint32_t time, const Moment& end) {
        return std::pair(end.date ? record.date().packed() : 0, seconds) <=>
               std::pair(end.date ? end.date->packed() : 0, time);
    };
    const bool notBefore = !from_ || std::is_gteq(momentOf(from_->first, *from_));
    const bool notAfter = !to_ || std::is_lteq(momentOf(to_->last, *to_));
    const bool overMidnight =
        from_ && to_ && !from_->date && !to_->date && to_->last < from_->first;
    return overMidnight ? notBefore || notAfter : notBefore && notAfter;
}
