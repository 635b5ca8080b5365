#pragma once

#include <cstdint>
#include <deque>
#include <string>

#include "cli/zelqTextOutput.h"
#include "output/zelqRowWriter.h"

/// Writes rows as a command asks for them: the first, the last, or with some rows around each.
class zelqRowOutput {
public:
    struct Options {
        bool header = true;
        std::uint64_t first;       ///< how many selected entries at most
        std::uint64_t tail = 0;    ///< 0 for all, else how many of the last ones
        std::uint64_t around = 0;  ///< rows before and after each that is selected
    };

    /// The others must outlive the object.
    zelqRowOutput(zelqRowWriter& writer, zelqTextOutput& output, const Options& options)
        : writer_(writer), output_(output), options_(options) {}

    /// Takes the next entry. False if none is wanted any more, or nobody reads the output.
    bool take(const zelqWrittenEntry& entry, bool isSelected);
    /// Writes the rows that were kept back.
    void finish();
    /// The number of selected entries.
    [[nodiscard]] std::uint64_t count() const noexcept { return count_; }

private:
    void appendHeader();
    bool takeTail(const zelqWrittenEntry& entry);
    bool takeWithOthers(const zelqWrittenEntry& entry, bool isSelected);

    zelqRowWriter& writer_;
    zelqTextOutput& output_;
    Options options_;
    std::uint64_t count_ = 0;
    bool hasHeader_ = false;
    std::deque<std::string> kept_;  ///< the last rows, before it is known whether they are wanted
    std::uint64_t after_ = 0;       ///< how many rows are wanted yet after one that was selected
    bool hasGap_ = false;           ///< rows were left out since the last one
};
