#include "session/zelqRecordTest.h"

#include <algorithm>
#include <set>

zelqEntryTypeTest::Category zelqEntryTypeTest::categoryOf(std::uint16_t entryType) noexcept {
    switch (entryType) {
        case 0x0002:
        case 0x0005:
        case 0x0006:
        case 0x0015:
        case 0x1002:
            return Category::Trace;
        case 0x0001:
        case 0x0003:
        case 0x0004:
        case 0x0013:
        case 0x1001:
            return Category::Error;
        default:
            return Category::Message;
    }
}

std::uint32_t zelqValueTest::valueOf(zelqFilterKind kind, const zelqBCnrObject& record) noexcept {
    switch (kind) {
        case zelqFilterKind::Time:
            return record.time().seconds;
        case zelqFilterKind::Date:
            return record.date().packed();
        case zelqFilterKind::Pid:
            return record.pid();
        case zelqFilterKind::Tid:
            return record.tid();
        case zelqFilterKind::MajorError:
            return record.majorError();
        case zelqFilterKind::MinorError:
            return record.minorError();
        case zelqFilterKind::DetectPoint:
            return record.detectPoint();
        case zelqFilterKind::EntryType:
        case zelqFilterKind::Function:
            break;  // their tests know no values
    }
    return 0;
}

std::vector<std::uint32_t> zelqValueTest::valuesOf(zelqFilterKind kind,
                                                   const zelqLogCollection& records) {
    Numbers distinct;
    records.forEach([kind, &distinct](const zelqBCnrObject& record) {
        distinct.insert(valueOf(kind, record));
    });
    std::vector<std::uint32_t> values(distinct.begin(), distinct.end());
    std::sort(values.begin(), values.end());
    return values;
}

std::vector<std::string> zelqFunctionTest::valuesOf(const zelqLogCollection& records) {
    tsl::robin_set<const char*, zelqKeyedHash> known;
    std::set<std::string> names;
    records.forEach([&known, &names](const zelqBCnrObject& record) {
        const zelqText name = record.function();
        if (known.size() == kMostKnown) {
            known.clear();
        }
        if (known.insert(name.key()).second) {
            names.insert(name.string());
        }
    });
    return {names.begin(), names.end()};
}
