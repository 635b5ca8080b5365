// Steps that expand and collapse records. Marks are set when all memory is there.

#include <atomic>

#include "session/zelqSessionDraft.h"

namespace {

using Records = zelqSessionDraft::Records;

void setMarks(std::span<zelqBCnrObject* const> records, zelqExpandMark mark) noexcept {
    zelqParallel::forEachToEnd(records,
                               [mark](zelqBCnrObject& record) { record.setExpandMark(mark); });
}

std::size_t longestLine(std::span<zelqBCnrObject* const> records, const zelqLinesView& view,
                        const zelqParallel& parallel) {
    std::atomic<std::size_t> longest = 0;
    parallel.walk(records.size(), [&](std::size_t /*part*/) {
        return [&](std::size_t first, std::size_t end) {
            const std::size_t length = view.longestLine(records.subspan(first, end - first));
            std::size_t known = longest;
            while (known < length && !longest.compare_exchange_weak(known, length)) {
            }
        };
    });
    return longest;
}

}  // namespace

void zelqSessionDraft::setExpanded(std::span<zelqBCnrObject* const> records, bool expands) {
    markedOne_ = records.size() == 1 ? records.front() : nullptr;
    expands ? expand(records) : collapse(records);
}

void zelqSessionDraft::setExpanded(Rows rows, bool expands) {
    if (rows == Rows::All) {
        setExpanded(shown().records(), expands);
        return;
    }
    const bool wanted = rows != Rows::NonSelected;
    const bool onlyToOpen = rows == Rows::SelectedToOpen;
    const auto isOfRows = [this, wanted, onlyToOpen](std::size_t row,
                                                     const zelqBCnrObject& record) {
        const bool selected =
            selection_ ? row < selection_->size() && selection_->test(row) : record.selected();
        return selected == wanted && (!onlyToOpen || record.opensToExpand());
    };
    setExpanded(parallel_.select(shown().records(), isOfRows), expands);
}

void zelqSessionDraft::expand(std::span<zelqBCnrObject* const> records) {
    const Records changed = parallel_.select(
        records,
        [](std::size_t /*row*/, const zelqBCnrObject& record) { return record.opensToExpand(); });
    const bool meanwhile = session_.listings_ != 0;
    if (meanwhile) {
        expandedMeanwhile_ = session_.expandedMeanwhile_;
        expandedMeanwhile_->insert(expandedMeanwhile_->end(), changed.begin(), changed.end());
    }
    if (!changed.empty()) {
        if (session_.linesView_ != nullptr) {
            longestLine_ = ::longestLine(changed, *session_.linesView_, parallel_);
        }
        const auto form = [meanwhile](const zelqBCnrObject& record) {
            return meanwhile ? zelqAddressForm::True : record.addressForm();
        };
        expanded_ = session_.expanded_.with(changed, form, parallel_);
        expands_ = true;
    }
    setMarks(changed, zelqExpandMark::Expanded);
    if (!meanwhile) {
        zelqParallel::forEachToEnd(changed,
                                   [](zelqBCnrObject& record) { record.nextAddressForm(); });
    }
    markUnexpandable(records);
}

void zelqSessionDraft::collapse(std::span<zelqBCnrObject* const> records) {
    reserveCollapse(parallel_.select(
        records,
        [](std::size_t /*row*/, const zelqBCnrObject& record) { return record.expanded(); }));
    markUnexpandable(records);
    finishCollapse();
}

/// Sets memory aside for collapsing records, all of which are expanded.
void zelqSessionDraft::reserveCollapse(Records records) {
    collapsing_ = std::move(records);
    collapsesInPlace_ = collapsing_.size() == 1;
    if (collapsing_.size() > 1) {
        try {
            expanded_ = session_.expanded_.forRemoval();
        } catch (const std::bad_alloc&) {  // then they are removed one by one
            collapsesInPlace_ = true;
        }
    }
}

void zelqSessionDraft::finishCollapse() noexcept {
    setMarks(collapsing_, zelqExpandMark::Collapsed);
    if (!collapsing_.empty() && !collapsesInPlace_) {
        expanded_->takeOutCollapsed();
    }
}

/// Records without expansion data have a blank mark once they were to be expanded or collapsed.
void zelqSessionDraft::markUnexpandable(std::span<zelqBCnrObject* const> records) noexcept {
    zelqParallel::forEachToEnd(records, [](zelqBCnrObject& record) {
        if (!record.hasExpansion()) {
            record.setExpandMark(zelqExpandMark::Blank);
        }
    });
}

void zelqSessionDraft::collapseAll() {
    if (session_.expanded_.recordCount() != 0) {
        expanded_.emplace(session_.expanded_.newTree());
        session_.expanded_.forEachUnordered(
            [](zelqBCnrObject& record) { record.setExpandMark(zelqExpandMark::Collapsed); });
    }
    for (const auto& [slot, log] : logs().logs()) {
        for (zelqBCnrObject* record : log->unexpandable()) {
            record->setExpandMark(zelqExpandMark::Blank);
        }
    }
}
