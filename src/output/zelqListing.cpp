#include "output/zelqListing.h"

#include <algorithm>
#include <deque>
#include <future>
#include <optional>
#include <thread>

#include "output/zelqRecordFormatter.h"

namespace {

/// Text that is rendered in one piece, more or less; a record's text is not divided.
constexpr std::size_t kBatchText = std::size_t{1} << 20;

struct Batch {
    const zelqLog* log;
    std::size_t first;
    std::size_t end;
};

std::string render(const Batch& batch, const zelqLocaleText& locale) {
    zelqRecordFormatter formatter(locale);
    std::string text;
    for (std::size_t i = batch.first; i < batch.end; ++i) {
        zelqBCnrObject& record = (*batch.log)[i];
        formatter.appendListing(record, record.nextAddressForm(), text);
    }
    return text;
}

/// At least what the record's text takes, and not much more.
std::size_t textSize(const zelqBCnrObject& record) {
    constexpr std::size_t kAroundDump = 400;
    constexpr std::size_t kLine = 97;
    return kAroundDump + record.blockCount() * 2 * kLine +
           record.expansionData().size() / 16 * kLine;
}

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
        for (std::size_t text = 0; record_ < log.size() && text < kBatchText; ++record_) {
            text += textSize(log[record_]);
        }
        return Batch{.log = &log, .first = first, .end = record_};
    }

private:
    const std::vector<zelqLogCollection::Entry>& logs_;
    std::size_t log_ = 0;
    std::size_t record_ = 0;
};

}  // namespace

bool writeListing(const zelqLogCollection& records, const zelqLocaleText& locale,
                  zelqOutputFile& output,
                  const std::function<bool(std::uint64_t done, std::uint64_t total)>& progress) {
    struct Rendered {
        std::size_t records;
        std::future<std::string> text;
    };
    const std::size_t inFlight = std::max(2U, std::thread::hardware_concurrency());
    Batches batches(records);
    std::deque<Rendered> rendered;
    std::uint64_t done = 0;
    for (;;) {
        while (rendered.size() < inFlight) {
            const std::optional<Batch> batch = batches.next();
            if (!batch.has_value()) {
                break;
            }
            rendered.push_back(
                {.records = batch->end - batch->first,
                 .text = std::async(std::launch::async, render, *batch, std::cref(locale))});
        }
        if (rendered.empty()) {
            return true;
        }
        done += rendered.front().records;
        const std::string text = rendered.front().text.get();
        rendered.pop_front();
        if (!output.write(text) || (progress && !progress(done, records.size()))) {
            return false;
        }
    }
}
