#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "cli/zelqFindingLines.h"
#include "log/zelqEntryReader.h"
#include "log/zelqFileIdentity.h"

/// Reports what is met while the logs of a command line are read: findings as lines, logs that
/// cannot be read as messages on standard error. Logs are called what the command line calls them.
/// If standard error is one of them, the constructor throws, and no message is written any more.
class zelqLogReport {
public:
    /// `findings`: takes the lines, at most so many a log; it must outlive the object.
    zelqLogReport(std::vector<std::string> names, std::ostream& findings,
                  std::uint64_t mostFindings = zelqFindingLines::kMost);
    /// Findings are counted only.
    explicit zelqLogReport(std::vector<std::string> names);

    [[nodiscard]] const std::vector<std::string>& names() const noexcept { return names_; }
    /// The files that are read, for an output to refuse.
    [[nodiscard]] std::vector<zelqFileIdentity> identities() const;
    /// A request to read the logs that reports to this object, and must not outlive it.
    [[nodiscard]] zelqEntryRequest request();
    /// 0, or kDamaged if a log was damaged, or kCannotDo if one could not be read to its end.
    [[nodiscard]] int exitStatus() const noexcept { return exitStatus_; }

    /// The names, each once: a log that is named twice is merged once.
    [[nodiscard]] static std::vector<std::string> distinct(const std::vector<std::string>& names);

private:
    void refuseStandardError() const;
    void add(std::size_t input, const zelqFinding& finding);
    void end(std::size_t input, const zelqInputOutcome& outcome);

    std::vector<std::string> names_;
    std::ostream* findings_ = nullptr;
    std::uint64_t mostFindings_ = 0;
    std::vector<std::unique_ptr<zelqFindingLines>> lines_;  ///< of logs that have findings
    int exitStatus_ = 0;
};
