#pragma once

namespace CLI {
class App;
}

/// Exit statuses of raslog besides 0.
inline constexpr int kDamaged = 1;   ///< done, but a log was damaged
inline constexpr int kCannotDo = 2;  ///< wrong arguments, or a file that cannot be read or written

// Each adds a subcommand that runs while the command line is parsed. What it throws ends the
// program with its text and kCannotDo; other outcomes go to `exitStatus`, which is 0 before.
void addListCommand(CLI::App& program, int& exitStatus);
void addSampleCommand(CLI::App& program, int& exitStatus);
