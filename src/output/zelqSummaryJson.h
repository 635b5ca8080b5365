#pragma once

#include <string>
#include <vector>

#include "output/zelqShownSummary.h"

/// Summaries as JSON for programs.
namespace zelqSummaryJson {

/// {"logs":[...],"all":{...}} and a line end. `ascii`: escape all characters beyond ASCII.
[[nodiscard]] std::string of(const std::vector<zelqShownSummary>& logs, const zelqShownSummary& all,
                             bool ascii);

}  // namespace zelqSummaryJson
