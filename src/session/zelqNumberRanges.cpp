#include "session/zelqNumberRanges.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <utility>

namespace {

std::optional<std::uint32_t> numberOf(std::string_view text) {
    int base = 10;
    if (text.starts_with("0x") || text.starts_with("0X")) {
        text.remove_prefix(2);
        base = 16;
    }
    std::uint32_t number = 0;
    const auto result = std::from_chars(text.begin(), text.end(), number, base);
    return result.ec == std::errc{} && result.ptr == text.end() ? std::optional(number)
                                                                : std::nullopt;
}

}  // namespace

zelqStatus zelqNumberRanges::add(std::string_view list) {
    std::vector<Range> ranges = ranges_;
    while (true) {
        const std::string_view part = list.substr(0, list.find(','));
        const std::size_t dash = part.find('-');
        const auto first = numberOf(part.substr(0, dash));
        const auto last = dash == std::string_view::npos ? first : numberOf(part.substr(dash + 1));
        if (!first || !last || *first > *last) {
            return zelqStatus::failure(
                std::errc::invalid_argument,
                std::string("'").append(part) +
                    "' is no number of 32 bits and no range of them, as 42, 0x2A or 1-10");
        }
        ranges.push_back({.first = *first, .last = *last});
        if (part.size() == list.size()) {
            break;
        }
        list.remove_prefix(part.size() + 1);
    }
    std::ranges::sort(ranges, {}, &Range::first);
    std::vector<Range> merged;
    for (const Range& range : ranges) {
        if (!merged.empty() && range.first <= merged.back().last) {
            merged.back().last = std::max(merged.back().last, range.last);
        } else {
            merged.push_back(range);
        }
    }
    ranges_ = std::move(merged);
    return {};
}

bool zelqNumberRanges::contains(std::uint32_t number) const noexcept {
    const auto after = std::ranges::upper_bound(ranges_, number, {}, &Range::first);
    return after != ranges_.begin() && number <= std::prev(after)->last;
}
