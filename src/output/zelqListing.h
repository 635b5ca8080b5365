#pragma once

#include <cstdint>
#include <functional>

#include "output/zelqLocaleText.h"
#include "output/zelqOutputFile.h"

#include "session/zelqLogCollection.h"

/// Writes all records of all logs in the collection's order, and notes in each that it was dumped.
/// `progress`, which may be empty, is told how many of how many records are written; it returns
/// false to stop. Renders on all processors, a few megabytes of text at a time. False if the
/// output failed or the writing was stopped; then some records count as dumped.
bool writeListing(
    const zelqLogCollection& records, const zelqLocaleText& locale, zelqOutputFile& output,
    const std::function<bool(std::uint64_t done, std::uint64_t total)>& progress = {});
