#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>

#include "log/zelqFinding.h"
#include "log/zelqLog.h"

struct zelqReadRequest {
    std::string fileName;
    std::uint16_t logSlot = 0;
    zelqFindingSink findings{};  ///< may be empty
    /// Told about every megabyte how much of how much is decoded, in bytes; may be empty.
    std::function<void(std::uint64_t done, std::uint64_t total)> progress{};
    std::stop_token stop{};
};

struct zelqReadResult {
    /// The log with the records that could be read, none for a file that cannot be opened. Null
    /// only when the request was stopped.
    std::unique_ptr<zelqLog> log;
    /// Empty, or why the file was not read to its end.
    std::string problem;
};

/// What comes of a log that does not fit into the memory: none of its records, so that there is
/// room to go on with.
zelqReadResult outOfMemory();

/// Reads a log file and decodes it, on the caller's thread, which calls `findings` and `progress`
/// too. No file makes it fail, hang or use more memory than the file's size and 16 times its size
/// for records and texts.
zelqReadResult readLog(const zelqReadRequest& request);
