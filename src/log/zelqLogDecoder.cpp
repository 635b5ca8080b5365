#include "log/zelqLogDecoder.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "log/zelqByteOrder.h"
#include "log/zelqLog.h"
#include "log/zelqLogFormat.h"

using zelqFormat::kHeaderOffset;

namespace {

/// How much is decoded between two looks at the stop token: 4096 of the shortest entries.
constexpr std::size_t kStopInterval = std::size_t{32} << 10;

/// A 16-bit number of which the file may hold only the first byte or none; what is missing is 0.
std::uint16_t loadPartialBig16(std::span<const std::byte> bytes, std::size_t offset) {
    std::array<std::byte, 2> number{};
    for (std::size_t i = 0; i < number.size() && offset + i < bytes.size(); ++i) {
        number[i] = bytes[offset + i];
    }
    return zelqByteOrder::loadBig16(number.data());
}

void convertHalf(zelqHeaderBuffer& header, std::size_t offset) {
    std::byte* const at = header.data() + (offset - kHeaderOffset);
    zelqByteOrder::storeLittle16(at, zelqByteOrder::loadBig16(at));
}

void convertWord(zelqHeaderBuffer& header, std::size_t offset) {
    std::byte* const at = header.data() + (offset - kHeaderOffset);
    zelqByteOrder::storeLittle32(at, zelqByteOrder::loadBig32(at));
}

}  // namespace

zelqLogDecoder::zelqLogDecoder(zelqLog& log, std::uint16_t logSlot, zelqFindingSink findings)
    : log_(log), logSlot_(logSlot), findings_(std::move(findings)) {}

void zelqLogDecoder::decode(std::span<std::byte> bytes, bool complete,
                            const std::stop_token& stop) {
    const std::size_t start = entryStart_;
    std::size_t nextLook = start;  // at the stop token
    while (!ended_ && entryStart_ - start < bytes.size()) {
        const std::span<std::byte> rest = bytes.subspan(entryStart_ - start);
        if (!complete && rest.size() < zelqFormat::kEntryReach) {
            return;
        }
        if (entryStart_ >= nextLook) {
            if (stop.stop_requested()) {
                return;
            }
            nextLook = entryStart_ + kStopInterval;
        }
        decodeEntry(rest);
    }
}

/// `entry` runs from the entry's first byte to the end of what is known of the file.
void zelqLogDecoder::decodeEntry(std::span<std::byte> entry) {
    const Prefix prefix = readPrefix(entry);
    readHeader(entry, prefix);
    convertHeader(zelqFormat::entryLayout(prefix.entryType));

    const std::size_t to = std::min(prefix.entryLength, entry.size());
    const std::size_t from = std::min(prefix.dataOffset(), to);
    const zelqBCnrObject::Origin origin{.logSlot = logSlot_,
                                        .entryNumber = static_cast<std::uint16_t>(entryNumber_),
                                        .blockCount = countBlocks(entry, prefix),
                                        .expansionData = entry.data() + from,
                                        .expansionLength = static_cast<std::uint16_t>(to - from),
                                        .hasExpansion = prefix.entryLength >= prefix.dataOffset()};
    if (!origin.hasExpansion && entry.size() >= zelqFormat::kPrefixSize) {
        report(zelqFinding::Kind::EntryEndsInHeader, 0, prefix.entryLength, prefix.dataOffset());
    }
    log_.append(header_, origin);

    checkEnd(entry, prefix);
    entryStart_ += prefix.entryLength;
    ++entryNumber_;
}

zelqLogDecoder::Prefix zelqLogDecoder::readPrefix(std::span<const std::byte> entry) {
    const Prefix prefix{.entryLength = loadPartialBig16(entry, 0),
                        .headerLength = loadPartialBig16(entry, 4),
                        .entryType = loadPartialBig16(entry, 6)};
    zelqByteOrder::storeLittle16(header_.data(), static_cast<std::uint16_t>(prefix.headerLength));
    zelqByteOrder::storeLittle16(header_.data() + 2, prefix.entryType);
    return prefix;
}

void zelqLogDecoder::readHeader(std::span<const std::byte> entry, const Prefix& prefix) {
    const std::size_t kept = std::min(prefix.headerLength, header_.size());
    const std::size_t end = std::min(kept + kHeaderOffset, entry.size());
    if (end > zelqFormat::kPrefixSize) {
        std::memcpy(header_.data() + zelqFormat::kHeaderWordsSize,
                    entry.data() + zelqFormat::kPrefixSize, end - zelqFormat::kPrefixSize);
    }
    if (entry.size() < zelqFormat::kPrefixSize) {
        return;  // the lengths are incomplete; the end of the file is reported instead
    }
    if (prefix.headerLength < zelqFormat::kHeaderWordsSize) {
        report(zelqFinding::Kind::HeaderTooShort, kHeaderOffset, prefix.headerLength);
    } else if (prefix.headerLength > header_.size()) {
        report(zelqFinding::Kind::HeaderTooLong, kHeaderOffset, prefix.headerLength);
    }
}

void zelqLogDecoder::convertHeader(const zelqFormat::EntryLayout& layout) {
    if (layout.convertsYear) {
        convertHalf(header_, zelqFormat::kYearOffset);
    }
    for (std::size_t i = 0; i < layout.numberCount; ++i) {
        convertWord(header_, layout.firstNumber + 4 * i);
    }
    cutName(layout);
}

void zelqLogDecoder::cutName(const zelqFormat::EntryLayout& layout) {
    if (layout.nameCut == zelqFormat::NameCut::None) {
        return;
    }
    const std::size_t name = layout.nameOffset - kHeaderOffset;
    std::size_t end = name + zelqFormat::kShortNameSize;
    if (layout.nameCut == zelqFormat::NameCut::AtParenthesis) {
        // The search does not stop at the NUL of a shorter name.
        const void* const found =
            std::memchr(header_.data() + name, '(', zelqFormat::kNameEndIndex - name);
        end = found != nullptr
                  ? static_cast<std::size_t>(static_cast<const std::byte*>(found) - header_.data())
                  : zelqFormat::kNameEndIndex;
    }
    header_[end] = std::byte{0};
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
    if (entry.size() > prefix.entryLength) {
        report(zelqFinding::Kind::FileEndsBehindEntry, prefix.entryLength,
               entry.size() - prefix.entryLength);
    }
}

/// Ends the reading where the entry does not say where a next one begins, and reports what is wrong
/// with it.
void zelqLogDecoder::checkEnd(std::span<const std::byte> entry, const Prefix& prefix) {
    const std::size_t needed =
        std::max({zelqFormat::kPrefixSize, prefix.dataOffset(), prefix.entryLength});
    if (needed > entry.size()) {
        report(zelqFinding::Kind::FileEndsInEntry, entry.size(), entry.size(), needed);
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
