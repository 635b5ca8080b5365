#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "cli/zelqLogReport.h"
#include "cli/zelqSelectionOptions.h"
#include "log/zelqEntryReader.h"
#include "output/zelqLocaleText.h"

namespace CLI {
class App;
}

/// The arguments of the commands that take entries out of logs: which logs, which of their entries,
/// in which order.
class zelqEntryQuery {
public:
    /// Adds the logs and the options that select entries to a command. The object must outlive the
    /// parsing of the command line.
    void addTo(CLI::App& command);
    /// Adds the order, which is that of time then if no other is asked for, and `-n`.
    void addOrder(CLI::App& command);

    /// The logs, each once.
    [[nodiscard]] std::vector<std::string> logs() const { return zelqLogReport::distinct(logs_); }
    /// How many selected entries are wanted at most.
    [[nodiscard]] std::uint64_t first() const noexcept { return first_; }
    [[nodiscard]] const zelqLocaleText& locale() const noexcept { return locale_; }

    /// Takes an entry and whether it is selected; false ends the reading.
    using Visit = std::function<bool(const zelqEntry& entry, bool isSelected)>;

    struct Reading {
        std::string output{};  ///< what is written meanwhile, as zelqProgress takes it
        bool all = false;      ///< visit also the entries that are not selected
    };
    /// Reads the logs in the order that was asked for and visits the entries that are selected. The
    /// request is that of a zelqLogReport.
    void read(zelqEntryRequest request, const Reading& reading, const Visit& visit) const;
    /// The exit status of a command that took `count` entries: that there was none is a result only
    /// if conditions were given.
    [[nodiscard]] int exitStatus(const zelqLogReport& report, std::uint64_t count) const;

private:
    std::vector<std::string> logs_;
    zelqSelectionOptions options_;
    std::string order_ = "file";
    std::uint64_t first_ = std::numeric_limits<std::uint64_t>::max();
    zelqLocaleText locale_;
};
