#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "log/zelqEntryReader.h"
#include "log/zelqEntryStream.h"
#include "log/zelqLogInput.h"
#include "log/zelqStrays.h"
#include "log/zelqTimeSieve.h"

/// Brings the entries of several logs into the order of time; see zelqEntryReader.
///
/// Logs are nearly in order. So each is read again as a stream, in which the entries follow each
/// other but for the strays; the streams and the sorted strays are merged.
class zelqTimeOrder {
public:
    /// Reads all logs for the first time. `request` must outlive the object.
    explicit zelqTimeOrder(const zelqEntryRequest& request);

    /// Reads them again and visits all entries, until the visitor returns false. To be called once.
    void visit(const zelqEntryVisit& visit);

private:
    struct Log {
        explicit Log(const std::string& name) : input(name, {.again = true}) {}

        zelqLogInput input;
        zelqInputOutcome outcome;
        zelqTimeSieve sieve;       ///< of the first reading
        zelqTimeSieve sieveAgain;  ///< of the second
        std::unique_ptr<zelqEntryStream> stream;
    };

    void survey(Log& log, std::size_t number);
    void advance(std::size_t number);
    [[nodiscard]] bool visitAll(const zelqEntryVisit& visit);
    [[nodiscard]] const zelqEntry* fetchStray(std::size_t index);
    static void fail(Log& log, const zelqStatus& status);

    const zelqEntryRequest& request_;
    std::vector<std::unique_ptr<Log>> logs_;
    zelqStrays strays_;
    /// The next entry of each stream, as a heap with the first one on top.
    std::vector<zelqEntryRank> next_;
};
