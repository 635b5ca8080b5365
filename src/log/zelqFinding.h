#pragma once

#include <cstdint>
#include <functional>
#include <string>

/// One piece of damage that the reader met in a log, and what it did about it.
struct zelqFinding {
    enum class Kind : std::uint8_t {
        EntryTooShort,        ///< value: the entry length, 0 to 7
        HeaderTooShort,       ///< value: the header length, 0 to 3
        HeaderTooLong,        ///< value: the header length, over 256
        EntryEndsInHeader,    ///< value: the entry length; limit: header length + 4
        FileEndsInEntry,      ///< value: bytes that are there; limit: bytes the entry needs
        FileEndsBehindEntry,  ///< value: bytes after the entry, 1 to 3
        BlockEmpty,           ///< a block of length 0
        BlockTooShort,        ///< value: the block length, 1 to 7
        BlockPastEntry,       ///< value: the block length; limit: bytes left in the entry
        // After the log was read, the first place at which:
        LogChanged,     ///< the file is not what it was
        LogUnreadable,  ///< the system cannot read it again
    };

    Kind kind;
    std::uint64_t entry;   ///< number of the entry in its file, from 0
    std::uint64_t offset;  ///< in the file, of the wrong number or of what is missing or not read
    std::uint64_t value = 0;
    std::uint64_t limit = 0;

    /// True for damage of the entry's own lengths, false for that of its blocks or after it.
    [[nodiscard]] bool isOfEntry() const noexcept { return kind <= Kind::FileEndsInEntry; }

    /// "what is wrong; what was done".
    [[nodiscard]] std::string what() const;
    /// "entry 3, offset 120: " and what().
    [[nodiscard]] std::string text() const;

    friend bool operator==(const zelqFinding&, const zelqFinding&) = default;
};

/// Takes findings as they are met. Called on the reader's thread. A log can have one finding for
/// every two of its bytes.
using zelqFindingSink = std::function<void(const zelqFinding&)>;
