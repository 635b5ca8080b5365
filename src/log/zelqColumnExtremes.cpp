#include "log/zelqColumnExtremes.h"

#include <string_view>

namespace {

constexpr std::size_t kNarrow = 2;
constexpr std::size_t kMedium = 4;
constexpr std::size_t kWide = 5;
constexpr std::size_t kWidest = 7;

/// How wide characters are, roughly and in relation to each other, in a proportional font.
constexpr std::array<std::size_t, 256> kWidths = [] {
    std::array<std::size_t, 256> widths{};
    widths.fill(kMedium);
    const auto set = [&widths](std::string_view characters, std::size_t width) {
        for (const char character : characters) {
            widths[static_cast<unsigned char>(character)] = width;
        }
    };
    set(" !'()*,-./:;I[]\\`fijlrt|", kNarrow);
    set("ABCDEGHKNOPQRSTUVXYZ&<>=+~", kWide);
    set("MW@%mw", kWidest);
    return widths;
}();

std::size_t widthOf(const zelqText& name) noexcept {
    std::size_t width = 0;
    for (const std::string_view piece : {name.start, name.end}) {
        for (const char character : piece) {
            width += kWidths[static_cast<unsigned char>(character)];
        }
    }
    return width;
}

bool areEqual(const zelqText& left, const zelqText& right) noexcept {
    const auto at = [](const zelqText& name, std::size_t place) {
        return place < name.start.size() ? name.start[place] : name.end[place - name.start.size()];
    };
    if (left.key() == right.key() || left.size() != right.size()) {
        return left.key() == right.key();
    }
    std::size_t place = 0;
    while (place < left.size() && at(left, place) == at(right, place)) {
        ++place;
    }
    return place == left.size();
}

}  // namespace

void zelqColumnExtremes::noteNumbers(const zelqBCnrObject& record) noexcept {
    pid = std::max(pid, record.pid());
    tid = std::max(tid, record.tid());
    majorError = std::max(majorError, record.majorError());
    minorError = std::max(minorError, record.minorError());
    detectPoint = std::max(detectPoint, record.detectPoint());
    lastDate_ = record.date();
    noteDate(lastDate_);
}

void zelqColumnExtremes::noteDate(zelqDate other) noexcept {
    date = {.year = std::max(date.year, other.year),
            .month = std::max(date.month, other.month),
            .day = std::max(date.day, other.day)};
}

void zelqColumnExtremes::noteName(const zelqText& name) noexcept {
    if (name.size() * kWidest <= widths_.back()) {
        return;
    }
    const std::size_t width = widthOf(name);
    if (width <= widths_.back() || std::ranges::any_of(names_, [&name](const zelqText& other) {
            return areEqual(name, other);
        })) {
        return;
    }
    std::size_t place = kNames - 1;
    for (; place > 0 && widths_[place - 1] < width; --place) {
        widths_[place] = widths_[place - 1];
        names_[place] = names_[place - 1];
    }
    widths_[place] = width;
    names_[place] = name;
}

void zelqColumnExtremes::merge(const zelqColumnExtremes& other) noexcept {
    pid = std::max(pid, other.pid);
    tid = std::max(tid, other.tid);
    majorError = std::max(majorError, other.majorError);
    minorError = std::max(minorError, other.minorError);
    detectPoint = std::max(detectPoint, other.detectPoint);
    noteDate(other.date);
    for (const zelqText& name : other.names_) {
        noteName(name);
    }
}
