#include "output/zelqListing.h"

#include <algorithm>
#include <future>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "output/zelqRecordFormatter.h"
#include "output/zelqTerminalText.h"

namespace {

/// The approximate size of the text that is rendered in one piece, in bytes. A record's text is not
/// divided.
constexpr std::size_t kBatchText = std::size_t{1} << 20;

struct Batch {
    const zelqLog* log;
    std::size_t first;
    std::size_t end;
};

/// A batch and its text. The buffer is used again and again: clearing the pages of fresh ones takes
/// longer than rendering.
struct Piece {
    Batch batch;
    std::string text;
    std::future<void> rendered;
};

void render(Piece& piece, const zelqLocaleText& locale) {
    zelqRecordFormatter formatter(locale);
    piece.text.clear();
    for (std::size_t i = piece.batch.first; i < piece.batch.end; ++i) {
        zelqBCnrObject& record = (*piece.batch.log)[i];
        formatter.appendListing(record, record.nextAddressForm(), piece.text);
    }
}

/// Where the system gives no further thread, the piece is rendered by the one that waits for it.
void startRendering(Piece& piece, const zelqLocaleText& locale) {
    try {
        piece.rendered = std::async(std::launch::async, render, std::ref(piece), std::cref(locale));
    } catch (const std::system_error&) {
        piece.rendered =
            std::async(std::launch::deferred, render, std::ref(piece), std::cref(locale));
    }
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

zelqStatus zelqListing::write(
    const zelqLogCollection& records, const zelqLocaleText& locale, zelqOutputFile& output,
    const std::function<bool(std::uint64_t done, std::uint64_t total)>& progress) {
    if (!output.status().ok()) {
        return output.status();  // before any record counts as dumped
    }
    const bool isTerminal = output.isTerminal();
    std::vector<Piece> pieces(std::max(2U, std::thread::hardware_concurrency()));
    Batches batches(records);
    std::size_t started = 0;
    std::uint64_t done = 0;
    for (std::size_t written = 0;; ++written) {
        while (started < written + pieces.size()) {
            const std::optional<Batch> batch = batches.next();
            if (!batch.has_value()) {
                break;
            }
            Piece& piece = pieces[started++ % pieces.size()];
            piece.batch = *batch;
            startRendering(piece, locale);
        }
        if (written == started) {
            return {};
        }
        Piece& piece = pieces[written % pieces.size()];
        piece.rendered.get();
        done += piece.batch.end - piece.batch.first;
        if (isTerminal) {
            piece.text = zelqTerminalText::escapedListing(piece.text);
        }
        if (const zelqStatus& status = output.write(piece.text); !status.ok()) {
            return status;
        }
        if (progress && !progress(done, records.size())) {
            return zelqStatus::failure(std::errc::operation_canceled, "was not written to its end");
        }
    }
}
