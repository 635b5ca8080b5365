#include "log/zelqLogReader.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <thread>
#include <utility>

#include "log/zelqLogDecoder.h"

namespace {

/// How much is read, and how much decoded, before anything else is looked at.
constexpr std::size_t kPieceSize = std::size_t{1} << 20;

/// Reads a file piece by piece on a thread of its own, so that decoding, which takes about as long,
/// goes on beside it.
class ReadAhead {
public:
    explicit ReadAhead(zelqLogFile& file)
        : file_(file), thread_([this](const std::stop_token& stop) { run(stop); }) {}

    /// Waits until more than `known` bytes are read and returns how many are; 0 if there are no
    /// more.
    std::size_t waitForMore(std::size_t known) {
        for (;;) {
            const std::uint64_t pieces = pieces_.load(std::memory_order_acquire);
            if (const std::size_t read = file_.bytes().size(); read > known) {
                return read;
            }
            if ((pieces & kFinished) != 0) {
                return 0;
            }
            pieces_.wait(pieces, std::memory_order_acquire);
        }
    }

private:
    static constexpr std::uint64_t kFinished = std::uint64_t{1} << 63;

    void run(const std::stop_token& stop) {
        while (!stop.stop_requested() && file_.readMore(kPieceSize)) {
            pieces_.fetch_add(1, std::memory_order_release);
            pieces_.notify_one();
        }
        pieces_.fetch_or(kFinished, std::memory_order_release);
        pieces_.notify_one();
    }

    zelqLogFile& file_;
    std::atomic<std::uint64_t> pieces_ = 0;  ///< so many were read; kFinished when that was the end
    std::jthread thread_;                    // last: it uses the rest
};

/// False if the request was stopped.
bool readAndDecode(const zelqReadRequest& request, zelqLog& log) {
    zelqLogFile& file = log.file();
    zelqLogDecoder decoder(log, request.logSlot, request.findings);
    ReadAhead readAhead(file);
    std::size_t decoded = 0;
    while (const std::size_t read = readAhead.waitForMore(decoded)) {
        if (request.stop.stop_requested()) {
            return false;
        }
        decoded += std::min(kPieceSize, read - decoded);
        decoder.decode(file.bytes().first(decoded), false);
        if (request.progress) {
            request.progress(decoded, file.size());
        }
    }
    decoder.decode(file.bytes(), true);
    return true;
}

}  // namespace

zelqReadResult outOfMemory() {
    return {.log = std::make_unique<zelqLog>(std::string()),
            .problem = "has more records than the memory holds"};
}

zelqReadResult readLog(const zelqReadRequest& request) {
    zelqReadResult result{.log = std::make_unique<zelqLog>(request.fileName), .problem = {}};
    try {
        if (!readAndDecode(request, *result.log)) {
            return {};
        }
        result.problem = result.log->file().problem();
    } catch (const std::bad_alloc&) {
        return outOfMemory();
    }
    result.log->file().close();
    return result;
}
