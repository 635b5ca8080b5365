#include "output/zelqListing.h"

#include <atomic>
#include <optional>
#include <vector>

#include "output/zelqRecordFormatter.h"
#include "output/zelqTextPipeline.h"

namespace {

struct Batch {
    const zelqLog* log;
    std::size_t first;
    std::size_t end;
};

/// Divides the records into batches, in their order.
class Batches {
public:
    explicit Batches(const zelqLogCollection& records) : logs_(records.logs()) {}

    std::optional<Batch> next() {
        while (log_ < logs_.size() && record_ == logs_[log_].log->size()) {
            ++log_;
            record_ = 0;
        }
        if (log_ == logs_.size()) {
            return std::nullopt;
        }
        const zelqLog& log = *logs_[log_].log;
        const std::size_t first = record_;
        for (std::size_t text = 0; record_ < log.size() && text < zelqTextPipeline::kPieceSize;
             ++record_) {
            text += zelqRecordFormatter::mostListingText(log[record_]);
        }
        return Batch{.log = &log, .first = first, .end = record_};
    }

private:
    const std::vector<zelqLogCollection::Entry>& logs_;
    std::size_t log_ = 0;
    std::size_t record_ = 0;
};

}  // namespace

zelqListing::Outcome zelqListing::write(
    const zelqLogCollection& records, const zelqLocaleText& locale, zelqOutputFile& output,
    const std::function<bool(std::uint64_t done, std::uint64_t total)>& progress) {
    if (!output.status().ok()) {
        return {.status = output.status()};  // before any record counts as dumped
    }
    std::vector<Batch> slots;
    std::uint64_t done = 0;
    std::atomic<std::uint64_t> withoutData = 0;
    const zelqDataReader data(records.dataSources());
    zelqTextPipeline pipeline(
        output,
        [&](std::size_t slot, zelqTextBuffer& text) {
            zelqRecordFormatter formatter(locale, data);
            for (std::size_t i = slots[slot].first; i < slots[slot].end; ++i) {
                zelqBCnrObject& record = (*slots[slot].log)[i];
                formatter.appendListing(record, record.nextAddressForm(), text);
            }
            withoutData += formatter.countWithoutData();
        },
        [&](std::size_t slot) {
            done += slots[slot].end - slots[slot].first;
            return !progress || progress(done, records.size());
        });
    slots.resize(pipeline.slotCount());
    Batches batches(records);
    while (const std::optional<Batch> batch = batches.next()) {
        const std::optional<std::size_t> slot = pipeline.nextSlot();
        if (!slot.has_value()) {
            break;
        }
        slots[*slot] = *batch;
        pipeline.submit();
    }
    return {.status = pipeline.flush(), .withoutData = withoutData};
}
