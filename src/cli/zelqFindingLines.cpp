#include "cli/zelqFindingLines.h"

#include <ostream>

#include "output/zelqTerminalText.h"

zelqFindingLines::zelqFindingLines(std::ostream& stream, const std::string& logName,
                                   std::uint64_t most)
    : stream_(stream), start_(zelqTerminalText::escaped(logName) + ": "), most_(most) {}

void zelqFindingLines::add(const zelqFinding& finding) {
    if (count_++ < most_) {
        stream_ << start_ << finding.text() << '\n';
    }
}

void zelqFindingLines::finish() {
    if (count_ > most_) {
        const std::uint64_t more = count_ - most_;
        stream_ << start_ << more << " more finding" << (more == 1 ? "" : "s") << '\n';
    }
}
