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

void zelqFilterChain::apply(const zelqFilterStage& filter, const zelqLogCollection& records,
                            const zelqParallel& parallel) {
    const std::size_t position = positionOf(filter.kind());
    Results results;
    results.push_back(position == 0
                          ? filter.filterAll(records, parallel)
                          : filter.filterSequence(filters_[position - 1]->passed(), parallel));
    runBehind(position, results, parallel);
    Filters filters = filters_;
    filters.resize(std::max(filters.size(), position + 1));
    filters[position] = std::make_shared<zelqFilterStage>(filter, zelqFilterStage::Result());
    take(position, std::move(filters), std::move(results));
}

void zelqFilterChain::run(const zelqLogCollection& records, const zelqParallel& parallel) {
    if (!filters_.empty()) {
        Results results;
        results.push_back(filters_.front()->filterAll(records, parallel));
        runBehind(0, results, parallel);
        take(0, filters_, std::move(results));
    }
}

void zelqFilterChain::runAnew(const zelqLogCollection& records, const zelqParallel& parallel) {
    Results results;
    for (const auto& filter : filters_) {
        results.push_back(results.empty()
                              ? filter->filterAll(records, parallel)
                              : filter->filterSequence(results.back().passed, parallel));
    }
    take(0, filters_, std::move(results));
}

/// Adds the results of the filters behind a position to that of the one there.
void zelqFilterChain::runBehind(std::size_t position, Results& results,
                                const zelqParallel& parallel) const {
    for (std::size_t next = position + 1; next < filters_.size(); ++next) {
        results.push_back(filters_[next]->filterAgain(results.back().passed, parallel));
    }
}

/// Makes these the filters, with these results from a position on.
void zelqFilterChain::take(std::size_t position, Filters filters, Results results) {
    for (zelqFilterStage::Result& result : results) {
        filters[position] =
            std::make_shared<zelqFilterStage>(*filters[position], std::move(result));
        ++position;
    }
    filters_ = std::move(filters);
}

void zelqFilterChain::remove(zelqFilterKind kind) noexcept {
    const std::size_t position = positionOf(kind);
    if (position < filters_.size()) {
        filters_.erase(filters_.begin() + static_cast<std::ptrdiff_t>(position));
    }
}

void zelqFilterChain::dropLog(int logIndex, const zelqParallel& parallel) {
    Results results;
    for (const auto& filter : filters_) {
        results.push_back(filter->resultWithout(logIndex, parallel));
    }
    take(0, filters_, std::move(results));
}
