#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "log/zelqEntry.h"
#include "log/zelqLogDecoder.h"
#include "log/zelqMemory.h"
#include "log/zelqSpool.h"

class zelqLogInput;

/// The order of entries from several logs: by time, then by log, then by number.
struct zelqEntryRank {
    std::uint64_t key;     ///< of zelqTimestamp
    std::uint64_t number;  ///< of the log and, in its lower 40 bits, of the entry in it

    // NOLINTNEXTLINE(clang-diagnostic-zero-as-null-pointer-constant): clang's own code
    friend auto operator<=>(const zelqEntryRank&, const zelqEntryRank&) = default;

    [[nodiscard]] static zelqEntryRank of(const zelqEntry& entry) noexcept {
        return {.key = entry.timestamp().key(),
                .number = std::uint64_t{entry.input} << kNumberBits | entry.place.number};
    }
    [[nodiscard]] std::size_t input() const noexcept { return number >> kNumberBits; }
    [[nodiscard]] std::uint64_t entryNumber() const noexcept {
        return number & ((std::uint64_t{1} << kNumberBits) - 1);
    }

private:
    static constexpr unsigned kNumberBits = 40;
};

/// Entries that are to be read again out of the order of their files. Takes 24 bytes of memory for
/// each. One that inherits from the entries before it is put aside on the disk with what it
/// inherits.
class zelqStrays {
public:
    zelqStrays() = default;

    /// Throws std::bad_alloc.
    void add(const zelqEntry& entry);
    /// To be called when all are added.
    void sort();

    [[nodiscard]] std::size_t size() const noexcept { return size_; }
    [[nodiscard]] const zelqEntryRank& rank(std::size_t index) const noexcept {
        return strays()[index].rank;
    }
    /// Reads an entry again out of its log. Null if it is not what it was, or cannot be read.
    [[nodiscard]] const zelqEntry* fetch(std::size_t index, zelqLogInput& input);
    /// Whether what was put aside could be written and read.
    [[nodiscard]] const zelqStatus& status() const noexcept { return inherited_.status(); }

private:
    struct Stray {
        zelqEntryRank rank;
        std::uint64_t place;  ///< see the functions below
    };
    static_assert(sizeof(Stray) == 24);

    /// What is put aside of an entry that inherits.
    struct Inherited {
        zelqEntryPlace place;
        zelqEntryHeader header;
        std::uint16_t headerEnd;
        std::uint16_t blockCount;
        std::uint16_t dataLength;
        bool hasData;
    };

    [[nodiscard]] Stray* strays() const noexcept { return reinterpret_cast<Stray*>(strays_.get()); }
    const zelqEntry* fetchInherited(const Stray& stray, zelqLogInput& input);
    const zelqEntry* fetchAlone(const Stray& stray, zelqLogInput& input);
    std::span<std::byte> read(zelqLogInput& input, std::uint64_t offset, std::size_t size);

    /// Grown by realloc(), which moves the pages of so large a piece instead of copying them.
    zelqMemory strays_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
    zelqSpool inherited_;
    zelqMemory buffer_;
    zelqEntry entry_;
    zelqLogDecoder decoder_{0, {}};
};
