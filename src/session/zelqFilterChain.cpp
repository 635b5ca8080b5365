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
    if (position == filters_.size()) {
        filters_.push_back(std::move(filter));
    } else {
        filters_[position] = std::move(filter);
    }
    runFrom(position, records);
}

void zelqFilterChain::runFrom(std::size_t position, const zelqLogCollection& records) {
    for (; position < filters_.size(); ++position) {
        if (position == 0) {
            filters_[0]->filterAll(records);
        } else {
            filters_[position]->filterSequence(*filters_[position - 1]);
        }
    }
}

std::unique_ptr<zelqFilterStage> zelqFilterChain::remove(zelqFilterKind kind) {
    const std::size_t position = positionOf(kind);
    if (position == filters_.size()) {
        return nullptr;
    }
    std::unique_ptr<zelqFilterStage> removed = std::move(filters_[position]);
    filters_.erase(filters_.begin() + static_cast<std::ptrdiff_t>(position));
    return removed;
}

void zelqFilterChain::dropLog(int logIndex) {
    for (const auto& filter : filters_) {
        filter->dropLog(logIndex);
    }
}
