#include "session/zelqRecordSearch.h"

#include <algorithm>
#include <bit>
#include <chrono>
#include <system_error>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kBetweenReports = std::chrono::milliseconds(50);
/// So many records are looked at before they are counted. A record takes about 100 ns.
constexpr std::size_t kBatch = 256;

}  // namespace

void zelqRecordSearch::start(Task task) {
    stop();
    thread_ = {};
    count_ = 0;
    // NOLINTNEXTLINE(modernize-avoid-c-arrays): of any length
    words_ = std::make_unique<std::atomic<Word>[]>(task.count / kWordBits + 1);
    from_ = task.from;
    searched_ = 0;
    matches_ = 0;
    status_ = {};
    ended_ = false;
    count_ = task.count;
    try {
        thread_ = std::jthread([this, task = std::move(task)](const std::stop_token& stop) {
            try {
                run(task, stop);
            } catch (...) {
                status_ = zelqStatus::of(std::current_exception());
            }
            ended_.store(true, std::memory_order_release);
            task.progressed();
        });
    } catch (const std::system_error&) {  // there is no thread for it
        status_ = zelqStatus::of(std::current_exception());
        ended_ = true;
    }
}

void zelqRecordSearch::stop() noexcept {
    if (thread_.joinable()) {
        thread_.request_stop();
        thread_.join();
    }
}

void zelqRecordSearch::run(const Task& task, const std::stop_token& stop) {
    const Matcher matches = task.makeMatcher();
    Clock::time_point reported = Clock::now();
    std::size_t found = 0;
    for (std::size_t turn = 0; turn < task.count && !stop.stop_requested(); ++turn) {
        const std::size_t place =
            turn < task.count - task.from ? task.from + turn : turn - (task.count - task.from);
        const bool isMatch = matches(place);
        if (isMatch) {
            std::atomic<Word>& word = words_[place / kWordBits];
            // No other thread writes it.
            word.store(word.load(std::memory_order_relaxed) | Word{1} << place % kWordBits,
                       std::memory_order_relaxed);
            matches_.store(++found, std::memory_order_relaxed);
        }
        const bool isFirst = isMatch && found == 1;
        if (isFirst || turn % kBatch == kBatch - 1 || turn + 1 == task.count) {
            searched_.store(turn + 1, std::memory_order_release);
            if (isFirst || Clock::now() - reported > kBetweenReports) {
                reported = Clock::now();
                task.progressed();
            }
        }
    }
}

zelqStatus zelqRecordSearch::status() const {
    return ended_.load(std::memory_order_acquire) ? status_ : zelqStatus();
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
        const std::size_t place = from_ + turn < count_ ? from_ + turn : from_ + turn - count_;
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
        const std::size_t place = from_ + last < count_ ? from_ + last : from_ + last - count_;
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
