#pragma once

#include "output/zelqEntryWriter.h"

/// Writes entries as CSV by RFC 4180: a header, the fields of zelqJsonLines in the same order,
/// lines that end with CR LF. A text is quoted where it must be and where it is empty; what an
/// entry has not is a field of no characters, without quotes.
class zelqCsv : public zelqEntryWriter {
public:
    struct Options {
        bool data = false;  ///< with a column for the blocks of expansion data
        /// Put an apostrophe before a text that a spreadsheet would take for a formula.
        bool safe = false;
        /// Escape what could command a terminal, and end lines with LF.
        bool forTerminal = false;
    };

    explicit zelqCsv(const Options& options) : options_(options) {}

    void appendHeader(std::string& text) override;
    void append(const zelqWrittenEntry& entry, std::string& text) override;

private:
    void appendText(std::string_view value, std::string& text) const;
    void appendQuoted(std::string_view value, std::string& text) const;
    void appendLineEnd(std::string& text) const { text += options_.forTerminal ? "\n" : "\r\n"; }
    static void appendTime(zelqTimestamp time, std::string& text);
    static void appendData(const zelqWrittenEntry& entry, std::string& text);

    Options options_;
    std::string givenLog_;
    std::string log_;       ///< the same as a field, with its comma; empty at first
    std::string function_;  ///< used again and again
};
