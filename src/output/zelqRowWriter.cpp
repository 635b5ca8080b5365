#include "output/zelqRowWriter.h"

#include <algorithm>
#include <utility>

#include "log/zelqUtf8.h"
#include "output/zelqDecimal.h"
#include "output/zelqTerminalText.h"

namespace {

constexpr std::string_view kGap = "  ";
constexpr std::string_view kLogHeading = "Log";
constexpr std::string_view kEntryHeading = "Entry";
constexpr std::string_view kOffsetHeading = "Offset";
constexpr std::size_t kNumberWidth = 10;  ///< of 32 bits
constexpr std::size_t kDateWidth = 10;
constexpr std::size_t kOffsetWidth = 12;  ///< of a terabyte
/// A function's name before another column. Names can have 226 characters and hardly ever do.
constexpr std::size_t kFunctionWidth = 32;

constexpr std::string_view kNoColor = "\x1B[0m";

/// By kind: what is unknown, errors, trace, messages.
std::string_view colorOf(const zelqBCnrObject& record) {
    switch (record.icon()) {
        case zelqRecordIcon::Error:
            return "\x1B[31m";
        case zelqRecordIcon::Trace:
            return "\x1B[36m";
        case zelqRecordIcon::Message:
            return "\x1B[32m";
        case zelqRecordIcon::Unknown:
            break;
    }
    return "\x1B[33m";
}

bool isPrintableAscii(char byte) {
    return byte >= ' ' && byte <= '~';
}

}  // namespace

zelqRowWriter::zelqRowWriter(const zelqLocaleText& locale, Options options)
    : options_(std::move(options)), cells_(locale) {
    for (std::uint32_t hour = 0; hour < 24; ++hour) {
        const std::string time = locale.utf8(locale.time({.seconds = hour * 3600}));
        timeWidth_ = std::max(timeWidth_, zelqUtf8::length(time));
    }
}

void zelqRowWriter::appendHeader(std::string& text) {
    appendCells(nullptr, text);
}

void zelqRowWriter::append(const zelqWrittenEntry& entry, std::string& text) {
    appendCells(&entry, text);
}

/// Without an entry, the headings.
void zelqRowWriter::appendCells(const zelqWrittenEntry* entry, std::string& text) {
    if (options_.withPlace) {
        const bool last = options_.columns.empty();
        value_ = entry != nullptr ? entry->log : kLogHeading;
        appendCell({std::max(options_.logWidth, kLogHeading.size()), false, false}, text);
        const auto number = [&](std::string_view heading, std::uint64_t value) {
            value_ = heading;
            if (entry != nullptr) {
                value_.clear();
                zelqDecimal::append(value, value_);
            }
        };
        number(kEntryHeading, entry != nullptr ? entry->place.number : 0);
        appendCell({kNumberWidth, true, false}, text);
        number(kOffsetHeading, entry != nullptr ? entry->place.offset : 0);
        appendCell({kOffsetWidth, true, last}, text);
    }
    for (std::size_t i = 0; i < options_.columns.size(); ++i) {
        const zelqColumn column = options_.columns[i];
        value_.clear();
        if (entry != nullptr) {
            cells_.appendUtf8(entry->record, column, value_);
        } else {
            value_ = zelqRecordCells::heading(column);
        }
        const bool colored = options_.color && entry != nullptr && column == zelqColumn::EntryType;
        if (colored) {
            text += colorOf(entry->record);
        }
        appendCell(
            {widthOf(column), zelqRecordCells::isNumber(column), i + 1 == options_.columns.size()},
            text);
        if (colored) {
            text += kNoColor;
        }
    }
    text += '\n';
}

void zelqRowWriter::appendCell(const Cell& cell, std::string& text) {
    std::size_t length = value_.size();
    if (!std::ranges::all_of(value_, isPrintableAscii)) {
        value_ = zelqTerminalText::escaped(value_);
        length = zelqUtf8::length(value_);
    }
    const std::size_t padding = length < cell.width ? cell.width - length : 0;
    if (cell.atRight) {
        text.append(padding, ' ');
    }
    text += value_;
    if (!cell.last) {
        text.append(cell.atRight ? 0 : padding, ' ');
        text += kGap;
    }
}

std::size_t zelqRowWriter::widthOf(zelqColumn column) const {
    const std::size_t heading = zelqRecordCells::heading(column).size();
    switch (column) {
        case zelqColumn::ExpandMark:
            return 1;
        case zelqColumn::Time:
            return std::max(heading, timeWidth_);
        case zelqColumn::Date:
            return std::max(heading, kDateWidth);
        case zelqColumn::Pid:
        case zelqColumn::Tid:
        case zelqColumn::MajorError:
        case zelqColumn::MinorError:
        case zelqColumn::DetectPoint:
            return std::max(heading, kNumberWidth);
        case zelqColumn::Function:
            return kFunctionWidth;
        case zelqColumn::EntryType:
        case zelqColumn::DetectPointType:
            break;
    }
    return heading;
}
