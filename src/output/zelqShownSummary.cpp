#include "output/zelqShownSummary.h"

#include <utility>

zelqShownSummary::zelqShownSummary(std::string name, const zelqLogSummary& summary,
                                   std::size_t most)
    : log(std::move(name)),
      entries(summary.entries()),
      bytes(summary.bytes()),
      findings(summary.findings()),
      withoutDate(summary.entriesWithoutDate()),
      hasTimes(!summary.times().empty()),
      functions(summary.functions(), most),
      pids(summary.pids(), most),
      majorErrors(summary.majorErrors(), most),
      minorErrors(summary.minorErrors(), most) {
    for (std::size_t i = 0; i < types.size(); ++i) {
        types[i] = summary.entriesOf(zelqLogSummary::kTypes[i]);
    }
    if (hasTimes) {
        first = summary.times().first();
        last = summary.times().last();
        gap = summary.times().largestGap();
        minute = summary.times().busiestMinute();
        bars = summary.times().bars(kBars);
    }
}
