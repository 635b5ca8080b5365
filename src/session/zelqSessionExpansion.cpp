// Expanding and collapsing records, and what of it a listing that is written meanwhile sees.

#include <algorithm>
#include <iterator>

#include "session/zelqSessionTransition.h"

namespace {

/// Brackets a change of many lines.
class LinesReset {
public:
    LinesReset(zelqLinesView* view, std::span<zelqBCnrObject* const> records) : view_(view) {
        if (view_ != nullptr) {
            view_->linesAboutToBeReset(records);
        }
    }
    LinesReset(const LinesReset&) = delete;
    LinesReset& operator=(const LinesReset&) = delete;
    ~LinesReset() {
        if (view_ != nullptr) {
            view_->linesReset();
        }
    }

private:
    zelqLinesView* view_;
};

}  // namespace

void zelqSession::setExpanded(std::span<zelqBCnrObject* const> records, bool expanded) {
    const Transition transition(*this);
    if (expanded) {
        expand(records);
    } else {
        zelqBCnrObject* one = nullptr;
        std::size_t collapsed = 0;
        for (zelqBCnrObject* record : records) {
            if (markCollapsed(*record)) {
                one = ++collapsed == 1 ? record : nullptr;
            }
        }
        if (collapsed != 0) {
            dropCollapsed(one);
        }
    }
    if (rowsView_ != nullptr && rowChanges_ == 0) {
        rowsView_->marksChanged(records.size() == 1 ? records.front() : nullptr);
    }
}

void zelqSession::expand(std::span<zelqBCnrObject* const> records) {
    std::size_t changes = 0;
    std::size_t unexpandable = 0;
    for (const zelqBCnrObject* record : records) {
        unexpandable += record->hasExpansion() ? 0U : 1U;
        changes += record->hasExpansion() && !record->expanded() ? 1U : 0U;
    }
    std::vector<zelqBCnrObject*> changed;
    changed.reserve(changes);
    std::copy_if(
        records.begin(), records.end(), std::back_inserter(changed),
        [](const zelqBCnrObject* record) { return record->hasExpansion() && !record->expanded(); });
    const bool meanwhile = listings_ != 0;
    if (meanwhile) {
        expandedMeanwhile_.reserve(expandedMeanwhile_.size() + changes);
    }
    const auto form = [meanwhile](const zelqBCnrObject& record) {
        return meanwhile ? zelqAddressForm::True : record.addressForm();
    };
    if (changes == 1) {
        insertOne(*changed.front(), form(*changed.front()));
    } else if (changes != 0) {
        const LinesReset reset(linesView_, changed);
        expanded_.insertAll(changed, form);
    }
    for (zelqBCnrObject* record : changed) {
        record->setExpandMark(zelqExpandMark::Expanded);
        if (meanwhile) {
            expandedMeanwhile_.push_back(record);
        } else {
            record->nextAddressForm();
        }
    }
    if (unexpandable != 0) {
        for (zelqBCnrObject* record : records) {
            if (!record->hasExpansion()) {
                record->setExpandMark(zelqExpandMark::Blank);
            }
        }
    }
}

void zelqSession::insertOne(zelqBCnrObject& record, zelqAddressForm form) {
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
}

bool zelqSession::markCollapsed(zelqBCnrObject& record) noexcept {
    const bool wasExpanded = record.expanded();
    if (!record.hasExpansion()) {
        record.setExpandMark(zelqExpandMark::Blank);
    } else if (wasExpanded) {
        record.setExpandMark(zelqExpandMark::Collapsed);
    }
    return wasExpanded;
}

void zelqSession::dropCollapsed(zelqBCnrObject* one) {
    if (one == nullptr) {
        const LinesReset reset(linesView_, {});
        expanded_.removeCollapsed();
        return;
    }
    const zelqExpandedRecords::Lines lines = expanded_.linesOf(*one);
    if (linesView_ != nullptr) {
        linesView_->linesAboutToBeRemoved(lines.first, lines.count);
    }
    expanded_.remove(*one);
    if (linesView_ != nullptr) {
        linesView_->linesRemoved();
    }
}

void zelqSession::collapseAll() {
    const Transition transition(*this);
    if (expanded_.recordCount() != 0) {
        const LinesReset reset(linesView_, {});
        expanded_.forEach(
            [](zelqBCnrObject& record) { record.setExpandMark(zelqExpandMark::Collapsed); });
        expanded_.clear();
    }
    for (const auto& [slot, log] : logs_.logs()) {
        for (zelqBCnrObject* record : log->unexpandable()) {
            record->setExpandMark(zelqExpandMark::Blank);
        }
    }
    if (rowsView_ != nullptr && rowChanges_ == 0) {
        rowsView_->marksChanged(nullptr);
    }
}

void zelqSession::endListing() noexcept {
    if (--listings_ == 0) {
        for (zelqBCnrObject* record : expandedMeanwhile_) {
            record->nextAddressForm();
        }
        expandedMeanwhile_ = {};
    }
}
