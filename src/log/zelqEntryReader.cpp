#include "log/zelqEntryReader.h"

#include "log/zelqEntryStream.h"
#include "log/zelqLogInput.h"
#include "log/zelqTimeOrder.h"

namespace {

/// Reads one log to its end. False if the visitor stopped it.
bool readLog(const zelqEntryRequest& request, std::size_t number, const zelqEntryVisit& visit) {
    zelqInputOutcome outcome;
    zelqLogInput input(request.names[number], {.waiting = request.waiting});
    bool goesOn = true;
    if (input.status().ok()) {
        zelqEntryStream stream(input, number, [&](const zelqFinding& finding) {
            ++outcome.findings;
            if (request.finding) {
                request.finding(number, finding);
            }
        });
        while (goesOn && stream.next()) {
            goesOn = !visit || visit(stream.entry());
        }
        outcome.entries = stream.count();
    }
    outcome.status = input.status();
    if (request.ended) {
        request.ended(number, outcome);
    }
    return goesOn;
}

}  // namespace

void zelqEntryReader::readInFileOrder(const zelqEntryRequest& request,
                                      const zelqEntryVisit& visit) {
    for (std::size_t number = 0; number < request.names.size(); ++number) {
        if (!readLog(request, number, visit)) {
            return;
        }
    }
}

void zelqEntryReader::readInTimeOrder(const zelqEntryRequest& request,
                                      const zelqEntryVisit& visit) {
    zelqTimeOrder(request).visit(visit);
}
