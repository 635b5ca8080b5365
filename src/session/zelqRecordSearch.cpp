#include "session/zelqRecordSearch.h"

#include <algorithm>
#include <bit>
#include <system_error>
#include <utility>

void zelqRecordSearch::start(Task task) {
    clear();
    // NOLINTNEXTLINE(modernize-avoid-c-arrays): of any length
    words_ = std::make_unique<std::atomic<Word>[]>(task.count / kWordBits + 1);
    done_.assign((task.count + kChunk - 1) / kChunk, false);
    firstOpen_ = 0;
    nextChunk_ = 0;
    from_ = task.from;
    status_ = {};
    count_ = task.count;
    const std::size_t wanted =
        std::min<std::size_t>(chunks(), std::max(1U, std::thread::hardware_concurrency()));
    threads_.reserve(wanted);
    const auto shared = std::make_shared<const Task>(std::move(task));
    running_ = wanted;
    try {
        while (threads_.size() < wanted) {
            threads_.emplace_back([this, shared](const std::stop_token& stop) {
                try {
                    run(*shared, stop);
                } catch (...) {
                    giveUp();
                }
                running_.fetch_sub(1, std::memory_order_release);
            });
        }
    } catch (const std::system_error&) {  // those that could be started do it
        if (threads_.empty()) {
            giveUp();
        }
        running_.fetch_sub(wanted - threads_.size(), std::memory_order_release);
    }
}

void zelqRecordSearch::stop() noexcept {
    for (std::jthread& thread : threads_) {
        thread.request_stop();
    }
    threads_.clear();
}

/// Called where an exception is handled. The threads take no more records.
void zelqRecordSearch::giveUp() {
    const std::scoped_lock lock(mutex_);
    status_ = zelqStatus::of(std::current_exception());
    nextChunk_ = chunks();
}

void zelqRecordSearch::run(const Task& task, const std::stop_token& stop) {
    const Matcher matches = task.makeMatcher();
    for (;;) {
        const std::size_t chunk = nextChunk_.fetch_add(1, std::memory_order_relaxed);
        if (chunk >= chunks()) {
            return;
        }
        lookAt(chunk, matches, stop);
        if (stop.stop_requested()) {
            return;
        }
        noteDone(chunk);
    }
}

void zelqRecordSearch::lookAt(std::size_t chunk, const Matcher& matches,
                              const std::stop_token& stop) {
    const std::size_t end = std::min((chunk + 1) * kChunk, count_);
    for (std::size_t turn = chunk * kChunk; turn < end && !stop.stop_requested(); ++turn) {
        const std::size_t place = placeOf(turn);
        if (matches(place)) {
            words_[place / kWordBits].fetch_or(Word{1} << place % kWordBits,
                                               std::memory_order_relaxed);
            matches_.fetch_add(1, std::memory_order_relaxed);
        }
    }
}

void zelqRecordSearch::noteDone(std::size_t chunk) {
    const std::scoped_lock lock(mutex_);
    done_[chunk] = true;
    while (firstOpen_ < done_.size() && done_[firstOpen_]) {
        ++firstOpen_;
    }
    searched_.store(std::min(firstOpen_ * kChunk, count_), std::memory_order_release);
}

zelqStatus zelqRecordSearch::status() const {
    return isRunning() ? zelqStatus() : status_;
}

bool zelqRecordSearch::isMatch(std::size_t place) const noexcept {
    return turnOf(place) < searched() && (word(place / kWordBits) >> place % kWordBits & 1) != 0;
}

std::size_t zelqRecordSearch::matchesBefore(std::size_t place) const noexcept {
    std::size_t before = 0;
    for (std::size_t index = 0; index < place / kWordBits; ++index) {
        before += static_cast<std::size_t>(std::popcount(word(index)));
    }
    if (place % kWordBits != 0) {
        const Word lower = (Word{1} << place % kWordBits) - 1;
        before += static_cast<std::size_t>(std::popcount(word(place / kWordBits) & lower));
    }
    return before;
}

std::vector<std::uint64_t> zelqRecordSearch::bits() const {
    std::vector<Word> copy((count_ + kWordBits - 1) / kWordBits);
    for (std::size_t index = 0; index < copy.size(); ++index) {
        copy[index] = word(index);
    }
    return copy;
}

/// The first match among the records that are looked at from one turn to before another.
std::optional<std::size_t> zelqRecordSearch::firstIn(std::size_t first,
                                                     std::size_t end) const noexcept {
    for (std::size_t turn = first; turn < end;) {
        const std::size_t place = placeOf(turn);
        const Word rest = word(place / kWordBits) >> place % kWordBits;
        // Up to the end of the word, or of the list.
        const std::size_t reach = std::min(kWordBits - place % kWordBits, count_ - place);
        const auto nearest = static_cast<std::size_t>(std::countr_zero(rest));
        if (nearest < reach && turn + nearest < end) {
            return place + nearest;
        }
        turn += reach;
    }
    return std::nullopt;
}

/// The last one of them.
std::optional<std::size_t> zelqRecordSearch::lastIn(std::size_t first,
                                                    std::size_t end) const noexcept {
    for (std::size_t turn = end; turn > first;) {
        const std::size_t last = turn - 1;
        const std::size_t place = placeOf(last);
        const Word rest = word(place / kWordBits) << (kWordBits - 1 - place % kWordBits);
        const std::size_t reach = place % kWordBits + 1;
        const auto nearest = static_cast<std::size_t>(std::countl_zero(rest));
        if (nearest < reach && nearest <= last - first) {
            return place - nearest;
        }
        // Where the list begins again at place 0, the turn before is in its last word.
        turn -= std::min(reach, turn);
    }
    return std::nullopt;
}

zelqRecordSearch::Step zelqRecordSearch::next(std::size_t place, bool orAtIt) const noexcept {
    const bool running = isRunning();
    const std::size_t done = searched();
    const std::size_t turn = turnOf(place) + (orAtIt ? 0 : 1);
    std::optional<std::size_t> found = firstIn(turn, done);
    if (!found && !running) {
        found = firstIn(0, std::min(turn, done));
    }
    return {.place = found,
            .wrapped = found && (*found < place || (*found == place && !orAtIt)),
            .undecided = !found && running};
}

zelqRecordSearch::Step zelqRecordSearch::previous(std::size_t place) const noexcept {
    const bool running = isRunning();
    const std::size_t done = searched();
    const std::size_t turn = turnOf(place);
    std::optional<std::size_t> found;
    if (turn <= done || !running) {
        found = lastIn(0, std::min(turn, done));
    }
    if (!found && !running) {
        found = lastIn(std::min(turn, done), done);
    }
    return {.place = found, .wrapped = found && *found >= place, .undecided = !found && running};
}
