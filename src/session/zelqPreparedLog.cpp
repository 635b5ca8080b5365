#include "session/zelqPreparedLog.h"

#include <new>
#include <stop_token>
#include <utility>

#include "log/zelqMemory.h"

namespace {

/// Throws zelqStopped.
zelqRecordList inOrder(zelqLog& log, std::int32_t firstNumber, const std::stop_token& stop) {
    zelqRecordList list(zelqBCnrObject::InContainer);
    log.number(firstNumber);
    // The table takes as much again as the list.
    zelqHeap::require(2 * log.size() * sizeof(void*));
    list.reserve(log.size());
    log.forEach([&list](zelqBCnrObject& record) { list.add(record); });
    list.sort(zelqParallel(stop));
    return list;
}

}  // namespace

zelqPreparedLog zelqPreparedLog::read(const zelqReadRequest& request,
                                      std::optional<std::int32_t> firstNumber) {
    const auto findings = std::make_shared<zelqLogFindings>();
    zelqReadRequest collecting = request;
    collecting.findings = [&request, &findings](const zelqFinding& finding) {
        findings->add(finding);
        if (request.findings) {
            request.findings(finding);
        }
    };
    zelqReadResult result = zelqLogReader::read(collecting);
    zelqRecordList shown(zelqBCnrObject::InContainer);
    if (result.log != nullptr && firstNumber.has_value()) {
        try {
            shown = inOrder(*result.log, *firstNumber, request.stop);
        } catch (const std::bad_alloc&) {
            result.giveUpForMemory();
        } catch (const zelqStopped&) {
            return {};
        }
    }
    if (result.log != nullptr) {
        if (result.findings == 0) {  // also for a log that was given up
            *findings = {};
        }
        findings->problem = result.status.text;
        result.log->setFindings(findings);
    }
    return {.log = std::move(result.log),
            .status = std::move(result.status),
            .firstEntryIsDamaged = result.firstEntryIsDamaged,
            .shown = std::move(shown)};
}
