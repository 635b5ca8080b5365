#include "session/zelqFilterStage.h"

#include <algorithm>
#include <iterator>
#include <numeric>

#include "log/zelqMemory.h"

namespace {

using Result = zelqFilterStage::Result;

/// What one thread finds, apart from what others write.
struct alignas(64) PartResult {
    Result result;
};

/// Adds those records to a list that it does not hold yet.
void addMissing(zelqFilterStage::Records& list, std::span<zelqBCnrObject* const> records,
                const zelqParallel& parallel) {
    if (records.empty()) {
        return;
    }
    list.reserve(list.size() + records.size());
    const std::size_t before = list.size();
    const auto mark = [&parallel, &list, before](bool marked) {
        parallel.forEach(std::span(list).first(before), [marked](zelqBCnrObject& record) {
            record.setIn(zelqBCnrObject::Marked, marked);
        });
    };
    mark(true);
    std::copy_if(
        records.begin(), records.end(), std::back_inserter(list),
        [](const zelqBCnrObject* record) { return !record->isIn(zelqBCnrObject::Marked); });
    mark(false);
}

void append(zelqFilterStage::Records& all, zelqFilterStage::Records& part) {
    all.insert(all.end(), part.begin(), part.end());
    part = {};
}

}  // namespace

zelqFilterStage::zelqFilterStage(zelqFilterKind kind, zelqRecordTest test)
    : kind_(kind), test_(std::make_shared<const zelqRecordTest>(std::move(test))) {}

/// `forRange(first, end, visit)` calls `visit(zelqBCnrObject&)` for a range of the `count` input
/// records.
template <typename ForRange>
Result zelqFilterStage::run(std::size_t count, const zelqParallel& parallel,
                            const ForRange& forRange) const {
    // For both lists together. Those of the first thread become those of all.
    const std::size_t threads = zelqParallel::partsOf(count);
    zelqHeap::require(count * sizeof(void*) * (threads > 1 ? 2 : 1));
    std::vector<PartResult> parts(threads);
    for (std::size_t part = 0; part < threads; ++part) {
        const std::size_t most =
            part == 0 ? count : std::min(count, count / threads + zelqParallel::kChunk * 2);
        parts[part].result.passed.reserve(most);
        parts[part].result.rejected.reserve(most);
    }
    std::visit(
        [&](const auto& test) {
            parallel.walk(count, [&](std::size_t part) {
                return [&result = parts[part].result, &forRange, matches = test.matcher()](
                           std::size_t first, std::size_t end) mutable {
                    forRange(first, end, [&result, &matches](zelqBCnrObject& record) {
                        (matches(record) ? result.passed : result.rejected).push_back(&record);
                    });
                };
            });
        },
        *test_);
    Result all = std::move(parts.front().result);
    for (auto part = parts.begin() + 1; part != parts.end(); ++part) {
        append(all.passed, part->result.passed);
        append(all.rejected, part->result.rejected);
    }
    return all;
}

Result zelqFilterStage::filterAll(const zelqLogCollection& records,
                                  const zelqParallel& parallel) const {
    return run(records.size(), parallel,
               [&records](std::size_t first, std::size_t end, const auto& visit) {
                   records.forEach(first, end, visit);
               });
}

Result zelqFilterStage::filterSequence(std::span<zelqBCnrObject* const> records,
                                       const zelqParallel& parallel) const {
    return run(records.size(), parallel,
               [records](std::size_t first, std::size_t end, const auto& visit) {
                   for (zelqBCnrObject* record : records.subspan(first, end - first)) {
                       visit(*record);
                   }
               });
}

Result zelqFilterStage::filterAgain(Records& records, const zelqParallel& parallel) const {
    addMissing(records, result_.rejected, parallel);
    return filterSequence(records, parallel);
}

Result zelqFilterStage::resultWithout(int logIndex, const zelqParallel& parallel) const {
    if (logIndex == zelqLogCollection::kAllLogs) {
        return {};
    }
    const auto stays = [logIndex](std::size_t /*row*/, const zelqBCnrObject& record) {
        return record.logIndex() != logIndex;
    };
    return {.passed = parallel.select(result_.passed, stays),
            .rejected = parallel.select(result_.rejected, stays)};
}
