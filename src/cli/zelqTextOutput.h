#pragma once

#include <cstddef>
#include <string>

#include "cli/zelqCommandOutput.h"
#include "cli/zelqLogReport.h"

/// Collects what a command writes, and writes it in large pieces.
class zelqTextOutput {
public:
    /// `output` must outlive the object.
    explicit zelqTextOutput(zelqCommandOutput& output) : output_(output) {}

    /// The report's request to read, which writes what was collected before it waits for a log.
    [[nodiscard]] zelqEntryRequest request(zelqLogReport& report);
    /// Where to append. The piece is written by the next flush().
    [[nodiscard]] std::string& text() noexcept { return text_; }
    /// Writes what was collected if that is much. False if it cannot be written, or if nobody reads
    /// it any more. Throws if the output cannot be opened.
    bool flushIfLarge() { return text_.size() < kLarge || flush(); }
    bool flush();
    /// Writes the rest and completes the output, even if nothing was written at all. Throws if the
    /// output fails.
    void complete();

private:
    static constexpr std::size_t kLarge = std::size_t{256} << 10;

    zelqCommandOutput& output_;
    std::string text_;
};
