#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
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
    /// The bytes that are kept of other logs. All together may take half of the memory.
    std::size_t bytesKept = 0;
    /// In place of that, up to which length the bytes of the file are kept, whatever that takes.
    std::optional<std::size_t> mostKept{};
};

struct zelqReadResult {
    /// The log with the records that could be read, none for a file that cannot be opened or whose
    /// records do not fit into the memory. Null only when the request was stopped.
    std::unique_ptr<zelqLog> log;
    /// Whether the file was read to its end, or to the last entry of it that can be found.
    zelqStatus status{};
    /// The number of findings.
    std::uint64_t findings = 0;
    /// The lengths of the first entry are damaged: the file may be no log at all.
    bool firstEntryIsDamaged = false;

    /// The outcome for a log that does not fit into the memory: none of its records, so that there
    /// is room to go on with. Says what all of them would take, judged by those that were read.
    void giveUpForMemory();
};

namespace zelqLogReader {

/// Reads a log file and decodes it, on the caller's thread, which calls `findings` and `progress`
/// too. Another thread reads ahead, if one can be started.
///
/// The bytes of the file are kept if they take no more than their part of the memory. Otherwise, or
/// when memory runs out, the log is one that is read on demand; but not a file of size 0, which the
/// system may have made up.
///
/// No file makes it fail or hang. Time is proportional to the file's size, whatever the file holds.
/// A log is given up as soon as there is not half of the memory that its records will take, judged
/// by those that were read. Memory is at most 16 times the file's size for records and texts, 8
/// MiB, and the file's size if its bytes are kept. Reading ends with the last entry that can be
/// found, however much of the file is left. A request to stop is noticed within a few thousand
/// entries. Throws std::bad_alloc only when there is no memory for an empty log or a text.
zelqReadResult read(const zelqReadRequest& request);

}  // namespace zelqLogReader
