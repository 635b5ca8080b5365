#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>

#include "log/zelqFinding.h"
#include "log/zelqLog.h"
#include "log/zelqStatus.h"

struct zelqReadRequest {
    std::string fileName;
    std::uint16_t logSlot = 0;
    zelqFindingSink findings{};  ///< may be empty
    /// Called about every megabyte with the bytes decoded and the bytes of the file; may be empty.
    std::function<void(std::uint64_t done, std::uint64_t total)> progress{};
    std::stop_token stop{};
};

struct zelqReadResult {
    /// The log with the records that could be read, none for a file that cannot be opened or does
    /// not fit into the memory. Null only when the request was stopped.
    std::unique_ptr<zelqLog> log;
    /// Whether the file was read to its end, or to the last entry of it that can be found.
    zelqStatus status{};
    /// The number of findings.
    std::uint64_t findings = 0;
    /// The lengths of the first entry are damaged: the file may be no log at all.
    bool firstEntryIsDamaged = false;

    /// The outcome for a log that does not fit into the memory: none of its records, so that there
    /// is room to go on with.
    void giveUpForMemory();
};

namespace zelqLogReader {

/// Reads a log file and decodes it, on the caller's thread, which calls `findings` and `progress`
/// too. Another thread reads ahead, if one can be started.
///
/// No file makes it fail or hang. Time is proportional to the file's size, whatever the file holds.
/// Memory is at most the file's size, 16 times that for records and texts, and 8 MiB. Reading ends
/// with the last entry that can be found, however much of the file is left. A request to stop is
/// noticed within a few thousand entries. Throws std::bad_alloc only when there is no memory for an
/// empty log or a text.
zelqReadResult read(const zelqReadRequest& request);

}  // namespace zelqLogReader
