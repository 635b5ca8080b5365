#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// The layout of a log file, in one place. All offsets in this header count from the first byte of
/// an entry unless a name says otherwise; all sizes are bytes. docs/format.md describes it for
/// users.
namespace zelqFormat {

/// Entry length, an unused half, header length and entry type: four 16-bit numbers.
inline constexpr std::size_t kPrefixSize = 8;

/// The header is kept from here on: header length, entry type and what follows them.
inline constexpr std::size_t kHeaderOffset = 4;
/// Header length and entry type, which every entry has.
inline constexpr std::size_t kHeaderWordsSize = 4;
/// What is kept of a header; longer headers are cut to this.
inline constexpr std::size_t kHeaderBufferSize = 256;

inline constexpr std::size_t kLongestEntry = 0xFFFF;
inline constexpr std::size_t kLongestHeader = 0xFFFF;

inline constexpr std::size_t kDayOffset = 8;
inline constexpr std::size_t kMonthOffset = 9;
inline constexpr std::size_t kYearOffset = 10;
inline constexpr std::size_t kHourOffset = 12;
inline constexpr std::size_t kMinuteOffset = 13;
inline constexpr std::size_t kSecondOffset = 14;
inline constexpr std::size_t kFractionOffset = 15;
inline constexpr std::size_t kPidOffset = 16;
inline constexpr std::size_t kTidOffset = 20;

/// A block of expansion data: length and second word (16-bit each), start address, data. Counting
/// the blocks reads the first four bytes of each only.
inline constexpr std::size_t kBlockPrefixSize = 4;
inline constexpr std::size_t kBlockHeaderSize = 8;

/// Every byte of an entry, of its header and of a block prefix that begins in it lies within this
/// of the start of the entry.
inline constexpr std::size_t kEntryReach = kHeaderOffset + kLongestHeader + kBlockPrefixSize;

/// A name that is cut at "(" is searched in the header buffer before this index; the byte at this
/// index ends it when none is found.
inline constexpr std::size_t kNameEndIndex = kHeaderBufferSize - 2;
/// Names of the older entry types are cut to this.
inline constexpr std::size_t kShortNameSize = 8;

enum class EntryKind : std::uint8_t { Unknown, Error, Trace, Message };
enum class NameCut : std::uint8_t { None, ShortName, AtParenthesis };

/// What the reader makes of the header of one entry type.
struct EntryLayout {
    std::uint16_t type;
    EntryKind kind;
    bool convertsYear;         ///< the year is turned to host order
    std::uint8_t firstNumber;  ///< offset of the first 32-bit number that is turned to host order
    std::uint8_t numberCount;  ///< how many numbers are, one after another
    std::uint8_t nameOffset;   ///< offset of the name, 0 for none
    NameCut nameCut;
};

inline constexpr std::uint16_t kMessageWithName = 0x2002;

// clang-format off
inline constexpr std::array kEntryLayouts{
    EntryLayout{0x0000, EntryKind::Unknown, false,  0, 0,  0, NameCut::None},  // any type not below
    EntryLayout{0x0003, EntryKind::Error,   true,  16, 5, 40, NameCut::ShortName},
    EntryLayout{0x0013, EntryKind::Error,   true,  16, 5, 40, NameCut::AtParenthesis},
    EntryLayout{0x0005, EntryKind::Trace,   true,  16, 3, 32, NameCut::ShortName},
    EntryLayout{0x0015, EntryKind::Trace,   true,  16, 3, 32, NameCut::AtParenthesis},
    EntryLayout{0x2002, EntryKind::Message, true,  16, 2, 24, NameCut::AtParenthesis},
    // The rest has numbers where the others have date and time, or nothing that is converted.
    EntryLayout{0x2003, EntryKind::Message, false,  8, 4,  0, NameCut::None},
    EntryLayout{0x2004, EntryKind::Message, false,  8, 4,  0, NameCut::None},
    EntryLayout{0x2005, EntryKind::Message, false,  8, 3,  0, NameCut::None},
    EntryLayout{0x2022, EntryKind::Message, false,  8, 6,  0, NameCut::None},
    EntryLayout{0x2025, EntryKind::Message, false,  8, 4,  0, NameCut::None},
    EntryLayout{0x2026, EntryKind::Message, false,  8, 4,  0, NameCut::None},
    EntryLayout{0x2027, EntryKind::Message, false,  0, 0,  0, NameCut::None},
    EntryLayout{0x2028, EntryKind::Message, false,  0, 0,  0, NameCut::None},
};
// clang-format on

/// The layout of an entry type; the first row of the table for a type that has none.
[[nodiscard]] constexpr const EntryLayout& entryLayout(std::uint16_t type) noexcept {
    for (const EntryLayout& layout : kEntryLayouts) {
        if (layout.type == type) {
            return layout;
        }
    }
    return kEntryLayouts.front();
}

/// Offsets of an entry kind's own fields.
inline constexpr std::size_t kErrorMajorOffset = 24;
inline constexpr std::size_t kErrorMinorOffset = 28;
inline constexpr std::size_t kErrorDetectPointOffset = 32;
inline constexpr std::size_t kErrorDetectPointTypeOffset = 36;
inline constexpr std::size_t kErrorNameOffset = 40;
inline constexpr std::size_t kTraceDetectPointOffset = 24;
inline constexpr std::size_t kTraceDetectPointTypeOffset = 28;
inline constexpr std::size_t kTraceNameOffset = 32;
/// The types 0x2003 and 0x2004 have their detect point where others have the date.
inline constexpr std::size_t kMessageDetectPointOffset = 8;

}  // namespace zelqFormat
