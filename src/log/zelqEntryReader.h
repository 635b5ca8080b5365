#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "log/zelqEntry.h"
#include "log/zelqFinding.h"
#include "log/zelqStatus.h"

/// What reading one of several logs came to.
struct zelqInputOutcome {
    zelqStatus status{};         ///< whether it was read to its end, and was the same all the time
    std::uint64_t entries = 0;   ///< that were read
    std::uint64_t findings = 0;  ///< pieces of damage
};

/// Which logs are to be read, and who is told of what is met. The functions may be empty; they are
/// called on the caller's thread, with a log's number in `names`.
struct zelqEntryRequest {
    std::vector<std::string> names;  ///< as zelqLogInput takes them
    std::function<void(std::size_t input, const zelqFinding&)> finding{};
    /// Called when a pipe has nothing more to read for now: what was made of the entries so far can
    /// be shown.
    std::function<void()> waiting{};
    /// Called now and then while logs are read for the first of two times, with how far that is.
    std::function<void(std::size_t input, std::uint64_t offset)> surveying{};
    /// Called once for each log that was begun, when it is done with.
    std::function<void(std::size_t input, const zelqInputOutcome&)> ended{};
};

/// Reads the entries of logs and keeps none of them. A log that cannot be read does not stop the
/// others. A visitor that returns false stops at once. Throws std::bad_alloc.
namespace zelqEntryReader {

/// Log by log, each in the order of its file. Takes less than a megabyte, whatever the logs are.
/// `visit` may be empty.
void readInFileOrder(const zelqEntryRequest& request, const zelqEntryVisit& visit);

/// All logs as one, in the order of zelqBSorter: by time, then by log, then by number. Reads them
/// twice. In memory are 24 bytes for each entry that stands elsewhere than its time asks for, and a
/// buffer for each log; all logs are open at a time. On the disk are copies of logs that cannot be
/// read twice, and what the header buffer held for entries that stand elsewhere and inherit from
/// it. A log that is no longer the same when it is read again is noticed: its outcome says so, and
/// an entry that is not found again is left out.
void readInTimeOrder(const zelqEntryRequest& request, const zelqEntryVisit& visit);

}  // namespace zelqEntryReader
