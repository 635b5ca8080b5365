#pragma once

#include <cstdint>
#include <iosfwd>
#include <limits>
#include <string>

#include "log/zelqFinding.h"

/// Writes the findings of one log, each as soon as it is met, as a line that begins with the log's
/// name, and counts them. Of the millions that a log can have none is kept, and only the first ones
/// are written. Nothing of the name can command a terminal.
class zelqFindingLines {
public:
    static constexpr std::uint64_t kMost = 1000;
    static constexpr std::uint64_t kAll = std::numeric_limits<std::uint64_t>::max();

    /// `most`: how many findings are written. The stream must outlive the object.
    zelqFindingLines(std::ostream& stream, const std::string& logName, std::uint64_t most = kMost);

    void add(const zelqFinding& finding);
    /// Writes how many findings were not written, if there are any. To be called once, when the log
    /// is read.
    void finish();

private:
    std::ostream& stream_;
    std::string start_;  ///< of each line
    std::uint64_t most_;
    std::uint64_t count_ = 0;
};
