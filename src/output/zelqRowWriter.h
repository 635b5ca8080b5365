#pragma once

#include <cstddef>
#include <vector>

#include "output/zelqEntryWriter.h"
#include "output/zelqRecordCells.h"

/// Writes entries as rows of text, aligned and in UTF-8. Widths are those that values have at most,
/// so that rows can be written as they come and stand below each other whatever logs they are from;
/// a cell that is wider still moves what follows it in its row. Control characters are escaped: an
/// entry is one line always, and commands no terminal.
class zelqRowWriter : public zelqEntryWriter {
public:
    struct Options {
        std::vector<zelqColumn> columns{zelqRecordCells::kColumns.begin(),
                                        zelqRecordCells::kColumns.end()};
        bool withPlace = false;    ///< log, number of the entry and its offset come first
        std::size_t logWidth = 0;  ///< with place: characters that the longest log name has
        bool color = false;        ///< the type in a colour of its own
    };

    /// `locale` must outlive the object.
    zelqRowWriter(const zelqLocaleText& locale, Options options);

    void appendHeader(std::string& text) override;
    void append(const zelqWrittenEntry& entry, std::string& text) override;

private:
    struct Cell {
        std::size_t width;
        bool atRight;
        bool last;
    };

    void appendCells(const zelqWrittenEntry* entry, std::string& text);
    void appendCell(const Cell& cell, std::string& text);
    [[nodiscard]] std::size_t widthOf(zelqColumn column) const;

    Options options_;
    zelqRecordCells cells_;
    std::size_t timeWidth_ = 0;
    std::string value_;  ///< of the cell that is written
};
