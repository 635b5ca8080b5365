#include "session/zelqSession.h"

#include <algorithm>
#include <utility>

#include "session/zelqSessionTransition.h"

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

int zelqSession::add(const std::string& name, zelqPreparedLog prepared) {
    const int slot = logs_.slotFor(name);
    if (slot == zelqLogCollection::kNoSlot) {
        return slot;
    }
    const Transition transition(*this);
    const RowsChange change(*this);
    if (filters_.empty()) {
        show(std::move(prepared), name, slot);
    } else {
        showFiltered(std::move(prepared), name, slot);
    }
    expanded_.refreshKeys();
    return slot;
}

zelqSession::Logs zelqSession::load(const std::string& name, zelqPreparedLog prepared) {
    const Transition transition(*this);
    const RowsChange change(*this, zelqRowsView::Fate::AllGo);
    if (name.empty()) {
        return unload(zelqLogCollection::kAllLogs);
    }
    // All that needs memory is done before the old logs are taken out.
    zelqLogCollection loaded(logs_.dataSources().cache());
    const std::size_t size = prepared.log->size();
    loaded.reserveOne();
    loaded.append(std::move(prepared.log), name, loaded.slotFor(name));
    zelqFilterChain::Results results = filters_.resultsOf(loaded);
    zelqRecordList rows = std::move(prepared.shown);
    if (!filters_.empty() || rows.size() != size) {
        rows.removeAll();
        rows.reserve(size);
    }
    Logs removed = unload(zelqLogCollection::kAllLogs);
    logs_ = std::move(loaded);
    shown_ = std::move(rows);
    if (filters_.empty()) {
        showAll();
    } else {
        filters_.take(std::move(results));
        showResult(0);
    }
    return removed;
}

void zelqSession::show(zelqPreparedLog prepared, std::string name, int slot) {
    logs_.reserveOne();
    // A log that is in order joins rows that show all records in less than a sort takes.
    if (shown_.size() == logs_.size() && prepared.shown.size() == prepared.log->size()) {
        shown_.merge(std::move(prepared.shown));
    } else {
        prepared.shown.removeAll();
        shown_.reserve(logs_.size() + prepared.log->size());
    }
    logs_.append(std::move(prepared.log), std::move(name), slot);
    showAll();
}

/// Shows all records. There is room for them in the list.
void zelqSession::showAll() noexcept {
    std::int32_t next = 0;
    for (const auto& [slot, log] : logs_.logs()) {
        if (log->number(next)) {
            shown_.forgetOrder();
        }
        next += static_cast<std::int32_t>(log->size());
    }
    // A list that holds as many records as there are holds them all: a merged log then costs
    // nothing for those that were shown before.
    if (shown_.size() != logs_.size()) {
        logs_.forEach([this](zelqBCnrObject& record) { shown_.add(record); });
    }
    shown_.sort();
}

void zelqSession::showFiltered(zelqPreparedLog prepared, std::string name, int slot) {
    logs_.reserveOne();
    shown_.reserve(logs_.size() + prepared.log->size());
    prepared.shown.removeAll();  // a filter was installed while the log was read
    logs_.append(std::move(prepared.log), std::move(name), slot);
    try {
        filters_.run(logs_);
    } catch (...) {
        logs_.removeLast();
        throw;
    }
    showResult(slot);
}

/// Shows the records of a slot that the last filter let through. There is room for them.
void zelqSession::showResult(int slot) noexcept {
    if (filters_.result().empty()) {
        return;
    }
    const bool sorts = !shown_.empty();
    for (const auto& [logSlot, log] : logs_.logs()) {
        log->forgetNumbers();
    }
    shown_.forgetOrder();
    std::int32_t place = 0;
    for (zelqBCnrObject* record : filters_.result()) {
        if (record->logIndex() == slot) {
            record->setEntryIndex(place);
            shown_.add(*record);
        }
        ++place;
    }
    if (sorts) {
        shown_.sort();
    }
}

zelqSession::Logs zelqSession::unload(int slot) {
    const Transition transition(*this);
    const bool all = slot == zelqLogCollection::kAllLogs;
    const RowsChange change(*this, all ? zelqRowsView::Fate::AllGo : zelqRowsView::Fate::Stay);
    Logs removed = logs_.remove(slot);
    collapseAll();
    if (rowsView_ != nullptr) {
        rowsView_->recordsAboutToGo(slot);
    }
    for (zelqRecordList* list : {&shown_, &parked_}) {
        if (all) {
            list->dropAll();
        } else {
            list->dropLog(slot);
        }
    }
    for (std::vector<zelqBCnrObject*>* records : {&expandedMeanwhile_, &bookmarked_}) {
        std::erase_if(*records, [all, slot](const zelqBCnrObject* record) {
            return all || record->logIndex() == slot;
        });
    }
    filters_.dropLog(slot);
    return removed;
}

void zelqSession::applyFilter(std::unique_ptr<zelqFilterStage> filter) {
    const Transition transition(*this);
    const RowsChange change(*this);
    shown_.reserve(logs_.size());
    filters_.apply(std::move(filter), logs_);
    shown_.assign(filters_.result());
}

void zelqSession::removeFilter(zelqFilterKind kind) {
    if (filters_.find(kind) == nullptr) {
        return;
    }
    const Transition transition(*this);
    const RowsChange change(*this);
    shown_.reserve(logs_.size());
    shown_.addAll(filters_.remove(kind)->rejected());
}

void zelqSession::removeAllFilters() {
    const Transition transition(*this);
    const RowsChange change(*this);
    shown_.reserve(logs_.size());
    for (const auto& filter : filters_.removeAll()) {
        shown_.addAll(filter->rejected());
    }
    // Selected records are looked for among those that have something to collapse, which are fewer.
    const auto isSelectedRow = [this](const zelqBCnrObject& record) {
        return record.selected() && shown_.contains(record);
    };
    zelqBCnrObject* one = nullptr;
    std::size_t collapsed = 0;
    expanded_.forEach([&](zelqBCnrObject& record) {
        if (isSelectedRow(record)) {
            markCollapsed(record);
            one = ++collapsed == 1 ? &record : nullptr;
        }
    });
    for (const auto& [slot, log] : logs_.logs()) {
        for (zelqBCnrObject* record : log->unexpandable()) {
            if (isSelectedRow(*record)) {
                markCollapsed(*record);
            }
        }
    }
    if (collapsed != 0) {
        dropCollapsed(one);
    }
    showAll();
    expanded_.refreshKeys();
}

void zelqSession::sortShown() {
    if (!shown_.isSorted()) {
        const Transition transition(*this);
        const RowsChange change(*this);
        shown_.sort();
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

void zelqSession::displayAll() {
    if (parked_.empty()) {
        return;
    }
    const Transition transition(*this);
    const RowsChange change(*this);
    shown_.reserve(logs_.size());
    const bool sorts = !shown_.empty();
    parked_.moveIf(shown_, [](std::size_t /*row*/, const zelqBCnrObject&) { return true; });
    if (sorts) {
        shown_.sort();
    }
}

void zelqSession::displayOnly(zelqDisplayed displayed) {
    const Transition transition(*this);
    const RowsChange change(*this);
    parked_.reserve(std::min(parked_.size() + shown_.size(), logs_.size()));
    const bool collapses = displayed != zelqDisplayed::Expanded;
    zelqBCnrObject* one = nullptr;
    std::size_t collapsed = 0;
    shown_.moveIf(parked_, [&](std::size_t /*row*/, zelqBCnrObject& record) {
        if (stays(record, displayed)) {
            return false;
        }
        if (collapses && markCollapsed(record)) {
            one = ++collapsed == 1 ? &record : nullptr;
        }
        return true;
    });
    if (collapsed != 0) {
        dropCollapsed(one);
    }
}
