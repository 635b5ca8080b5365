#include "session/zelqFilterStage.h"

#include <algorithm>
#include <iterator>

namespace {

/// Adds those records to a list that it does not hold yet.
void addMissing(zelqFilterStage::Records& list, std::span<zelqBCnrObject* const> records) {
    if (records.empty()) {
        return;
    }
    list.reserve(list.size() + records.size());
    for (zelqBCnrObject* record : list) {
        record->setIn(zelqBCnrObject::Marked, true);
    }
    std::copy_if(
        records.begin(), records.end(), std::back_inserter(list),
        [](const zelqBCnrObject* record) { return !record->isIn(zelqBCnrObject::Marked); });
    for (zelqBCnrObject* record : list) {
        record->setIn(zelqBCnrObject::Marked, false);
    }
}

}  // namespace

zelqFilterStage::zelqFilterStage(zelqFilterKind kind, zelqRecordTest test)
    : kind_(kind), test_(std::move(test)) {}

/// `forEachRecord(visit)` calls `visit(zelqBCnrObject&)` for each of the `count` input records.
template <typename ForEachRecord>
zelqFilterStage::Result zelqFilterStage::run(std::size_t count,
                                             const ForEachRecord& forEachRecord) const {
    zelqHeap::require(count * sizeof(void*));  // for both lists together
    Result result;
    result.passed.reserve(count);
    result.rejected.reserve(count);
    std::visit(
        [&result, &forEachRecord](const auto& test) {
            auto matches = test.matcher();
            forEachRecord([&result, &matches](zelqBCnrObject& record) {
                (matches(record) ? result.passed : result.rejected).push_back(&record);
            });
        },
        test_);
    return result;
}

zelqFilterStage::Result zelqFilterStage::filterAll(const zelqLogCollection& records) const {
    return run(records.size(), [&records](const auto& visit) { records.forEach(visit); });
}

zelqFilterStage::Result zelqFilterStage::filterSequence(
    std::span<zelqBCnrObject* const> records) const {
    return run(records.size(), [records](const auto& visit) {
        for (zelqBCnrObject* record : records) {
            visit(*record);
        }
    });
}

zelqFilterStage::Result zelqFilterStage::filterAgain(Records& records) const {
    addMissing(records, result_.rejected);
    return filterSequence(records);
}

void zelqFilterStage::dropLog(int logIndex) noexcept {
    for (Records* records : {&result_.passed, &result_.rejected}) {
        if (logIndex == zelqLogCollection::kAllLogs) {
            *records = Records();  // gives the memory back, too
        } else {
            std::erase_if(*records, [logIndex](const zelqBCnrObject* record) {
                return record->logIndex() == logIndex;
            });
            records->shrink_to_fit();
        }
    }
}
