#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <span>
#include <string>

#include "log/zelqFileIdentity.h"
#include "log/zelqFinding.h"
#include "log/zelqStatus.h"

class zelqOutputFile;

namespace CLI {
class App;
}

/// Exit statuses of raslog besides 0.
inline constexpr int kDamaged = 1;   ///< done, but a log was damaged
inline constexpr int kCannotDo = 2;  ///< wrong arguments, or a file that cannot be read or written

// Each adds a subcommand that runs while the command line is parsed. What it throws ends the
// program with its text and kCannotDo; other outcomes go to `exitStatus`, which is 0 before.
void addCheckCommand(CLI::App& program, int& exitStatus);
void addListCommand(CLI::App& program, int& exitStatus);
void addSampleCommand(CLI::App& program, int& exitStatus);

/// Writes each finding as a line that begins with the log's name, as soon as it is met, and counts
/// it: of the millions that a log can have none is kept. The arguments must outlive the sink.
zelqFindingSink writeFindings(std::ostream& stream, const std::string& logName,
                              std::uint64_t& count);

/// Opens a file, or standard output for "-", lets `write` write it and completes it. Throws if that
/// fails, or if the file is one of `inputs`; but a reader need not read the output to its end.
void writeOutput(const std::string& name, std::span<const zelqFileIdentity> inputs,
                 const std::function<zelqStatus(zelqOutputFile&)>& write);
