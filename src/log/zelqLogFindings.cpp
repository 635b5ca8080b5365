#include "log/zelqLogFindings.h"

#include <new>

void zelqLogFindings::add(const zelqFinding& finding) noexcept {
    ++count;
    // Once one is left out the later ones are, too: the kept ones are the first.
    if (kept.size() + 1 == count && kept.size() < kMostKept) {
        try {
            kept.push_back(finding);
        } catch (const std::bad_alloc&) {
            // It is counted.
        }
    }
}
