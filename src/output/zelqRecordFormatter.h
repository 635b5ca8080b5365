#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "log/zelqBCnrObject.h"
#include "output/zelqLocaleText.h"

/// Makes the text of records: two summary lines and the hex dump of the expansion data. Lines are
/// bytes; a function's name stands in them as the log has it. Only reads the records, so that
/// several threads, each with a formatter of its own, can work on the same ones.
class zelqRecordFormatter {
public:
    /// `locale` must outlive the formatter.
    explicit zelqRecordFormatter(const zelqLocaleText& locale) noexcept : locale_(locale) {}

    /// Append the summary lines, without line ends; nothing for entry types that have none.
    void appendTimeLine(const zelqBCnrObject& record, std::string& text);
    void appendDateLine(const zelqBCnrObject& record, std::string& text);

    /// Appends both with their line ends and an empty line.
    void appendSummary(const zelqBCnrObject& record, std::string& text);

    /// Appends all that a listing has of the record, every line with its "\n".
    void appendListing(const zelqBCnrObject& record, zelqAddressForm form, std::string& text);

    /// How many lines the record has in the expanded-data window.
    [[nodiscard]] static std::size_t lineCount(const zelqBCnrObject& record,
                                               zelqAddressForm form) noexcept;
    /// One of these lines, counted from 0, without a line end.
    [[nodiscard]] std::string line(const zelqBCnrObject& record, zelqAddressForm form,
                                   std::size_t number);

private:
    const zelqLocaleText& locale_;
    // Entries that follow each other tend to share these.
    std::optional<zelqTime> time_;
    std::string timeText_;
    std::optional<zelqDate> date_;
    std::string dateText_;
};
