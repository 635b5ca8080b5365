#include "log/zelqLogDecoder.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "log/zelqByteOrder.h"
#include "log/zelqLogFormat.h"

using zelqFormat::kHeaderOffset;

namespace {

/// A 16-bit number of which the file may hold only the first byte or none; what is missing is 0.
std::uint16_t loadPartialBig16(std::span<const std::byte> bytes, std::size_t offset) {
    std::array<std::byte, 2> number{};
    for (std::size_t i = 0; i < number.size() && offset + i < bytes.size(); ++i) {
        number[i] = bytes[offset + i];
    }
    return zelqByteOrder::loadBig16(number.data());
}

}  // namespace

zelqLogDecoder::Prefix zelqLogDecoder::Prefix::of(std::span<const std::byte> entry) noexcept {
    return {.entryLength = loadPartialBig16(entry, 0),
            .headerLength = loadPartialBig16(entry, kHeaderOffset),
            .entryType = loadPartialBig16(entry, kHeaderOffset + 2)};
}

std::size_t zelqLogDecoder::Prefix::needed() const noexcept {
    return std::max({zelqFormat::kPrefixSize, dataOffset(), entryLength});
}

zelqLogDecoder::zelqLogDecoder(std::size_t log, zelqFindingSink findings)
    : findings_(std::move(findings)) {
    start({}, log);
}

void zelqLogDecoder::start(const zelqEntryPlace& place, std::size_t log) noexcept {
    entry_.input = log;
    entry_.origin.logSlot = static_cast<std::uint16_t>(log);
    entry_.header = {};
    entryStart_ = place.offset;
    entryNumber_ = place.number;
    ended_ = false;
    isBrokenOff_ = false;
}

bool zelqLogDecoder::decode(std::span<std::byte> bytes, bool complete) {
    if (ended_ || bytes.empty() || (!complete && !isWhole(bytes))) {
        return false;
    }
    decodeEntry(bytes);
    return true;
}

/// Whether no byte after these can change how the first entry in them is read. A log that somebody
/// is still writing to a pipe thus shows its last entry at once.
bool zelqLogDecoder::isWhole(std::span<const std::byte> entry) noexcept {
    if (entry.size() >= zelqFormat::kEntryReach) {
        return true;
    }
    const Prefix prefix = Prefix::of(entry);
    if (entry.size() < prefix.needed()) {
        return false;
    }
    if (entry.size() >= prefix.needed() + zelqFormat::kBlockPrefixSize) {
        return true;
    }
    // Only the prefix of a block that begins in the entry's last bytes reaches beyond it.
    std::size_t offset = prefix.dataOffset();
    while (offset + zelqFormat::kBlockPrefixSize <= prefix.entryLength) {
        const std::size_t length = zelqByteOrder::loadBig16(entry.data() + offset);
        if (length == 0) {
            return true;
        }
        offset += length;
    }
    return offset >= prefix.entryLength;
}

/// `entry` runs from the entry's first byte to the end of what is known of the file.
void zelqLogDecoder::decodeEntry(std::span<std::byte> entry) {
    const Prefix prefix = Prefix::of(entry);
    entry_.forgetRecord();
    entry_.place = {
        .number = entryNumber_,
        .offset = entryStart_,
        .length = static_cast<std::uint32_t>(std::min(prefix.entryLength, entry.size()))};
    entry_.bytes = entry.first(entry_.place.length);
    readHeader(entry, prefix);
    entry_.header.convert(zelqFormat::entryLayout(prefix.entryType));

    const std::size_t end = entry_.place.length;
    const std::size_t from = std::min(prefix.dataOffset(), end);
    zelqBCnrObject::Origin& origin = entry_.origin;
    origin.entryNumber = static_cast<std::uint16_t>(entryNumber_);
    origin.blockCount = countBlocks(entry, prefix);
    origin.data = zelqDataPlace(entry.data() + from);
    origin.expansionLength = static_cast<std::uint16_t>(end - from);
    origin.hasExpansion = prefix.entryLength >= prefix.dataOffset();
    if (!origin.hasExpansion && entry.size() >= zelqFormat::kPrefixSize) {
        report(zelqFinding::Kind::EntryEndsInHeader, 0, prefix.entryLength, prefix.dataOffset());
    }

    checkEnd(entry, prefix);
    entryStart_ += prefix.entryLength;
    ++entryNumber_;
}

void zelqLogDecoder::readHeader(std::span<const std::byte> entry, const Prefix& prefix) {
    zelqHeaderBuffer& header = entry_.header.buffer;
    zelqByteOrder::storeLittle16(header.data(), static_cast<std::uint16_t>(prefix.headerLength));
    zelqByteOrder::storeLittle16(header.data() + 2, prefix.entryType);
    const std::size_t kept = std::min(prefix.headerLength, header.size());
    const std::size_t end = std::min(kept + kHeaderOffset, entry.size());
    if (end > zelqFormat::kPrefixSize) {
        std::memcpy(header.data() + zelqFormat::kHeaderWordsSize,
                    entry.data() + zelqFormat::kPrefixSize, end - zelqFormat::kPrefixSize);
    }
    entry_.headerEnd = std::min<std::size_t>(end, entry_.place.length);
    if (entry.size() < zelqFormat::kPrefixSize) {
        return;  // the lengths are incomplete; the end of the file is reported instead
    }
    if (prefix.headerLength < zelqFormat::kHeaderWordsSize) {
        report(zelqFinding::Kind::HeaderTooShort, kHeaderOffset, prefix.headerLength);
    } else if (prefix.headerLength > header.size()) {
        report(zelqFinding::Kind::HeaderTooLong, kHeaderOffset, prefix.headerLength);
    }
}

std::uint16_t zelqLogDecoder::countBlocks(std::span<const std::byte> entry, const Prefix& prefix) {
    std::uint16_t count = 0;
    if (entry.size() < zelqFormat::kPrefixSize) {
        return count;
    }
    std::size_t offset = prefix.dataOffset();
    while (offset < prefix.entryLength && offset < entry.size()) {
        // A prefix may reach past the entry into the next one; only the file ends it.
        const std::size_t length = loadPartialBig16(entry, offset);
        ++count;
        // Where the file ends inside the length, it is known only if the entry ends there, too.
        if (offset + sizeof(std::uint16_t) <= entry.size() || entry.size() == prefix.entryLength) {
            reportBlock(prefix, offset, length);
        }
        if (offset + zelqFormat::kBlockPrefixSize > entry.size()) {
            endInBlockPrefix(entry, prefix);
            break;
        }
        if (length == 0) {
            break;
        }
        offset += length;
    }
    return count;
}

void zelqLogDecoder::reportBlock(const Prefix& prefix, std::size_t blockOffset,
                                 std::size_t blockLength) {
    const std::size_t left = prefix.entryLength - blockOffset;
    if (blockLength == 0) {
        report(zelqFinding::Kind::BlockEmpty, blockOffset);
    } else if (blockLength > left) {
        report(zelqFinding::Kind::BlockPastEntry, blockOffset, blockLength, left);
    } else if (blockLength < zelqFormat::kBlockHeaderSize) {
        report(zelqFinding::Kind::BlockTooShort, blockOffset, blockLength);
    }
}

/// A read that the end of the file cuts short is the last one, even if the entry itself is whole
/// and only the block prefix reaches past it.
void zelqLogDecoder::endInBlockPrefix(std::span<const std::byte> entry, const Prefix& prefix) {
    ended_ = true;
    if (entry.size() > prefix.entryLength && !isBrokenOff_) {
        report(zelqFinding::Kind::FileEndsBehindEntry, prefix.entryLength,
               entry.size() - prefix.entryLength);
    }
}

/// Ends the reading where the entry does not say where a next one begins, and reports what is wrong
/// with it.
void zelqLogDecoder::checkEnd(std::span<const std::byte> entry, const Prefix& prefix) {
    const std::size_t needed = prefix.needed();
    if (needed > entry.size()) {
        if (!isBrokenOff_) {
            report(zelqFinding::Kind::FileEndsInEntry, entry.size(), entry.size(), needed);
        }
        ended_ = true;
    } else if (prefix.entryLength < zelqFormat::kPrefixSize) {
        report(zelqFinding::Kind::EntryTooShort, 0, prefix.entryLength);
        ended_ = true;
    }
}

void zelqLogDecoder::report(zelqFinding::Kind kind, std::size_t offsetInEntry, std::size_t value,
                            std::size_t limit) const {
    if (findings_) {
        findings_({.kind = kind,
                   .entry = entryNumber_,
                   .offset = entryStart_ + offsetInEntry,
                   .value = value,
                   .limit = limit});
    }
}
