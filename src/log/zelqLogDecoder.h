#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "log/zelqBCnrObject.h"
#include "log/zelqFinding.h"

class zelqLog;

/// Turns the bytes of one log file into records, entry by entry.
///
/// All entries of a file pass through one header buffer, which is cleared once: the fields that a
/// short header leaves out show what the entry before left there, already converted, and are
/// converted again. Operators of the server know such entries by it, so it must stay.
class zelqLogDecoder {
public:
    /// `findings` may be empty.
    zelqLogDecoder(zelqLog& log, std::uint16_t logSlot, zelqFindingSink findings);

    /// Decodes the entries that lie in `file`, the first bytes of the log file, and were not
    /// decoded yet. Entries that later bytes could change are left for the next call unless
    /// `complete`.
    void decode(std::span<std::byte> file, bool complete);

private:
    struct Prefix {
        std::size_t entryLength;
        std::size_t headerLength;
        std::uint16_t entryType;

        /// Where the expansion data begin, in the entry. The header length is taken as it stands.
        [[nodiscard]] std::size_t dataOffset() const {
            return headerLength + zelqFormat::kHeaderOffset;
        }
    };

    void decodeEntry(std::span<std::byte> entry);
    Prefix readPrefix(std::span<const std::byte> entry);
    void readHeader(std::span<const std::byte> entry, const Prefix& prefix);
    void convertHeader(const zelqFormat::EntryLayout& layout);
    void cutName(const zelqFormat::EntryLayout& layout);
    std::uint16_t countBlocks(std::span<const std::byte> entry, const Prefix& prefix);
    void reportBlock(const Prefix& prefix, std::size_t blockOffset, std::size_t blockLength);
    void endInBlockPrefix(std::span<const std::byte> entry, const Prefix& prefix);
    void checkEnd(std::span<const std::byte> entry, const Prefix& prefix);
    void report(zelqFinding::Kind kind, std::size_t offsetInEntry, std::size_t value = 0,
                std::size_t limit = 0) const;

    zelqLog& log_;
    std::uint16_t logSlot_;
    zelqFindingSink findings_;
    zelqHeaderBuffer header_{};
    std::size_t entryStart_ = 0;
    std::uint64_t entryNumber_ = 0;
    bool ended_ = false;
};
