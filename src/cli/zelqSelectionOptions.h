#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "session/zelqSelection.h"

class zelqLocaleText;

namespace CLI {
class App;
}

/// The options by which commands select records. The same for all commands that have them.
class zelqSelectionOptions {
public:
    /// Adds the options to a command. The object must outlive the parsing of the command line.
    void addTo(CLI::App& command);

    /// What the options say; to be called when they were parsed. Throws std::runtime_error, with
    /// the option and what is wrong with it. `locale`: of the cells that are searched; must outlive
    /// the selection.
    [[nodiscard]] zelqSelection selection(const zelqLocaleText& locale) const;

private:
    using Values = std::vector<std::string>;

    std::optional<std::string> from_;
    std::optional<std::string> to_;
    Values types_;
    std::map<zelqFilterKind, Values> numbers_;
    Values detectPointTypes_;
    Values functions_;
    Values texts_;
    Values bytes_;
    Values expressions_;
    bool ignoreCase_ = false;
    bool invert_ = false;
};
