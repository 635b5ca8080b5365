#include "session/zelqPreparedLog.h"

#include <new>
#include <utility>

namespace {

zelqRecordList inOrder(zelqLog& log, std::int32_t firstNumber) {
    zelqRecordList list(zelqBCnrObject::InContainer);
    log.number(firstNumber);
    list.reserve(log.size());
    log.forEach([&list](zelqBCnrObject& record) { list.add(record); });
    list.sort();
    return list;
}

}  // namespace

zelqPreparedLog zelqPreparedLog::read(const zelqReadRequest& request,
                                      std::optional<std::int32_t> firstNumber) {
    zelqReadResult result = zelqLogReader::read(request);
    zelqRecordList shown(zelqBCnrObject::InContainer);
    if (result.log != nullptr && firstNumber.has_value()) {
        try {
            shown = inOrder(*result.log, *firstNumber);
        } catch (const std::bad_alloc&) {
            result.giveUpForMemory();
        }
    }
    return {.log = std::move(result.log),
            .status = std::move(result.status),
            .shown = std::move(shown)};
}
