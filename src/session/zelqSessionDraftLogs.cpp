// Steps that bring logs and take them out.

#include <algorithm>
#include <iterator>
#include <utility>

#include "session/zelqSessionDraft.h"

namespace {

constexpr int kAllLogs = zelqLogCollection::kAllLogs;

std::size_t countSelected(const zelqLog& log) noexcept {
    std::size_t count = 0;
    log.forEach([&count](const zelqBCnrObject& record) { count += record.selected() ? 1U : 0U; });
    return count;
}

}  // namespace

void zelqSessionDraft::add(const std::string& name, zelqPreparedLog prepared) {
    const std::size_t size = prepared.log->size();
    const bool showsAll = shown().size() == logs().size();
    beginRows(Selection::Stays, size);
    logs_ = session_.logs_;
    const int slot = logs_->slotFor(name);
    logs_->append(std::move(prepared.log), name, slot);
    if (filters().empty() && showsAll && prepared.shown.size() == size) {
        // A log that is in order joins rows that show all records in less than a sort takes.
        showAll(shown().merged(prepared.shown));
        return;
    }
    // A filter may have been installed while the log was read.
    prepared.shown.setMembership(prepared.shown.records(), false, parallel_);
    if (filters().empty()) {
        zelqRecordList rows = shown().copy(logs().size());
        rows.addMissing(logs(), parallel_);
        showAll(std::move(rows));
    } else {
        filters().run(logs(), parallel_);
        addResult(slot);
    }
}

void zelqSessionDraft::load(const std::string& name, zelqPreparedLog prepared) {
    if (name.empty()) {
        unload(kAllLogs);
        return;
    }
    beginRows(Selection::Goes);
    const std::size_t size = prepared.log->size();
    dropAll();
    logs_->append(std::move(prepared.log), name, logs_->slotFor(name));
    filters().runAnew(logs(), parallel_);
    if (filters().empty() && prepared.shown.size() == size) {
        showAll(std::move(prepared.shown));
        return;
    }
    prepared.shown.setMembership(prepared.shown.records(), false, parallel_);
    if (filters().empty()) {
        zelqRecordList rows(zelqBCnrObject::InContainer);
        rows.addMissing(logs(), parallel_);
        showAll(std::move(rows));
    } else {
        addResult(0);
    }
}

/// Shows these rows, which are all records.
void zelqSessionDraft::showAll(zelqRecordList rows) noexcept {
    std::int32_t next = 0;
    bool renumbers = false;
    for (const auto& [slot, log] : logs().logs()) {
        renumbers = log->number(next) || renumbers;
        next += static_cast<std::int32_t>(log->size());
    }
    if (renumbers) {
        rows.forgetOrder();
        if (!expanded_) {
            session_.expanded_.refreshKeys();
        }
    }
    rows.sortToEnd();
    shown_ = std::move(rows);
}

/// Adds the records of a slot that the last filter let through to the rows.
void zelqSessionDraft::addResult(int slot) {
    const std::span<zelqBCnrObject* const> result = filters().result();
    if (result.empty()) {
        return;
    }
    const auto isOfSlot = [slot](std::size_t /*row*/, const zelqBCnrObject& record) {
        return record.logIndex() == slot;
    };
    const Records added = parallel_.select(result, isOfSlot);
    zelqRecordList rows = shown().copy(shown().size() + added.size());
    rows.addMissing(added, parallel_);
    zelqParallel::walkToEnd(result.size(), [&](std::size_t /*part*/) {
        return [&](std::size_t first, std::size_t end) {
            for (; first < end; ++first) {
                if (isOfSlot(first, *result[first])) {
                    result[first]->setEntryIndex(static_cast<std::int32_t>(first));
                }
            }
        };
    });
    for (const auto& [logSlot, log] : logs().logs()) {
        log->forgetNumbers();
    }
    rows.forgetOrder();
    if (!shown().empty()) {
        rows.sortToEnd();
    }
    shown_ = std::move(rows);
}

/// Nothing of the logs that were loaded is left.
void zelqSessionDraft::dropAll() {
    going_ = kAllLogs;
    expanded_.emplace(session_.expanded_.newTree());
    logs_.emplace(session_.logs_.dataSources().cache());
    shown_.emplace(zelqBCnrObject::InContainer);
    parked_.emplace(zelqBCnrObject::InHiddenContainer);
    expandedMeanwhile_.emplace();
    bookmarked_.emplace();
}

void zelqSessionDraft::unload(int slot) {
    beginRows(slot == kAllLogs ? Selection::Goes : Selection::Stays);
    filters().dropLog(slot, parallel_);
    if (slot == kAllLogs) {
        dropAll();
        return;
    }
    going_ = slot;
    logs_ = session_.logs_;
    logs_->remove(slot);
    zelqRecordList rows = shown().without(slot, parallel_);
    zelqRecordList hidden = parked().without(slot, parallel_);
    const auto stays = [slot](const zelqBCnrObject* record) { return record->logIndex() != slot; };
    const auto rest = [&stays](const Records& records) {
        Records kept;
        std::ranges::copy_if(records, std::back_inserter(kept), stays);
        return kept;
    };
    expandedMeanwhile_ = rest(session_.expandedMeanwhile_);
    bookmarked_ = rest(session_.bookmarked_);
    if (noted_ != 0) {
        for (const auto& [logSlot, log] : session_.logs_.logs()) {
            noted_ -= logSlot == slot ? countSelected(*log) : 0;
        }
    }
    collapseAll();
    shown_ = std::move(rows);
    parked_ = std::move(hidden);
}
