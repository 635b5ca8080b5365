#include "log/zelqBCnrObject.h"

#include <algorithm>
#include <cstring>

#include "log/zelqByteOrder.h"

using zelqFormat::EntryKind;

namespace {

constexpr std::array<std::string_view, 5> kDetectPointTypes{"", "Entry", "Exit", "API Call",
                                                            "DEBUG"};

/// Fields of the header buffer, addressed by their offset in the entry.
class Header {
public:
    explicit Header(const zelqHeaderBuffer& buffer) : buffer_(buffer) {}

    [[nodiscard]] std::uint8_t byte(std::size_t offset) const {
        return std::to_integer<std::uint8_t>(*at(offset));
    }
    [[nodiscard]] std::uint16_t half(std::size_t offset) const {
        return zelqByteOrder::loadLittle16(at(offset));
    }
    [[nodiscard]] std::uint32_t word(std::size_t offset) const {
        return zelqByteOrder::loadLittle32(at(offset));
    }
    /// A number that the reader leaves in the file's byte order.
    [[nodiscard]] std::uint32_t unconvertedWord(std::size_t offset) const {
        return zelqByteOrder::loadBig32(at(offset));
    }
    /// The text up to its NUL or the end of the buffer.
    [[nodiscard]] std::string_view text(std::size_t offset) const {
        const char* const from = reinterpret_cast<const char*>(at(offset));
        const std::size_t most = buffer_.size() - (offset - zelqFormat::kHeaderOffset);
        const void* const nul = std::memchr(from, 0, most);
        return {from, nul == nullptr
                          ? most
                          : static_cast<std::size_t>(static_cast<const char*>(nul) - from)};
    }

private:
    [[nodiscard]] const std::byte* at(std::size_t offset) const {
        return buffer_.data() + (offset - zelqFormat::kHeaderOffset);
    }

    const zelqHeaderBuffer& buffer_;
};

std::uint8_t detectPointCode(std::uint32_t code) {
    return code < kDetectPointTypes.size() ? static_cast<std::uint8_t>(code) : std::uint8_t{0};
}

}  // namespace

zelqTimestamp zelqBCnrObject::timestampOf(const zelqHeaderBuffer& headerBuffer) noexcept {
    const Header header(headerBuffer);
    return {{.year = header.half(zelqFormat::kYearOffset),
             .month = header.byte(zelqFormat::kMonthOffset),
             .day = header.byte(zelqFormat::kDayOffset)},
            header.byte(zelqFormat::kHourOffset),
            header.byte(zelqFormat::kMinuteOffset),
            header.byte(zelqFormat::kSecondOffset),
            header.byte(zelqFormat::kFractionOffset)};
}

zelqBCnrObject::HeaderText zelqBCnrObject::textOf(const zelqHeaderBuffer& headerBuffer) noexcept {
    const std::uint16_t type = zelqByteOrder::loadLittle16(headerBuffer.data() + 2);
    std::size_t position = 0;
    switch (zelqFormat::entryLayout(type).kind) {
        case EntryKind::Trace:
            position = zelqFormat::kTraceNameOffset;
            break;
        case EntryKind::Error:
            position = zelqFormat::kErrorNameOffset;
            break;
        case EntryKind::Message:
            // The summary reads this type as if it were an Error entry.
            if (type != zelqFormat::kMessageWithName) {
                return {};
            }
            position = zelqFormat::kErrorNameOffset;
            break;
        case EntryKind::Unknown:
            return {};
    }
    return {.text = Header(headerBuffer).text(position), .position = position};
}

std::size_t zelqBCnrObject::headerEnd(const zelqHeaderBuffer& header) noexcept {
    const HeaderText text = textOf(header);
    if (text.position == 0) {
        return zelqFormat::kTidOffset + 4;
    }
    // With the NUL that ends it, unless that is the end of the buffer.
    return std::min(text.position + text.text.size() + 1,
                    header.size() + zelqFormat::kHeaderOffset);
}

zelqBCnrObject::zelqBCnrObject(const zelqHeaderBuffer& headerBuffer, const Origin& origin,
                               zelqTextTable::Place text)
    : timestamp_(timestampOf(headerBuffer)),
      data_(origin.data),
      text_(text),
      entryIndex_(origin.entryNumber),
      expansionLength_(origin.expansionLength),
      blockCount_(origin.blockCount),
      logIndex_(static_cast<std::uint8_t>(origin.logSlot)),
      expandMark_(static_cast<std::uint8_t>(origin.hasExpansion ? zelqExpandMark::Collapsed
                                                                : zelqExpandMark::None)) {
    const Header header(headerBuffer);
    entryType_ = zelqByteOrder::loadLittle16(headerBuffer.data() + 2);
    pid_ = header.word(zelqFormat::kPidOffset);
    tid_ = header.word(zelqFormat::kTidOffset);
    switch (zelqFormat::entryLayout(entryType_).kind) {
        case EntryKind::Trace:
            detectPoint_ = header.word(zelqFormat::kTraceDetectPointOffset);
            detectPointCode_ =
                detectPointCode(header.unconvertedWord(zelqFormat::kTraceDetectPointTypeOffset));
            break;
        case EntryKind::Error:
            majorError_ = header.word(zelqFormat::kErrorMajorOffset);
            minorError_ = header.word(zelqFormat::kErrorMinorOffset);
            detectPoint_ = header.word(zelqFormat::kErrorDetectPointOffset);
            detectPointCode_ =
                detectPointCode(header.unconvertedWord(zelqFormat::kErrorDetectPointTypeOffset));
            break;
        case EntryKind::Message:
            if (entryType_ == zelqFormat::kMessageWithName) {
                // The summary reads this type as if it were an Error entry.
                detectPoint_ = header.word(zelqFormat::kErrorDetectPointOffset);
            } else if (entryType_ == 0x2003 || entryType_ == 0x2004) {
                detectPoint_ = header.word(zelqFormat::kMessageDetectPointOffset);
            }
            break;
        case EntryKind::Unknown:
            break;
    }
    if (!origin.hasExpansion) {
        detectPointCode_ |= kEndsInHeader;
    }
}

std::string_view zelqBCnrObject::iconText() const noexcept {
    switch (zelqFormat::entryLayout(entryType_).kind) {
        case EntryKind::Error:
            return "Error";
        case EntryKind::Trace:
            return "Trace";
        case EntryKind::Message:
            return "Message";
        case EntryKind::Unknown:
            break;
    }
    return "Unknown";
}

zelqRecordIcon zelqBCnrObject::icon() const noexcept {
    switch (zelqFormat::entryLayout(entryType_).kind) {
        case EntryKind::Error:
            return zelqRecordIcon::Error;
        case EntryKind::Trace:
            return zelqRecordIcon::Trace;
        case EntryKind::Message:
            return zelqRecordIcon::Message;
        case EntryKind::Unknown:
            break;
    }
    return zelqRecordIcon::Unknown;
}

std::string_view zelqBCnrObject::detectPointType() const noexcept {
    return kDetectPointTypes[detectPointCode_ & ~kEndsInHeader];
}

std::string_view zelqBCnrObject::expandMarkText() const noexcept {
    switch (expandMark()) {
        case zelqExpandMark::Collapsed:
            return "+";
        case zelqExpandMark::Expanded:
            return "-";
        case zelqExpandMark::Blank:
            return " ";
        case zelqExpandMark::None:
            break;
    }
    return "";
}
