#include "output/zelqRecordCells.h"

#include <algorithm>

#include "log/zelqUtf8.h"
#include "output/zelqDecimal.h"

namespace {

struct Column {
    std::string_view name;
    std::string_view heading;
};

// clang-format off
constexpr std::array<Column, kColumnCount> kTexts{{
    {"type",              "Log Entry Type"},
    {"mark",              ""},
    {"time",              "Time"},
    {"date",              "Date"},
    {"pid",               "PID"},
    {"tid",               "TID"},
    {"major",             "Major Error"},
    {"minor",             "Minor Error"},
    {"detect-point",      "Detect Point"},
    {"detect-point-type", "Detect Point Type"},
    {"function",          "Function"},
}};
// clang-format on

}  // namespace

std::string_view zelqRecordCells::heading(zelqColumn column) noexcept {
    return kTexts[static_cast<std::size_t>(column)].heading;
}

std::string_view zelqRecordCells::name(zelqColumn column) noexcept {
    return kTexts[static_cast<std::size_t>(column)].name;
}

std::optional<zelqColumn> zelqRecordCells::named(std::string_view name) noexcept {
    const auto found = std::ranges::find(kTexts, name, &Column::name);
    return found == kTexts.end()
               ? std::nullopt
               : std::optional(kColumns[static_cast<std::size_t>(found - kTexts.begin())]);
}

const std::string& zelqRecordCells::timeText(zelqTime time) {
    if (time_ != time) {
        timeText_ = locale_.time(time);
        time_ = time;
    }
    return timeText_;
}

const std::string& zelqRecordCells::dateText(zelqDate date) {
    if (date_ != date) {
        dateText_ = locale_.date(date);
        date_ = date;
    }
    return dateText_;
}

void zelqRecordCells::append(const zelqBCnrObject& record, zelqColumn column, std::string& text) {
    switch (column) {
        case zelqColumn::EntryType:
            text += record.iconText();
            break;
        case zelqColumn::ExpandMark:
            text += record.expandMarkText();
            break;
        case zelqColumn::Time:
            text += timeText(record.time());
            break;
        case zelqColumn::Date:
            text += dateText(record.date());
            break;
        case zelqColumn::Pid:
            zelqDecimal::append(record.pid(), text);
            break;
        case zelqColumn::Tid:
            zelqDecimal::append(record.tid(), text);
            break;
        case zelqColumn::MajorError:
            zelqDecimal::append(record.majorError(), text);
            break;
        case zelqColumn::MinorError:
            zelqDecimal::append(record.minorError(), text);
            break;
        case zelqColumn::DetectPoint:
            zelqDecimal::append(record.detectPoint(), text);
            break;
        case zelqColumn::DetectPointType:
            text += record.detectPointType();
            break;
        case zelqColumn::Function:
            record.function().appendTo(text);
            break;
    }
}

void zelqRecordCells::appendUtf8(const zelqBCnrObject& record, zelqColumn column,
                                 std::string& text) {
    if (column == zelqColumn::Function) {
        const zelqText name = record.function();
        zelqUtf8::appendLatin1(name.start, text);
        zelqUtf8::appendLatin1(name.end, text);
    } else if (column == zelqColumn::Time) {
        const zelqTime time = record.time();
        if (utf8Time_ != time) {
            utf8TimeText_ = locale_.utf8(timeText(time));
            utf8Time_ = time;
        }
        text += utf8TimeText_;
    } else {
        append(record, column, text);  // nothing else has bytes outside ASCII
    }
}
