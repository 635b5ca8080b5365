#include <algorithm>
#include <cstdlib>
#include <vector>

#include "log/zelqByteOrder.h"
#include "log/zelqTextTable.h"
#include "output/zelqRecordFormatter.h"

/// The input: the number of blocks, not many because finding a line goes through all of them; the
/// entry type's place in the table of types; expansion data, which are the header's fields, too.
// NOLINTNEXTLINE(*-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    const auto* const first = reinterpret_cast<const std::byte*>(data) + 2;
    std::vector<std::byte> bytes(first, first + std::min<std::size_t>(size - 2, 0xFFFF));
    zelqHeaderBuffer header{};
    std::copy_n(bytes.begin(), std::min(bytes.size(), header.size()), header.begin());
    zelqByteOrder::storeLittle16(
        header.data() + 2,
        zelqFormat::kEntryLayouts[data[1] % zelqFormat::kEntryLayouts.size()].type);
    zelqTextTable texts;
    const zelqBCnrObject record(header,
                                {.logSlot = 0,
                                 .entryNumber = 0,
                                 .blockCount = static_cast<std::uint16_t>(data[0] % 64),
                                 .expansionData = bytes.data(),
                                 .expansionLength = static_cast<std::uint16_t>(bytes.size())},
                                texts);
    static const zelqLocaleText locale("C");
    zelqRecordFormatter formatter(locale);
    for (const zelqAddressForm form : {zelqAddressForm::Reversed, zelqAddressForm::True}) {
        std::string listing;
        formatter.appendListing(record, form, listing);
        std::string lines;
        const std::size_t count = zelqRecordFormatter::lineCount(record, form);
        for (std::size_t i = 0; i < count; ++i) {
            const std::string line = formatter.line(record, form, i);
            lines += (line == " " ? "" : line) + '\n';  // an empty line has a blank in the window
        }
        if (lines != listing) {
            std::abort();
        }
    }
    return 0;
}
