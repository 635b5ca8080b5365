#include "session/zelqFilterStage.h"

#include <algorithm>
#include <iterator>

namespace {

/// Adds those records to a list that it does not hold yet.
void addMissing(std::vector<zelqBCnrObject*>& list, std::span<zelqBCnrObject* const> records) {
    if (records.empty()) {
        return;
    }
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

bool zelqFilterStage::passes(const zelqBCnrObject& record) const {
    return std::visit([&record](const auto& test) { return test.matcher()(record); }, test_);
}

/// `forEachRecord(visit)` calls `visit(zelqBCnrObject&)` for each of the `count` input records.
template <typename ForEachRecord>
void zelqFilterStage::run(std::size_t count, const ForEachRecord& forEachRecord) {
    passed_.clear();
    rejected_.clear();
    passed_.reserve(count);
    rejected_.reserve(count);
    std::visit(
        [this, &forEachRecord](const auto& test) {
            auto matches = test.matcher();
            forEachRecord([this, &matches](zelqBCnrObject& record) {
                (matches(record) ? passed_ : rejected_).push_back(&record);
            });
        },
        test_);
}

void zelqFilterStage::filterAll(const zelqLogCollection& records) {
    run(records.size(), [&records](const auto& visit) { records.forEach(visit); });
}

void zelqFilterStage::filterSequence(zelqFilterStage& previous) {
    addMissing(previous.passed_, rejected_);
    run(previous.passed_.size(), [&previous](const auto& visit) {
        for (zelqBCnrObject* record : previous.passed_) {
            visit(*record);
        }
    });
}

void zelqFilterStage::dropLog(int logIndex) {
    for (Records* records : {&passed_, &rejected_}) {
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
