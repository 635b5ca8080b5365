#include "log/zelqLogReader.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <system_error>
#include <thread>
#include <utility>

#include "log/zelqEntryStream.h"
#include "log/zelqLogDecoder.h"
#include "log/zelqMemory.h"

namespace {

/// How much is read at a time, and how much is decoded between two reports of progress.
constexpr std::size_t kPieceSize = std::size_t{1} << 20;
/// How much is decoded between two estimates of the memory that is still needed.
constexpr std::uint64_t kBetweenEstimates = std::uint64_t{64} << 20;

/// Reads a file piece by piece on a thread of its own, so that decoding, which takes about as long,
/// happens at the same time. The first piece is read when it is asked for, because many files have
/// no more, and in others decoding ends there. If no thread can be started, all of them are.
class ReadAhead {
public:
    explicit ReadAhead(zelqLogFile& file) : file_(file) {}

    /// Waits until more than `known` bytes are read and returns their number; 0 if there are no
    /// more.
    std::size_t waitForMore(std::size_t known) {
        if (known != 0 && !triedThread_) {
            startThread();
        }
        if (!thread_.joinable()) {
            return file_.readMore(kPieceSize) ? file_.bytesRead() : 0;
        }
        for (;;) {
            const std::uint64_t pieces = pieces_.load(std::memory_order_acquire);
            if (const std::size_t read = file_.bytesRead(); read > known) {
                return read;
            }
            if ((pieces & kOutOfMemory) != 0) {
                throw std::bad_alloc();
            }
            if ((pieces & kFinished) != 0) {
                return 0;
            }
            pieces_.wait(pieces, std::memory_order_acquire);
        }
    }

private:
    static constexpr std::uint64_t kFinished = std::uint64_t{1} << 63;
    static constexpr std::uint64_t kOutOfMemory = std::uint64_t{1} << 62;

    void startThread() {
        triedThread_ = true;
        try {
            thread_ = std::jthread([this](const std::stop_token& stop) { run(stop); });
        } catch (const std::system_error&) {
            // The system has no thread to give; the file can still be read.
        }
    }

    void run(const std::stop_token& stop) noexcept {
        std::uint64_t end = kFinished;
        try {
            while (!stop.stop_requested() && file_.readMore(kPieceSize)) {
                pieces_.fetch_add(1, std::memory_order_release);
                pieces_.notify_one();
            }
        } catch (const std::bad_alloc&) {
            end |= kOutOfMemory;
        }
        pieces_.fetch_or(end, std::memory_order_release);
        pieces_.notify_one();
    }

    zelqLogFile& file_;
    std::atomic<std::uint64_t> pieces_ = 0;  ///< number of pieces read, and how reading ended
    bool triedThread_ = false;
    std::jthread thread_;  // last: it uses the rest
};

/// What takes the findings of a log; the first `known` ones were told before.
zelqFindingSink sinkOf(const zelqReadRequest& request, zelqReadResult& result,
                       std::uint64_t known = 0) {
    return [&request, &result, known](const zelqFinding& finding) {
        ++result.findings;
        result.firstEntryIsDamaged |= finding.entry == 0 && finding.isOfEntry();
        if (request.findings && result.findings > known) {
            request.findings(finding);
        }
    };
}

/// Decodes a log as it is read. Returns when the request is stopped, too.
class Decoding {
public:
    Decoding(const zelqReadRequest& request, zelqReadResult& result)
        : request_(request),
          log_(*result.log),
          file_(log_.file()),
          decoder_(request.logSlot, sinkOf(request, result)) {}

    zelqStatus run() {
        ReadAhead readAhead(file_);
        std::size_t known = 0;
        while (const std::size_t read = readAhead.waitForMore(known)) {
            known = read;
            decode(known, false);
            if (decoder_.ended() || request_.stop.stop_requested()) {
                return {};  // what was read ahead, or could not be, does not matter
            }
        }
        if (!file_.status().ok()) {
            decoder_.breakOff();
        }
        if (!file_.status().is(std::errc::not_enough_memory)) {
            decode(known, true);
        }
        return file_.status();
    }

private:
    /// Decodes what can be decoded of the first `known` bytes of the file; all of it if these are
    /// `complete`.
    void decode(std::size_t known, bool complete) {
        while (!decoder_.ended() && decoder_.position() < known &&
               !request_.stop.stop_requested()) {
            const std::size_t position = decoder_.position();
            std::span<std::byte> bytes = file_.bytesFrom(position);
            bytes = bytes.first(std::min(bytes.size(), kPieceSize + zelqFormat::kEntryReach));
            log_.append(decoder_, bytes, complete && position + bytes.size() == known,
                        request_.stop);
            if (decoder_.position() == position) {
                return;
            }
            if (request_.progress) {
                request_.progress(std::min(decoder_.position(), known),
                                  std::max(file_.size(), known));
            }
        }
    }

    const zelqReadRequest& request_;
    zelqLog& log_;
    zelqLogFile& file_;
    zelqLogDecoder decoder_;
};

/// The longest file whose bytes are kept.
std::size_t mostKept(const zelqReadRequest& request) {
    if (request.mostKept.has_value()) {
        return *request.mostKept;
    }
    const std::size_t half = zelqHeap::available() / 2 + request.bytesKept / 2;
    return half - std::min(half, request.bytesKept);
}

/// Reads a log and keeps its bytes. False if there is no memory for that.
bool keep(const zelqReadRequest& request, zelqReadResult& result) {
    try {
        result.status = Decoding(request, result).run();
        // Its records have to be listed, too.
        return !result.status.is(std::errc::not_enough_memory) &&
               zelqHeap::has(2 * result.log->size() * sizeof(void*));
    } catch (const std::bad_alloc&) {
        result.status = {.code = std::make_error_code(std::errc::not_enough_memory)};
        return false;
    }
}

/// What the records and lists of a whole log will take, judged by the part that was read.
std::uint64_t memoryFor(zelqLog& log, std::uint64_t done) {
    const std::size_t soFar = log.memoryUse() + 2 * log.size() * sizeof(void*);
    const double part = static_cast<double>(done) /
                        static_cast<double>(std::max<std::uint64_t>(log.file().size(), done));
    return done == 0 ? 0 : static_cast<std::uint64_t>(static_cast<double>(soFar) / part);
}

/// Throws std::bad_alloc if a log will hardly fit into the memory: rather now than after reading
/// for minutes. The part that is not read yet may have longer entries than the one that is.
void requireMemoryFor(zelqLog& log, std::uint64_t done) {
    const std::uint64_t whole = memoryFor(log, done);
    zelqHeap::require((whole - std::min<std::uint64_t>(whole, log.memoryUse())) / 2);
}

/// Reads a log whose bytes are not kept, from its start.
void readOnDemand(const zelqReadRequest& request, zelqReadResult& result) {
    const std::uint64_t known = std::exchange(result.findings, 0);
    zelqLog& log = *result.log;
    zelqLogPieces& file = log.readOnDemand();
    const auto readNext = [&file](std::span<std::byte> to) {
        return zelqEntryStream::sizeOf(file.readNext(to), file);
    };
    zelqEntryStream stream(readNext, request.logSlot, sinkOf(request, result, known));
    std::uint64_t nextLook = 0;  // at the stop token
    std::uint64_t nextReport = kPieceSize;
    std::uint64_t nextEstimate = kBetweenEstimates;
    do {
        const std::uint64_t position = stream.position();
        if (position >= nextLook) {
            if (request.stop.stop_requested()) {
                return;
            }
            nextLook = position + zelqLog::kStopInterval;
        }
        if (position >= nextEstimate) {
            nextEstimate = position + kBetweenEstimates;
            requireMemoryFor(log, position);
        }
        if (position >= nextReport) {
            nextReport = position + kPieceSize;
            if (request.progress) {
                request.progress(position, log.file().size());
            }
        }
        if (stream.count() != 0) {
            log.append(stream.entry());
        }
    } while (stream.next());
    result.status = file.status();
}

}  // namespace

void zelqReadResult::giveUpForMemory() {
    constexpr std::uint64_t kMebi = std::uint64_t{1} << 20;
    const std::uint64_t needed = memoryFor(*log, log->offsetOf(log->size()).value_or(0));
    log->clear();
    findings = 0;
    firstEntryIsDamaged = false;
    if (!status.is(std::errc::not_enough_memory) || status.text.empty()) {
        status = zelqStatus::failure(std::errc::not_enough_memory,
                                     "needs about " + std::to_string(needed / kMebi + 1) +
                                         " MiB of memory for its records, and there are " +
                                         std::to_string(zelqHeap::available() / kMebi) + " MiB");
    }
}

zelqReadResult zelqLogReader::read(const zelqReadRequest& request) {
    zelqReadResult result{.log = std::make_unique<zelqLog>(request.fileName)};
    const std::size_t size = result.log->file().size();
    try {
        bool isKept = size == 0 || size <= mostKept(request);
        if (isKept) {
            isKept = keep(request, result) || size == 0 || request.mostKept.has_value();
        }
        if (!isKept) {
            readOnDemand(request, result);
        }
        if (request.stop.stop_requested()) {
            return {};
        }
        if (result.status.is(std::errc::not_enough_memory)) {
            result.giveUpForMemory();
        }
    } catch (const std::bad_alloc&) {
        result.giveUpForMemory();
    }
    result.log->finish();
    return result;
}
