#include "log/zelqEntryCopy.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include "log/zelqByteOrder.h"
#include "log/zelqLogFormat.h"

using zelqFormat::kHeaderOffset;
using zelqFormat::kPrefixSize;

namespace {

/// Where the bytes end of which a record shows something, as an offset in the entry. What the
/// reader itself puts after a name does not count.
std::size_t shownEnd(const zelqEntry& entry) {
    const zelqEntryHeader& header = entry.header;
    const std::size_t end = zelqBCnrObject::headerEnd(header.buffer);
    const zelqFormat::EntryLayout& layout = zelqFormat::entryLayout(entry.record().entryType());
    const bool isEndedByReader = layout.nameCut == zelqFormat::NameCut::ShortName ||
                                 header.cutIndex == zelqFormat::kNameEndIndex;
    return isEndedByReader && header.cutIndex + kHeaderOffset + 1 == end ? end - 1 : end;
}

/// True if the entry's own bytes decide how it is read, wherever it stands.
bool saysAll(const zelqEntry& entry, std::size_t end) {
    return entry.bytes.size() >= kPrefixSize &&
           zelqByteOrder::loadBig16(entry.bytes.data()) == entry.bytes.size() &&
           entry.record().hasExpansion() && entry.headerEnd >= end;
}

void appendBytes(std::span<const std::byte> bytes, std::string& log) {
    log.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

/// The first four numbers of an entry. The unused half is that of the file.
std::array<std::byte, kPrefixSize> prefixOf(const zelqEntry& entry, std::size_t entryLength,
                                            std::size_t headerLength) {
    std::array<std::byte, kPrefixSize> prefix{};
    std::copy_n(entry.bytes.begin(), std::min(entry.bytes.size(), kHeaderOffset), prefix.begin());
    zelqByteOrder::storeBig16(prefix.data(), static_cast<std::uint16_t>(entryLength));
    zelqByteOrder::storeBig16(prefix.data() + kHeaderOffset,
                              static_cast<std::uint16_t>(headerLength));
    zelqByteOrder::storeBig16(prefix.data() + kHeaderOffset + 2, entry.record().entryType());
    return prefix;
}

}  // namespace

zelqEntryCopy::Form zelqEntryCopy::append(const zelqEntry& entry, std::string& log) {
    const std::size_t end = shownEnd(entry);
    if (saysAll(entry, end)) {
        appendBytes(entry.bytes, log);
        return Form::AsItStands;
    }
    // Data without a block are what is there of a prefix that the file ends in. Nothing of them is
    // shown; in the new log they would be a block.
    const auto data = entry.origin.blockCount > 0 ? entry.data() : std::span<const std::byte>{};
    if (end + data.size() > zelqFormat::kLongestEntry) {
        // It has its prefix, for it has more data than fit behind a header.
        const std::size_t headerLength =
            zelqByteOrder::loadBig16(entry.bytes.data() + kHeaderOffset);
        appendBytes(prefixOf(entry, entry.bytes.size(), headerLength), log);
        appendBytes(entry.bytes.subspan(kPrefixSize), log);
        return Form::TooLong;
    }
    // An entry that cannot be expanded is one that ends before its header does.
    const std::size_t headerEnd = entry.record().hasExpansion() ? end : end + 1;
    appendBytes(prefixOf(entry, end + data.size(), headerEnd - kHeaderOffset), log);
    const zelqHeaderBuffer header = entry.header.asInFile();
    appendBytes(std::span(header).subspan(zelqFormat::kHeaderWordsSize, end - kPrefixSize), log);
    appendBytes(data, log);
    return Form::Whole;
}
