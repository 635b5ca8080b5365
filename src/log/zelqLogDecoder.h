#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "log/zelqEntry.h"
#include "log/zelqFinding.h"

/// Turns the bytes of one log file into entries, one after another.
///
/// All entries of a file pass through one header buffer, which is cleared once. A field that a
/// short header leaves out therefore shows what the entry before left there, already converted, and
/// is converted again. Operators of the server know such entries by it, so it must stay.
class zelqLogDecoder {
public:
    /// `log`: its slot, or its number among those that are read. `findings` may be empty.
    zelqLogDecoder(std::size_t log, zelqFindingSink findings);

    /// Starts anew at an entry of a log, as if it were the first one of a file.
    void start(const zelqEntryPlace& place, std::size_t log) noexcept;

    /// Decodes the entry at position(). `bytes` are what is known of the file from there on; the
    /// entry points into them. `complete`: the file ends with them. False, and nothing has changed,
    /// if there is no further entry, or if later bytes could change how it is read: with
    /// zelqFormat::kEntryReach bytes none can.
    bool decode(std::span<std::byte> bytes, bool complete);
    /// What is known of the file ends where reading it failed: the end is no finding.
    void breakOff() noexcept { isBrokenOff_ = true; }

    /// The entry that was decoded last.
    [[nodiscard]] const zelqEntry& entry() const noexcept { return entry_; }

    /// Where the next entry begins in the file.
    [[nodiscard]] std::uint64_t position() const noexcept { return entryStart_; }
    /// The number of entries decoded.
    [[nodiscard]] std::uint64_t count() const noexcept { return entryNumber_; }
    /// The last entry is decoded: nothing that follows it in the file is one.
    [[nodiscard]] bool ended() const noexcept { return ended_; }

private:
    struct Prefix {
        std::size_t entryLength;
        std::size_t headerLength;
        std::uint16_t entryType;

        [[nodiscard]] static Prefix of(std::span<const std::byte> entry) noexcept;
        /// Where the expansion data begin, in the entry. The header length is taken as it stands.
        [[nodiscard]] std::size_t dataOffset() const noexcept {
            return headerLength + zelqFormat::kHeaderOffset;
        }
        /// The bytes that the file has to have from the entry's start on.
        [[nodiscard]] std::size_t needed() const noexcept;
    };

    [[nodiscard]] static bool isWhole(std::span<const std::byte> entry) noexcept;
    void decodeEntry(std::span<std::byte> entry);
    void readHeader(std::span<const std::byte> entry, const Prefix& prefix);
    std::uint16_t countBlocks(std::span<const std::byte> entry, const Prefix& prefix);
    void reportBlock(const Prefix& prefix, std::size_t blockOffset, std::size_t blockLength);
    void endInBlockPrefix(std::span<const std::byte> entry, const Prefix& prefix);
    void checkEnd(std::span<const std::byte> entry, const Prefix& prefix);
    void report(zelqFinding::Kind kind, std::size_t offsetInEntry, std::size_t value = 0,
                std::size_t limit = 0) const;

    zelqFindingSink findings_;
    zelqEntry entry_;
    std::uint64_t entryStart_ = 0;
    std::uint64_t entryNumber_ = 0;
    bool ended_ = false;
    bool isBrokenOff_ = false;
};
