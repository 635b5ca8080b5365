#include "session/zelqRecordDisplay.h"

#include <cstdint>

namespace {

bool matches(int slot, int logSlot) {
    return slot == zelqLogCollection::kAllLogs || slot == logSlot;
}

}  // namespace

void showRecords(zelqRecordList& container, const zelqLogCollection& records, int slot) {
    if (records.size() == 0) {
        return;
    }
    std::int32_t next = 0;
    for (const auto& [logSlot, log] : records.logs()) {
        if (!matches(slot, logSlot)) {
            continue;
        }
        if (log->number(next)) {
            container.forgetOrder();
        }
        next += static_cast<std::int32_t>(log->size());
    }
    // A container that holds as many records as there are holds them all: a merged log then costs
    // nothing for those that were shown before.
    if (container.size() != records.size()) {
        container.reserve(records.size());
        for (const auto& [logSlot, log] : records.logs()) {
            if (matches(slot, logSlot)) {
                log->forEach([&container](zelqBCnrObject& record) { container.add(record); });
            }
        }
    }
    container.sort();
}

void showFilteredRecords(zelqRecordList& container, const zelqLogCollection& records,
                         std::span<zelqBCnrObject* const> result, int slot) {
    if (result.empty()) {
        return;
    }
    const bool sorts = !container.empty();
    for (const auto& [logSlot, log] : records.logs()) {
        log->forgetNumbers();
    }
    container.forgetOrder();
    std::int32_t place = 0;
    for (zelqBCnrObject* record : result) {
        if (matches(slot, record->logIndex())) {
            record->setEntryIndex(place);
            container.add(*record);
        }
        ++place;
    }
    if (sorts) {
        container.sort();
    }
}

void collapseUnexpandable(const zelqLogCollection& records) {
    for (const auto& [logSlot, log] : records.logs()) {
        for (zelqBCnrObject* record : log->unexpandable()) {
            record->setExpandMark(zelqExpandMark::Blank);
        }
    }
}
