#include "log/zelqEntryHeader.h"

#include <algorithm>
#include <cstring>

#include "log/zelqByteOrder.h"

using zelqFormat::kHeaderOffset;

namespace {

void swapHalf(zelqHeaderBuffer& header, std::size_t offset) noexcept {
    std::byte* const at = header.data() + (offset - kHeaderOffset);
    zelqByteOrder::storeLittle16(at, zelqByteOrder::loadBig16(at));
}

void swapWord(zelqHeaderBuffer& header, std::size_t offset) noexcept {
    std::byte* const at = header.data() + (offset - kHeaderOffset);
    zelqByteOrder::storeLittle32(at, zelqByteOrder::loadBig32(at));
}

/// From the file's order to that of the buffer and back.
void swapNumbers(zelqHeaderBuffer& header, const zelqFormat::EntryLayout& layout) noexcept {
    if (layout.convertsYear) {
        swapHalf(header, zelqFormat::kYearOffset);
    }
    for (std::size_t i = 0; i < layout.numberCount; ++i) {
        swapWord(header, layout.firstNumber + 4 * i);
    }
}

}  // namespace

void zelqEntryHeader::convert(const zelqFormat::EntryLayout& layout) noexcept {
    swapNumbers(buffer, layout);
    cutIndex = 0;
    if (layout.nameCut == zelqFormat::NameCut::None) {
        return;
    }
    const std::size_t name = layout.nameOffset - kHeaderOffset;
    std::size_t end = name + zelqFormat::kShortNameSize;
    if (layout.nameCut == zelqFormat::NameCut::AtParenthesis) {
        // The search does not stop at the NUL of a shorter name.
        const void* const found =
            std::memchr(buffer.data() + name, '(', zelqFormat::kNameEndIndex - name);
        end = found != nullptr
                  ? static_cast<std::size_t>(static_cast<const std::byte*>(found) - buffer.data())
                  : zelqFormat::kNameEndIndex;
    }
    cutIndex = static_cast<std::uint16_t>(end);
    cutByte = buffer[end];
    buffer[end] = std::byte{0};
}

zelqHeaderBuffer zelqEntryHeader::asInFile() const noexcept {
    zelqHeaderBuffer header = buffer;
    if (cutIndex != 0) {
        header[cutIndex] = cutByte;
    }
    swapNumbers(header, zelqFormat::entryLayout(zelqByteOrder::loadLittle16(buffer.data() + 2)));
    swapHalf(header, kHeaderOffset);
    swapHalf(header, kHeaderOffset + 2);
    return header;
}
