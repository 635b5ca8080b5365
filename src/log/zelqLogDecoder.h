#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <stop_token>

#include "log/zelqBCnrObject.h"
#include "log/zelqFinding.h"

class zelqLog;

/// Turns the bytes of one log file into records, entry by entry.
///
/// All entries of a file pass through one header buffer, which is cleared once. A field that a
/// short header leaves out therefore shows what the entry before left there, already converted, and
/// is converted again. Operators of the server know such entries by it, so it must stay.
class zelqLogDecoder {
public:
    /// `findings` may be empty.
    zelqLogDecoder(zelqLog& log, std::uint16_t logSlot, zelqFindingSink findings);

    /// Decodes entries, beginning with the one at position(). `bytes` are what is known of the file
    /// from there on; records point into them. `complete`: the file ends with them. Otherwise an
    /// entry that later bytes could change is left for the next call, which is any entry with fewer
    /// than zelqFormat::kEntryReach bytes from its start on. A request to stop is noticed within a
    /// few thousand entries, and leaves the rest for the next call as well.
    void decode(std::span<std::byte> bytes, bool complete, const std::stop_token& stop = {});

    /// Where the next entry begins in the file.
    [[nodiscard]] std::size_t position() const noexcept { return entryStart_; }
    /// The last entry is decoded: nothing that follows it in the file is one.
    [[nodiscard]] bool ended() const noexcept { return ended_; }

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
