#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "log/zelqBCnrObject.h"
#include "log/zelqEntryPlace.h"

/// An entry that is to be written, with where it is from.
struct zelqWrittenEntry {
    const zelqBCnrObject& record;
    std::span<const std::byte> data;  ///< of the record
    const zelqEntryPlace& place;
    std::string_view log;  ///< the log's name as the user gave it; any bytes
};

/// Turns entries into text, one after another. One object serves one output.
class zelqEntryWriter {
public:
    zelqEntryWriter() = default;
    virtual ~zelqEntryWriter() = default;
    zelqEntryWriter(const zelqEntryWriter&) = delete;
    zelqEntryWriter& operator=(const zelqEntryWriter&) = delete;

    /// Appends what stands before the first entry, if anything does. To be called once at most.
    virtual void appendHeader(std::string& /*text*/) {}
    /// Appends one entry with its line end.
    virtual void append(const zelqWrittenEntry& entry, std::string& text) = 0;
};
