#include "log/zelqTimeOrder.h"

#include <algorithm>
#include <functional>
#include <system_error>

namespace {

/// For the buffers of all streams together, unless there are hundreds.
constexpr std::size_t kBuffers = std::size_t{32} << 20;

/// The number of entries between two reports of how far the first reading is.
constexpr std::uint64_t kSurveyStep = 4096;

}  // namespace

zelqTimeOrder::zelqTimeOrder(const zelqEntryRequest& request) : request_(request) {
    for (std::size_t number = 0; number < request.names.size(); ++number) {
        logs_.push_back(std::make_unique<Log>(request.names[number]));
        survey(*logs_.back(), number);
    }
    strays_.sort();
}

void zelqTimeOrder::fail(Log& log, const zelqStatus& status) {
    if (log.outcome.status.ok()) {
        log.outcome.status = status.ok() ? zelqStatus::failure(std::errc::state_not_recoverable,
                                                               "has changed while it was read")
                                         : status;
    }
}

/// Reads a log for the first time: what is wrong with it, and its strays.
void zelqTimeOrder::survey(Log& log, std::size_t number) {
    if (log.input.status().ok()) {
        zelqEntryStream stream(log.input, number, [&](const zelqFinding& finding) {
            ++log.outcome.findings;
            if (request_.finding) {
                request_.finding(number, finding);
            }
        });
        while (stream.next()) {
            if (!log.sieve.isInOrder(stream.entry().timestamp().key())) {
                strays_.add(stream.entry());
            }
            if (stream.count() % kSurveyStep == 0 && request_.surveying) {
                request_.surveying(number, stream.entry().place.offset);
            }
        }
        log.outcome.entries = stream.count();
    }
    log.outcome.status = log.input.status();
    log.input.rewind();
}

/// Goes to the next entry of a log that is in order.
void zelqTimeOrder::advance(std::size_t number) {
    Log& log = *logs_[number];
    while (log.stream->next()) {
        if (log.sieveAgain.isInOrder(log.stream->entry().timestamp().key())) {
            next_.push_back(zelqEntryRank::of(log.stream->entry()));
            std::ranges::push_heap(next_, std::greater<>());
            return;
        }
    }
    if (log.stream->count() != log.outcome.entries ||
        log.sieve.digest() != log.sieveAgain.digest()) {
        fail(log, log.input.status());
    }
}

const zelqEntry* zelqTimeOrder::fetchStray(std::size_t index) {
    Log& log = *logs_[strays_.rank(index).input()];
    const zelqEntry* const entry = strays_.fetch(index, log.input);
    if (entry == nullptr) {
        fail(log, log.input.status().ok() ? strays_.status() : log.input.status());
    }
    return entry;
}

bool zelqTimeOrder::visitAll(const zelqEntryVisit& visit) {
    for (std::size_t stray = 0; stray < strays_.size() || !next_.empty();) {
        const bool isStray =
            next_.empty() || (stray < strays_.size() && strays_.rank(stray) < next_.front());
        if (isStray) {
            const zelqEntry* const entry = fetchStray(stray++);
            if (entry != nullptr && !visit(*entry)) {
                return false;
            }
            continue;
        }
        const std::size_t number = next_.front().input();
        if (!visit(logs_[number]->stream->entry())) {
            return false;
        }
        std::ranges::pop_heap(next_, std::greater<>());
        next_.pop_back();
        advance(number);
    }
    return true;
}

void zelqTimeOrder::visit(const zelqEntryVisit& visit) {
    const std::size_t buffer =
        std::clamp(kBuffers / std::max<std::size_t>(1, logs_.size()),
                   zelqEntryStream::kSmallestBuffer, zelqEntryStream::kBuffer);
    for (std::size_t number = 0; number < logs_.size(); ++number) {
        Log& log = *logs_[number];
        if (log.outcome.entries != 0) {
            log.stream =
                std::make_unique<zelqEntryStream>(log.input, number, zelqFindingSink{}, buffer);
            advance(number);
        }
    }
    static_cast<void>(visitAll(visit));
    for (std::size_t number = 0; request_.ended && number < logs_.size(); ++number) {
        request_.ended(number, logs_[number]->outcome);
    }
}
