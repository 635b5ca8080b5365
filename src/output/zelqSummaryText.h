#pragma once

#include <string>
#include <vector>

#include "output/zelqShownSummary.h"

/// Summaries as text for people, in UTF-8 and 80 columns. Nothing of it can command a terminal.
namespace zelqSummaryText {

/// What is in one log, on one screen.
[[nodiscard]] std::string of(const zelqShownSummary& summary);

/// Several logs side by side, a line for each, and what is in all of them together.
[[nodiscard]] std::string of(const std::vector<zelqShownSummary>& logs,
                             const zelqShownSummary& all);

}  // namespace zelqSummaryText
