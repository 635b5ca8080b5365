#include "session/zelqSession.h"

#include <algorithm>
#include <new>
#include <utility>

#include "session/zelqInvariant.h"
#include "session/zelqSessionDraft.h"

/// The end of a transition in debug builds: everything that always has to hold holds.
class zelqSession::Transition {
public:
    explicit Transition(const zelqSession& session) noexcept : session_(session) {}
    Transition(const Transition&) = delete;
    Transition& operator=(const Transition&) = delete;
    ~Transition() {
        if constexpr (zelqInvariant::kChecked) {
            try {
                session_.checkInvariants();
            } catch (const std::bad_alloc&) {
                return;  // there is no memory to check with, which breaks none of them
            }
        }
    }

private:
    const zelqSession& session_;
};

template <typename Steps>
zelqSession::Remains zelqSession::change(const Steps& steps) {
    const auto draft = std::make_shared<zelqSessionDraft>(*this);
    draft->prepare(std::cref(steps));
    commit(*draft);
    return draft;
}

int zelqSession::add(const std::string& name, zelqPreparedLog prepared) {
    const int slot = logs_.slotFor(name);
    if (slot != zelqLogCollection::kNoSlot) {
        (void)change([&](zelqSessionDraft& draft) { draft.add(name, std::move(prepared)); });
    }
    return slot;
}

zelqSession::Remains zelqSession::load(const std::string& name, zelqPreparedLog prepared) {
    return change([&](zelqSessionDraft& draft) { draft.load(name, std::move(prepared)); });
}

zelqSession::Remains zelqSession::unload(int slot) {
    return change([slot](zelqSessionDraft& draft) { draft.unload(slot); });
}

void zelqSession::applyFilter(std::unique_ptr<zelqFilterStage> filter) {
    (void)change([&filter](zelqSessionDraft& draft) { draft.applyFilter(*filter); });
}

void zelqSession::removeFilter(zelqFilterKind kind) {
    if (filters_.find(kind) != nullptr) {
        (void)change([kind](zelqSessionDraft& draft) { draft.removeFilter(kind); });
    }
}

void zelqSession::removeAllFilters() {
    (void)change([](zelqSessionDraft& draft) { draft.removeAllFilters(); });
}

void zelqSession::sortShown() {
    if (!shown_.isSorted()) {
        (void)change([](zelqSessionDraft& draft) { draft.sortShown(); });
    }
}

void zelqSession::displayAll() {
    if (!parked_.empty()) {
        (void)change([](zelqSessionDraft& draft) { draft.displayAll(); });
    }
}

void zelqSession::displayOnly(zelqDisplayed displayed) {
    (void)change([displayed](zelqSessionDraft& draft) { draft.displayOnly(displayed); });
}

void zelqSession::collapseAll() {
    (void)change([](zelqSessionDraft& draft) { draft.collapseAll(); });
}

void zelqSession::setExpanded(std::span<zelqBCnrObject* const> records, bool expanded) {
    if (records.size() == 1 && expanded && records.front()->opensToExpand()) {
        expandOne(*records.front());
        return;
    }
    (void)change(
        [records, expanded](zelqSessionDraft& draft) { draft.setExpanded(records, expanded); });
}

/// Its lines come in between the others, which stay where they are.
void zelqSession::expandOne(zelqBCnrObject& record) {
    const Transition transition(*this);
    const bool meanwhile = listings_ != 0;
    const zelqAddressForm form = meanwhile ? zelqAddressForm::True : record.addressForm();
    if (meanwhile) {
        expandedMeanwhile_.reserve(expandedMeanwhile_.size() + 1);
    }
    if (linesView_ != nullptr) {
        linesView_->linesAboutToChange();
    }
    expanded_.reserve(1);
    if (linesView_ != nullptr) {
        linesView_->linesAboutToBeInserted(expanded_.insertionLine(record),
                                           expanded_.lineCountOf(record, form), record);
    }
    expanded_.insert(record, form);
    if (linesView_ != nullptr) {
        linesView_->linesInserted();
    }
    record.setExpandMark(zelqExpandMark::Expanded);
    if (meanwhile) {
        expandedMeanwhile_.push_back(&record);
    } else {
        record.nextAddressForm();
    }
    if (rowsView_ != nullptr) {
        rowsView_->marksChanged(&record);
    }
}

void zelqSession::commit(zelqSessionDraft& draft) noexcept {
    const Transition transition(*this);
    const auto exchange = [](auto& mine, auto& drafted) {
        if (drafted.has_value()) {
            std::swap(mine, *drafted);
        }
    };
    if (draft.changesRows_ && linesView_ != nullptr) {
        linesView_->linesAboutToChange();  // entry numbers may
    }
    if (draft.changesRows_ && rowsView_ != nullptr) {
        rowsView_->rowsAboutToChange();
        if (draft.going_) {
            rowsView_->recordsAboutToGo(*draft.going_);
        }
    }
    commitLines(draft);
    exchange(logs_, draft.logs_);
    exchange(filters_, draft.filters_);
    exchange(shown_, draft.shown_);
    exchange(parked_, draft.parked_);
    exchange(expandedMeanwhile_, draft.expandedMeanwhile_);
    exchange(bookmarked_, draft.bookmarked_);
    noted_ = draft.noted_;
    if (rowsView_ == nullptr) {
        return;
    }
    if (draft.changesRows_) {
        rowsView_->rowsChanged(std::move(draft.rows_));
    } else {
        rowsView_->marksChanged(draft.markedOne());
    }
}

void zelqSession::commitLines(zelqSessionDraft& draft) noexcept {
    if (draft.collapsing_.size() == 1) {
        dropCollapsed(*draft.collapsing_.front());
    } else if (draft.expanded_ || draft.collapsesInPlace_) {
        if (linesView_ != nullptr) {
            linesView_->linesAboutToBeReset(draft.longestLine_);
        }
        if (draft.expanded_) {
            expanded_.swap(*draft.expanded_);
        } else {
            expanded_.removeCollapsed();
        }
        if (linesView_ != nullptr) {
            linesView_->linesReset();
        }
    }
}

void zelqSession::dropCollapsed(const zelqBCnrObject& record) noexcept {
    const zelqExpandedRecords::Lines lines = expanded_.linesOf(record);
    if (linesView_ != nullptr) {
        linesView_->linesAboutToBeRemoved(lines.first, lines.count);
    }
    expanded_.remove(record);
    if (linesView_ != nullptr) {
        linesView_->linesRemoved();
    }
}

void zelqSession::setBookmarked(zelqBCnrObject& record, bool bookmarked) {
    if (record.isIn(zelqBCnrObject::Bookmarked) == bookmarked) {
        return;
    }
    const Transition transition(*this);
    if (bookmarked) {
        bookmarked_.push_back(&record);
    } else {
        std::erase(bookmarked_, &record);
    }
    record.setIn(zelqBCnrObject::Bookmarked, bookmarked);
}

void zelqSession::endListing() noexcept {
    if (--listings_ == 0) {
        for (zelqBCnrObject* record : expandedMeanwhile_) {
            record->nextAddressForm();
        }
        expandedMeanwhile_ = {};
    }
}
