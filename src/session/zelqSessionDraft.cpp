#include "session/zelqSessionDraft.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "log/zelqMemory.h"

namespace {

bool stays(const zelqBCnrObject& record, zelqDisplayed displayed) noexcept {
    switch (displayed) {
        case zelqDisplayed::Selected:
            return record.selected();
        case zelqDisplayed::NonSelected:
            return !record.selected();
        case zelqDisplayed::Expanded:
            return record.expanded();
        case zelqDisplayed::NonExpanded:
            break;
    }
    return !record.expanded();
}

}  // namespace

zelqSessionDraft::zelqSessionDraft(zelqSession& session)
    : session_(session), noted_(session.noted_) {
    if (session.rowsView_ != nullptr) {
        selection_ = session.rowsView_->rowsSelected();
        rowLimit_ = session.rowsView_->rowLimit();
    }
}

bool zelqSessionDraft::prepare(const Steps& steps, const std::stop_token& stop) {
    parallel_ = zelqParallel(stop);
    try {
        steps(*this);
    } catch (const zelqStopped&) {
        restore();
        return false;
    } catch (...) {
        restore();
        throw;
    }
    findSelection();
    isReady_ = true;
    return true;
}

/// To be called before the rows are changed, and before anything that cannot be taken back.
/// `added`: the number of records that come in.
void zelqSessionDraft::beginRows(Selection selection, std::size_t added) {
    changesRows_ = true;
    if (noting_ || !selection_) {
        return;
    }
    if (selection == Selection::Stays) {
        constexpr std::size_t kBits = zelqRowsView::Rows::bits_per_block;
        const std::size_t most = std::min(rowLimit_, logs().size() + added);
        rows_.resize(most);
        bits_.resize((most + kBits - 1) / kBits);
        noting_ = selection;
        noteSelection(true);
        noted_ += selection_->count();
    } else {
        noting_ = selection;
        noted_ = 0;
    }
}

/// Notes in the records of the rows that are selected that they are, or takes the notes back.
void zelqSessionDraft::noteSelection(bool selected) const {
    const zelqParallel::Span records = session_.shown_.records();
    const std::size_t first = std::min(selection_->find_first(), records.size());
    zelqParallel::walkToEnd(records.size(), [&](std::size_t /*part*/) {
        return [&, first](std::size_t begin, std::size_t end) {
            end = std::min(end, selection_->size());
            for (std::size_t row = std::max(begin, first); row < end; ++row) {
                if (selection_->test(row)) {
                    records[row]->setSelected(selected);
                }
            }
        };
    });
}

/// Looks for the rows of the records that are noted as selected, and takes their notes back.
void zelqSessionDraft::findSelection() noexcept {
    if (noting_ != Selection::Stays) {
        rows_.clear();
        return;
    }
    constexpr std::size_t kBits = zelqRowsView::Rows::bits_per_block;
    const zelqParallel::Span records = shown().records().first(std::min(rowLimit_, shown().size()));
    rows_.resize(records.size());
    if (noted_ == 0) {
        return;
    }
    // Ranges begin at multiples of a word's bits, so that each word is written by one thread.
    static_assert(zelqParallel::kChunk % kBits == 0);
    zelqParallel::walkToEnd(records.size(), [&](std::size_t /*part*/) {
        return [&](std::size_t first, std::size_t end) {
            for (std::size_t row = first; row < end; ++row) {
                if (records[row]->selected()) {
                    records[row]->setSelected(false);
                    bits_[row / kBits] |= zelqRowsView::Rows::block_type{1} << row % kBits;
                }
            }
        };
    });
    bits_.resize(rows_.num_blocks());
    boost::from_block_range(bits_.begin(), bits_.end(), rows_);
    noted_ -= rows_.count();
}

/// Takes back what records were told.
void zelqSessionDraft::restore() noexcept {
    if (!changesRows_) {
        return;
    }
    session_.shown_.restoreMembership(session_.logs_);
    session_.parked_.restoreMembership(session_.logs_);
    if (noting_ == Selection::Stays) {
        noteSelection(false);
    }
}

zelqFilterChain& zelqSessionDraft::filters() {
    if (!filters_) {
        filters_ = session_.filters_;
    }
    return *filters_;
}

void zelqSessionDraft::applyFilter(const zelqFilterStage& filter) {
    beginRows(Selection::Stays);
    filters().apply(filter, logs(), parallel_);
    shown_ = shown().assigned(filters().result(), parallel_);
}

void zelqSessionDraft::removeFilter(zelqFilterKind kind) {
    const zelqFilterStage* const filter = filters().find(kind);
    if (filter == nullptr) {
        return;
    }
    beginRows(Selection::Stays);
    zelqRecordList rows = shown().copy(shown().size() + filter->rejected().size());
    rows.addMissing(filter->rejected(), parallel_);
    shown_ = std::move(rows);
    filters().remove(kind);
}

void zelqSessionDraft::removeAllFilters() {
    beginRows(Selection::Stays);
    zelqRecordList rows = shown().copy(logs().size());
    for (const auto& filter : filters().filters()) {
        rows.addMissing(filter->rejected(), parallel_);
    }
    // Selected records are looked for among those that have something to collapse, which are fewer.
    const auto isSelectedRow = [&rows](const zelqBCnrObject& record) {
        return record.selected() && rows.contains(record);
    };
    Records collapsing;
    session_.expanded_.forEach([&](zelqBCnrObject& record) {
        if (isSelectedRow(record)) {
            collapsing.push_back(&record);
        }
    });
    Records unexpandable;
    for (const auto& [slot, log] : logs().logs()) {
        std::ranges::copy_if(log->unexpandable(), std::back_inserter(unexpandable),
                             [&](const auto* record) { return isSelectedRow(*record); });
    }
    filters().removeAll();
    rows.addMissing(logs(), parallel_);
    reserveCollapse(std::move(collapsing));
    markUnexpandable(unexpandable);
    showAll(std::move(rows));
    finishCollapse();
}

void zelqSessionDraft::sortShown() {
    if (!shown().isSorted()) {
        beginRows(Selection::Stays);
        zelqRecordList rows = shown().copy(0);
        rows.sort(parallel_);
        shown_ = std::move(rows);
    }
}

void zelqSessionDraft::displayAll() {
    if (parked().empty()) {
        return;
    }
    beginRows(Selection::Stays);
    zelqRecordList rows = shown().copy(shown().size() + parked().size());
    rows.addMissing(parked().records(), parallel_);
    parked().setMembership(parked().records(), false, parallel_);
    if (!shown().empty()) {
        rows.sort(parallel_);
    }
    shown_ = std::move(rows);
    parked_.emplace(zelqBCnrObject::InHiddenContainer);
}

void zelqSessionDraft::displayOnly(zelqDisplayed displayed) {
    beginRows(Selection::Stays);
    zelqRecordList rows =
        shown().kept([displayed](std::size_t /*row*/,
                                 const zelqBCnrObject& record) { return stays(record, displayed); },
                     parallel_);
    const Records leaving = parallel_.select(
        shown().records(), [displayed](std::size_t /*row*/, const zelqBCnrObject& record) {
            return !stays(record, displayed);
        });
    rows.setMembership(leaving, false, parallel_);
    zelqRecordList hidden = parked().copy(parked().size() + leaving.size());
    hidden.addMissing(leaving, parallel_);
    if (displayed != zelqDisplayed::Expanded) {
        collapse(leaving);
    }
    shown_ = std::move(rows);
    parked_ = std::move(hidden);
}
