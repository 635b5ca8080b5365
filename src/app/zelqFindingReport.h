#pragma once

#include <cstdint>
#include <string>

#include "log/zelqFinding.h"
#include "log/zelqStatus.h"

/// Writes what the reader meets in one log to the logging category "zelq.log". Any thread.
class zelqFindingReport {
public:
    explicit zelqFindingReport(std::string fileName);

    void add(const zelqFinding& finding);
    /// To be called when the reading has ended.
    void finish(const zelqStatus& status) const;

    /// Writes what became of a file other than a log that is read.
    static void write(const std::string& fileName, const std::string& text);

private:
    std::string fileName_;
    std::uint64_t count_ = 0;
};
