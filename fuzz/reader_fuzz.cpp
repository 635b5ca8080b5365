#include <algorithm>
#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

#include "log/zelqBSorter.h"
#include "log/zelqEntryReader.h"
#include "support/LogImage.h"

namespace {

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// Decodes a log in pieces whose sizes the input gives, and compares with decoding it in one go.
void decodeInPieces(const DecodedLog& whole, const std::uint8_t* data, std::size_t size) {
    std::vector<std::byte> bytes = whole.bytes;
    std::vector<zelqFinding> findings;
    zelqLog log("");
    zelqLogDecoder decoder(0, [&](const zelqFinding& found) { findings.push_back(found); });
    std::size_t known = 0;
    for (std::size_t i = 0; known < bytes.size(); i += 2) {
        const std::size_t from = std::min(decoder.position(), known);
        log.append(decoder, std::span(bytes).first(known).subspan(from), false);
        known += 1U + 32U * data[i % size] + data[(i + 1) % size];
    }
    const std::size_t from = std::min(decoder.position(), bytes.size());
    log.append(decoder, std::span(bytes).subspan(from), true);
    require(contentsOf(log, bytes.data()) == contentsOf(*whole.log, whole.bytes.data()));
    require(findings == whole.findings);
}

/// Reads a log twice, as a stream, and compares with sorting what was decoded in one go.
void streamByTime(const DecodedLog& whole) {
    std::vector<zelqBCnrObject*> records;
    whole.log->number(0);
    whole.log->forEach([&records](zelqBCnrObject& record) { records.push_back(&record); });
    zelqBSorter::sort(records);
    const int file = ::memfd_create("log", 0);
    require(::write(file, whole.bytes.data(), whole.bytes.size()) ==
            static_cast<ssize_t>(whole.bytes.size()));
    auto next = records.begin();
    zelqEntryReader::readInTimeOrder(
        {.names = {"/proc/self/fd/" + std::to_string(file)},
         .ended = [](std::size_t, const auto& outcome) { require(outcome.status.ok()); }},
        [&next](const zelqEntry& entry) {
            const auto there = entry.data();
            const auto wanted = dataOf(**next);
            require(std::ranges::equal(there, wanted) &&
                    columnsOf(entry.record()) == columnsOf(**next) &&
                    entry.record().entryIndex() == (*next)->entryIndex());
            return ++next, true;
        });
    require(next == records.end());
    ::close(file);
}

}  // namespace

/// The input: the number of repetitions; the number of last bytes that are not repeated; the log. A
/// small input thus makes a log that is longer than an entry can reach: a shorter one is decoded in
/// one piece.
// NOLINTNEXTLINE(*-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    const std::string_view input(reinterpret_cast<const char*>(data) + 2, size - 2);
    const std::size_t repeated = input.size() - std::min<std::size_t>(data[1], input.size());
    std::string image;
    for (unsigned i = 0; i <= data[0]; ++i) {
        image += input.substr(0, repeated);
    }
    image += input.substr(repeated);

    const DecodedLog log(image);
    decodeInPieces(log, data, size);
    streamByTime(log);
    const DemandedLog onDemand(image);
    require(contentsOf(*onDemand.log, nullptr) == contentsOf(*log.log, log.bytes.data()) &&
            onDemand.findings == log.findings);
    for (const auto& [columns, number, blocks, expands, place, length] :
         contentsOf(*log.log, log.bytes.data())) {
        require(place >= 0 && static_cast<std::size_t>(place) + length <= image.size());
        require(std::get<7>(columns).size() < 256);  // the function's name
    }
    for (const zelqFinding& finding : log.findings) {
        require(finding.entry < log.size() && finding.offset <= image.size());
        require(finding.text().find("; ") != std::string::npos);  // what was done about it
    }
    return 0;
}
