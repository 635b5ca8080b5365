#include "log/zelqStrays.h"

#include <algorithm>
#include <new>

#include <boost/sort/pdqsort/pdqsort.hpp>

#include "log/zelqLogInput.h"

namespace {

/// The place of a stray is the offset of its entry in the log and the entry's length; of one that
/// inherits, the offset of what was put aside.
constexpr unsigned kLengthBits = 16;
constexpr std::uint64_t kInherits = std::uint64_t{1} << kLengthBits;
constexpr unsigned kOffsetShift = kLengthBits + 1;

/// An entry's bytes, and those after it that a block prefix at its end is read from.
constexpr std::size_t kBuffer = zelqFormat::kLongestEntry + zelqFormat::kBlockPrefixSize;

constexpr std::size_t kFirstCapacity = 1024;

}  // namespace

void zelqStrays::add(const zelqEntry& entry) {
    if (size_ == capacity_) {
        const std::size_t capacity = std::max(kFirstCapacity, capacity_ + capacity_ / 2);
        void* const grown = std::realloc(strays_.get(), capacity * sizeof(Stray));
        if (grown == nullptr) {
            throw std::bad_alloc();
        }
        static_cast<void>(strays_.release());
        strays_.reset(static_cast<std::byte*>(grown));
        capacity_ = capacity;
    }
    std::uint64_t place = entry.place.offset << kOffsetShift | entry.place.length;
    if (entry.inherits()) {
        const zelqBCnrObject::Origin& origin = entry.origin;
        const Inherited inherited{.place = entry.place,
                                  .header = entry.header,
                                  .headerEnd = static_cast<std::uint16_t>(entry.headerEnd),
                                  .blockCount = origin.blockCount,
                                  .dataLength = origin.expansionLength,
                                  .hasData = origin.hasExpansion};
        place = inherited_.size() << kOffsetShift | kInherits;
        inherited_.append(std::as_bytes(std::span(&inherited, 1)));
    }
    std::construct_at(strays() + size_, Stray{.rank = zelqEntryRank::of(entry), .place = place});
    ++size_;
}

void zelqStrays::sort() {
    boost::sort::pdqsort(strays(), strays() + size_,
                         [](const Stray& a, const Stray& b) { return a.rank < b.rank; });
}

/// Bytes of a log; fewer than asked for where it ends.
std::span<std::byte> zelqStrays::read(zelqLogInput& input, std::uint64_t offset, std::size_t size) {
    if (buffer_ == nullptr) {
        buffer_.reset(static_cast<std::byte*>(std::malloc(kBuffer)));
        if (buffer_ == nullptr) {
            throw std::bad_alloc();
        }
    }
    return {buffer_.get(), input.readAt(offset, {buffer_.get(), size})};
}

const zelqEntry* zelqStrays::fetch(std::size_t index, zelqLogInput& input) {
    const Stray& stray = strays()[index];
    return (stray.place & kInherits) != 0 ? fetchInherited(stray, input) : fetchAlone(stray, input);
}

const zelqEntry* zelqStrays::fetchAlone(const Stray& stray, zelqLogInput& input) {
    const std::uint64_t offset = stray.place >> kOffsetShift;
    const std::size_t length = stray.place & (kInherits - 1);
    const auto bytes = read(input, offset, length + zelqFormat::kBlockPrefixSize);
    decoder_.start({.number = stray.rank.entryNumber(), .offset = offset}, stray.rank.input());
    const bool isSame = decoder_.decode(bytes, true) && decoder_.entry().place.length == length &&
                        zelqEntryRank::of(decoder_.entry()) == stray.rank;
    return isSame ? &decoder_.entry() : nullptr;
}

const zelqEntry* zelqStrays::fetchInherited(const Stray& stray, zelqLogInput& input) {
    Inherited inherited{};
    const auto room = std::as_writable_bytes(std::span(&inherited, 1));
    if (inherited_.readAt(stray.place >> kOffsetShift, room) != room.size()) {
        return nullptr;
    }
    const auto bytes = read(input, inherited.place.offset, inherited.place.length);
    // The entry's own bytes of the header must still be there.
    const zelqHeaderBuffer header = inherited.header.asInFile();
    const std::size_t own = std::min<std::size_t>(inherited.headerEnd, bytes.size());
    if (bytes.size() != inherited.place.length ||
        (own > zelqFormat::kHeaderOffset &&
         !std::equal(bytes.begin() + zelqFormat::kHeaderOffset,
                     bytes.begin() + static_cast<std::ptrdiff_t>(own), header.begin()))) {
        return nullptr;
    }
    entry_.forgetRecord();
    entry_.input = stray.rank.input();
    entry_.place = inherited.place;
    entry_.header = inherited.header;
    entry_.headerEnd = inherited.headerEnd;
    entry_.bytes = bytes;
    const auto data = bytes.last(std::min<std::size_t>(inherited.dataLength, bytes.size()));
    entry_.origin = {.logSlot = static_cast<std::uint16_t>(entry_.input),
                     .entryNumber = static_cast<std::uint16_t>(entry_.place.number),
                     .blockCount = inherited.blockCount,
                     .data = zelqDataPlace(data.data()),
                     .expansionLength = inherited.dataLength,
                     .hasExpansion = inherited.hasData};
    return &entry_;
}
