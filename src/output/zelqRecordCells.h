#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "log/zelqBCnrObject.h"
#include "output/zelqLocaleText.h"

/// The columns of the table of records, in their fixed order.
enum class zelqColumn : std::uint8_t {
    EntryType,
    ExpandMark,
    Time,
    Date,
    Pid,
    Tid,
    MajorError,
    MinorError,
    DetectPoint,
    DetectPointType,
    Function,
};

inline constexpr std::size_t kColumnCount = 11;

/// What stands in the cells of the table of records, for every window and program that shows or
/// searches it. One object serves one thread.
class zelqRecordCells {
public:
    /// `locale` must outlive the object.
    explicit zelqRecordCells(const zelqLocaleText& locale) noexcept : locale_(locale) {}

    /// All columns, in their order.
    static constexpr std::array<zelqColumn, kColumnCount> kColumns = [] {
        std::array<zelqColumn, kColumnCount> columns{};
        for (std::size_t i = 0; i < columns.size(); ++i) {
            columns[i] = static_cast<zelqColumn>(i);
        }
        return columns;
    }();

    /// The column's heading in English; that of the expansion mark is empty.
    [[nodiscard]] static std::string_view heading(zelqColumn column) noexcept;
    /// What the column is called on a command line: "detect-point".
    [[nodiscard]] static std::string_view name(zelqColumn column) noexcept;
    [[nodiscard]] static std::optional<zelqColumn> named(std::string_view name) noexcept;
    /// True for columns whose cells are numbers, which stand at their right.
    [[nodiscard]] static bool isNumber(zelqColumn column) noexcept {
        return column >= zelqColumn::Pid && column <= zelqColumn::DetectPoint;
    }

    /// Appends a cell's bytes: a time in the character set of the locale, all else in Latin-1.
    void append(const zelqBCnrObject& record, zelqColumn column, std::string& text);
    /// Appends a cell in UTF-8.
    void appendUtf8(const zelqBCnrObject& record, zelqColumn column, std::string& text);

private:
    const std::string& timeText(zelqTime time);
    const std::string& dateText(zelqDate date);

    const zelqLocaleText& locale_;
    // Entries that follow each other tend to share these.
    std::optional<zelqTime> time_;
    std::string timeText_;
    std::optional<zelqTime> utf8Time_;
    std::string utf8TimeText_;
    std::optional<zelqDate> date_;
    std::string dateText_;
};
