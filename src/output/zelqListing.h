#pragma once

#include <cstdint>
#include <functional>

#include "log/zelqStatus.h"
#include "output/zelqLocaleText.h"
#include "output/zelqOutputFile.h"
#include "session/zelqLogCollection.h"

namespace zelqListing {

/// What writing came to.
struct Outcome {
    zelqStatus status{};
    std::uint64_t withoutData = 0;  ///< the number of records that are written without their data
};

/// Writes all records of all logs in the collection's order, and notes in each that it was dumped.
/// `progress`, which may be empty, is told how many of how many records are written; it returns
/// false to stop, which is std::errc::operation_canceled. Renders on all processors, a few
/// megabytes of text at a time. Does not complete the output. After a failure some records count as
/// dumped. On a terminal, bytes that could be commands to it are escaped. Throws std::bad_alloc.
///
/// In the place of data that cannot be read, or are not what they were, stands a line that says so.
Outcome write(const zelqLogCollection& records, const zelqLocaleText& locale,
              zelqOutputFile& output,
              const std::function<bool(std::uint64_t done, std::uint64_t total)>& progress = {});

}  // namespace zelqListing
