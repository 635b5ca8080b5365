#include <algorithm>
#include <array>
#include <cstdlib>
#include <random>
#include <vector>

#include "log/zelqByteOrder.h"
#include "log/zelqTextTable.h"
#include "output/zelqRecordFormatter.h"

/// The input: the number of blocks; the index of the entry type in the table of types; expansion
/// data, which serve as the header's fields, too.
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
    zelqPassingText text;
    const zelqBCnrObject record(header,
                                {.logSlot = 0,
                                 .entryNumber = 0,
                                 .blockCount = static_cast<std::uint16_t>(data[0]),
                                 .data = zelqDataPlace(bytes.data()),
                                 .expansionLength = static_cast<std::uint16_t>(bytes.size())},
                                text.set(zelqBCnrObject::textOf(header).text));
    static const zelqLocaleText locale("C");
    zelqRecordFormatter formatter(locale);
    const auto lineOf = [&](zelqAddressForm form, std::size_t number) {
        const zelqRecordFormatter::Line line = formatter.line(record, form, number);
        return std::string(line.before).append(line.time).append(line.after);
    };
    std::array<std::vector<std::string>, 2> lines;
    for (const zelqAddressForm form : {zelqAddressForm::Reversed, zelqAddressForm::True}) {
        std::vector<std::string>& ofForm = lines[static_cast<std::size_t>(form)];
        ofForm.resize(zelqRecordFormatter::lineCount(record, form, {}));
        std::string window;
        std::size_t longest = 0;
        for (std::size_t i = 0; i < ofForm.size(); ++i) {
            ofForm[i] = lineOf(form, i);
            longest = std::max(longest, ofForm[i].size());
            // An empty line has a blank in the window.
            window += (ofForm[i] == " " ? "" : ofForm[i]) + '\n';
        }
        zelqTextBuffer buffer;
        formatter.appendListing(record, form, buffer);
        const std::string_view listing = buffer.text();
        const bool hasLongest =
            formatter.longestLine(record) == std::max(longest, zelqRecordFormatter::kDumpWidth);
        if (window != listing || !hasLongest ||
            listing.size() > zelqRecordFormatter::mostListingText(record)) {
            std::abort();
        }
    }
    // Every line is found from the place of every other one.
    std::minstd_rand random(static_cast<unsigned>(size));
    for (int jump = 0; jump < 200; ++jump) {
        const std::size_t form = random() % 2;
        const std::size_t number = random() % lines[form].size();
        if (lineOf(static_cast<zelqAddressForm>(form), number) != lines[form][number]) {
            std::abort();
        }
    }
    return 0;
}
