#include "ui/zelqRecordColumns.h"

#include <array>
#include <string>
#include <string_view>

namespace {

constexpr Qt::Alignment kLeft = Qt::AlignLeft | Qt::AlignVCenter;
// Also where the window is mirrored, for the ones of numbers are to stand below each other.
constexpr Qt::Alignment kRight = Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter;

// clang-format off
constexpr std::array<zelqColumnStyle, kColumnCount> kStyles{{
    {zelqId::kHeadingEntryType,        0, kLeft},
    {0,                               20, kLeft},
    {zelqId::kHeadingTime,             0, kLeft},
    {zelqId::kHeadingDate,             0, kLeft},
    {zelqId::kHeadingPid,              0, kRight},
    {zelqId::kHeadingTid,              0, kRight},
    {zelqId::kHeadingMajorError,       0, kRight},
    {zelqId::kHeadingMinorError,       0, kRight},
    {zelqId::kHeadingDetectPoint,      0, kRight},
    {zelqId::kHeadingDetectPointType,  0, kLeft},
    {zelqId::kHeadingFunction,         0, kLeft},
}};
// clang-format on

QString latin1(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

/// All times of the day, but for their minutes and seconds, which are digits.
QStringList timesOfDay(const zelqLocaleText& locale) {
    QStringList texts;
    for (std::uint32_t hour = 0; hour < 24; ++hour) {
        texts += QString::fromLocal8Bit(locale.time({.seconds = hour * 3600}));
    }
    return texts;
}

QStringList functionNames(const zelqColumnExtremes& extremes) {
    QStringList texts;
    for (const zelqText& name : extremes.names()) {
        texts += latin1(name.string());
    }
    return texts;
}

QStringList valuesOf(zelqColumn column, const zelqColumnExtremes& extremes,
                     const zelqLocaleText& locale) {
    switch (column) {
        case zelqColumn::EntryType:
            return {"Error", "Trace", "Message", "Unknown"};
        case zelqColumn::ExpandMark:
            return {"+", "-"};
        case zelqColumn::Time:
            return timesOfDay(locale);
        case zelqColumn::Date:
            return {latin1(locale.date(extremes.date))};
        case zelqColumn::Pid:
            return {QString::number(extremes.pid)};
        case zelqColumn::Tid:
            return {QString::number(extremes.tid)};
        case zelqColumn::MajorError:
            return {QString::number(extremes.majorError)};
        case zelqColumn::MinorError:
            return {QString::number(extremes.minorError)};
        case zelqColumn::DetectPoint:
            return {QString::number(extremes.detectPoint)};
        case zelqColumn::DetectPointType:
            return {"Entry", "Exit", "API Call", "DEBUG"};
        case zelqColumn::Function:
            break;
    }
    return functionNames(extremes);
}

}  // namespace

const zelqColumnStyle& zelqRecordColumns::style(zelqColumn column) noexcept {
    return kStyles[static_cast<std::size_t>(column)];
}

QString zelqRecordColumns::text(const zelqBCnrObject& record, zelqColumn column,
                                const zelqLocaleText& locale) {
    std::string bytes;
    zelqRecordCells(locale).append(record, column, bytes);
    return column == zelqColumn::Time ? QString::fromLocal8Bit(bytes) : latin1(bytes);
}

QStringList zelqRecordColumns::widestTexts(zelqColumn column, const zelqColumnExtremes& extremes,
                                           const zelqLocaleText& locale, QChar digit) {
    QStringList texts = valuesOf(column, extremes, locale);
    if (column != zelqColumn::Function) {
        for (QString& text : texts) {
            for (QChar& character : text) {
                character = character.isDigit() ? digit : character;
            }
        }
    }
    return texts;
}
