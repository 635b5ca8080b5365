#include "session/zelqRecordMatcher.h"

#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <string_view>
#include <utility>

#include "log/zelqExpansionBlocks.h"

zelqRecordMatcher::zelqRecordMatcher(std::shared_ptr<const zelqSearchPattern> pattern,
                                     LocaleTexts texts, zelqDataReader data)
    : pattern_(std::move(pattern)),
      texts_(std::move(texts)),
      data_(std::move(data)),
      matchesTexts_(pattern_->isForTexts()),
      matchesNumbers_(pattern_->canBeMadeOf("0123456789")) {
    const auto isInOne = [this](std::initializer_list<std::string_view> ofColumn) {
        return std::ranges::any_of(
            ofColumn, [this](std::string_view text) { return pattern_->isInText(text); });
    };
    matchesTypes_ = isInOne({"Error", "Trace", "Message", "Unknown"});
    matchesDetectPointTypes_ = isInOne({"", "Entry", "Exit", "API Call", "DEBUG"});
    matchesMarks_ = isInOne({"", "+", "-", " "});
    matchesTimes_ = matchesTexts_ && canBeInTimes();
}

/// Each number that a time can show is in one of sixty.
bool zelqRecordMatcher::canBeInTimes() const {
    std::string bytes;
    for (std::uint32_t number = 0; number < 60; ++number) {
        bytes += texts_.time({.seconds = number % 24 * 3600 + number * 60 + number});
    }
    return pattern_->canBeMadeOfUtf8(bytes);
}

void zelqRecordMatcher::fetch(std::span<zelqBCnrObject* const> records,
                              std::size_t place) noexcept {
    constexpr std::size_t kRecordsAhead = 32;
    constexpr std::size_t kDataAhead = 16;
    constexpr std::size_t kCacheLine = 64;
    if (place + kRecordsAhead >= records.size()) {
        return;
    }
    __builtin_prefetch(records[place + kRecordsAhead]);
    const zelqBCnrObject& ahead = *records[place + kDataAhead];
    if (ahead.dataPlace().isInFile()) {
        return;
    }
    const std::size_t size = std::min(ahead.dataSize(), 4 * kCacheLine);
    for (std::size_t at = 0; at < size; at += kCacheLine) {
        __builtin_prefetch(ahead.dataPlace().address() + at);
    }
}

bool zelqRecordMatcher::matches(const zelqBCnrObject& record) {
    if (isInData(record)) {
        return true;
    }
    const auto isIn = [this](bool canBe, std::string_view text) {
        return canBe && pattern_->isInText(text);
    };
    return matchesTexts_ &&
           (isInFunction(record) || isIn(matchesTypes_, record.iconText()) ||
            isIn(matchesDetectPointTypes_, record.detectPointType()) || isInNumbers(record) ||
            isInTimeOrDate(record) || isIn(matchesMarks_, record.expandMarkText()));
}

bool zelqRecordMatcher::isInNumbers(const zelqBCnrObject& record) {
    if (!matchesNumbers_) {
        return false;
    }
    const std::array<std::uint32_t, 5> values{record.pid(), record.tid(), record.majorError(),
                                              record.minorError(), record.detectPoint()};
    for (std::size_t column = 0; column < values.size(); ++column) {
        if (numbers_[column].answer(values[column], [this, value = values[column]] {
                std::array<char, 10> digits{};
                const char* const end = std::to_chars(digits.begin(), digits.end(), value).ptr;
                return pattern_->isInText({digits.data(), end});
            })) {
            return true;
        }
    }
    return false;
}

bool zelqRecordMatcher::isInTimeOrDate(const zelqBCnrObject& record) {
    const zelqTime time = record.time();
    const zelqDate date = record.date();
    return (matchesTimes_ &&
            times_.answer(time.seconds, [&] { return pattern_->isInUtf8(texts_.time(time)); })) ||
           dates_.answer(date.packed(), [&] { return pattern_->isInUtf8(texts_.date(date)); });
}

bool zelqRecordMatcher::isInFunction(const zelqBCnrObject& record) {
    const zelqText name = record.function();
    const auto find = [&] {
        if (name.end.empty()) {
            return pattern_->isInText(name.start);
        }
        name_.clear();
        name.appendTo(name_);
        return pattern_->isInText(name_);
    };
    return name.key() == nullptr
               ? find()
               : names_.answer(reinterpret_cast<std::uintptr_t>(name.key()), find);
}

bool zelqRecordMatcher::isInData(const zelqBCnrObject& record) {
    const zelqRecordData found = data_.dataOf(record);
    if (!found.isHere()) {
        return false;
    }
    zelqExpansionBlocks blocks(found.bytes, record.blockCount());
    while (!blocks.atEnd()) {
        const auto data = blocks.next().data;
        if (!data.empty() && pattern_->isInData(data)) {
            return true;
        }
    }
    return false;
}
