#pragma once

#include <functional>
#include <span>
#include <string>

#include "log/zelqFileIdentity.h"
#include "log/zelqStatus.h"

class zelqOutputFile;

namespace CLI {
class App;
}

/// The commands of raslog, and what they have in common.
namespace zelqCommands {

/// Exit statuses besides 0.
inline constexpr int kDamaged = 1;   ///< done, but a log was damaged
inline constexpr int kNothing = 1;   ///< done, but there was no such entry
inline constexpr int kCannotDo = 2;  ///< wrong arguments, or a file that cannot be read or written

// Each adds a subcommand that runs while the command line is parsed. What it throws ends the
// program with its text and kCannotDo; other outcomes go to `exitStatus`, which is 0 before.
void addCheck(CLI::App& program, int& exitStatus);
void addCompletion(CLI::App& program, int& exitStatus);
void addExport(CLI::App& program, int& exitStatus);
void addExtract(CLI::App& program, int& exitStatus);
void addList(CLI::App& program, int& exitStatus);
void addRows(CLI::App& program, int& exitStatus);
void addSample(CLI::App& program, int& exitStatus);
void addSummary(CLI::App& program, int& exitStatus);

/// Opens a file, or standard output for "-", lets `write` write it and completes it. Throws if that
/// fails, or if the file is one of `inputs`; but a reader need not read the output to its end.
void writeOutput(const std::string& name, std::span<const zelqFileIdentity> inputs,
                 const std::function<zelqStatus(zelqOutputFile&)>& write);

/// Writes a message to standard error, so that nothing in it can command a terminal. Line ends in
/// it stay if it is made of `lines`.
void writeMessage(const std::string& message, bool lines = false);

/// Whether messages would be written into the file that a log's name leads to.
[[nodiscard]] bool messagesGoTo(const std::string& logName);
/// Writes no further messages.
void endMessages();

}  // namespace zelqCommands
