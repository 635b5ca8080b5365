#include "log/zelqPreparedLog.h"

#include <utility>

zelqPreparedLog prepareLog(const zelqReadRequest& request,
                           std::optional<std::int32_t> firstNumber) {
    zelqReadResult result = readLog(request);
    zelqPreparedLog prepared{.log = std::move(result.log), .problem = std::move(result.problem)};
    if (prepared.log != nullptr && firstNumber.has_value()) {
        prepared.log->number(*firstNumber);
        prepared.shown.reserve(prepared.log->size());
        prepared.log->forEach([&prepared](zelqBCnrObject& record) { prepared.shown.add(record); });
        prepared.shown.sort();
    }
    return prepared;
}
