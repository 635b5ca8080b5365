#include "session/zelqFilterChain.h"

#include <algorithm>
#include <utility>

std::size_t zelqFilterChain::positionOf(zelqFilterKind kind) const noexcept {
    const auto found = std::find_if(filters_.begin(), filters_.end(),
                                    [kind](const auto& filter) { return filter->kind() == kind; });
    return static_cast<std::size_t>(found - filters_.begin());
}

const zelqFilterStage* zelqFilterChain::find(zelqFilterKind kind) const noexcept {
    const std::size_t position = positionOf(kind);
    return position < filters_.size() ? filters_[position].get() : nullptr;
}

std::span<zelqBCnrObject* const> zelqFilterChain::result() const noexcept {
    return filters_.empty() ? std::span<zelqBCnrObject* const>() : filters_.back()->passed();
}

void zelqFilterChain::apply(std::unique_ptr<zelqFilterStage> filter,
                            const zelqLogCollection& records) {
    const std::size_t position = positionOf(filter->kind());
    filters_.reserve(position + 1);
    Results results;
    results.push_back(position == 0 ? filter->filterAll(records)
                                    : filter->filterSequence(filters_[position - 1]->passed()));
    runBehind(position, results);
    if (position == filters_.size()) {
        filters_.push_back(std::move(filter));
    } else {
        filters_[position] = std::move(filter);
    }
    take(position, std::move(results));
}

void zelqFilterChain::run(const zelqLogCollection& records) {
    if (!filters_.empty()) {
        Results results;
        results.push_back(filters_.front()->filterAll(records));
        runBehind(0, results);
        take(0, std::move(results));
    }
}

zelqFilterChain::Results zelqFilterChain::resultsOf(const zelqLogCollection& records) const {
    Results results;
    for (const auto& filter : filters_) {
        results.push_back(results.empty() ? filter->filterAll(records)
                                          : filter->filterSequence(results.back().passed));
    }
    return results;
}

/// Adds the results of the filters behind a position to that of the one there.
void zelqFilterChain::runBehind(std::size_t position, Results& results) const {
    for (std::size_t next = position + 1; next < filters_.size(); ++next) {
        results.push_back(filters_[next]->filterAgain(results.back().passed));
    }
}

void zelqFilterChain::take(std::size_t position, Results results) noexcept {
    for (zelqFilterStage::Result& result : results) {
        filters_[position++]->take(std::move(result));
    }
}

std::unique_ptr<zelqFilterStage> zelqFilterChain::remove(zelqFilterKind kind) noexcept {
    const std::size_t position = positionOf(kind);
    if (position == filters_.size()) {
        return nullptr;
    }
    std::unique_ptr<zelqFilterStage> removed = std::move(filters_[position]);
    filters_.erase(filters_.begin() + static_cast<std::ptrdiff_t>(position));
    return removed;
}

void zelqFilterChain::dropLog(int logIndex) noexcept {
    for (const auto& filter : filters_) {
        filter->dropLog(logIndex);
    }
}
