#pragma once

#include <memory>
#include <vector>

#include "session/zelqFilterChain.h"

/// A filter that lets through every other value of its kind.
inline std::unique_ptr<zelqFilterStage> halfFilter(zelqFilterKind kind,
                                                   const zelqLogCollection& records) {
    const auto half = [](auto choice) {
        std::vector<bool> items(choice.offered().size());
        for (std::size_t item = 0; item < items.size(); item += 2) {
            items[item] = true;
        }
        choice.accept(std::move(items));
        return choice;
    };
    zelqRecordTest test = zelqEntryTypeTest{.showTrace = true, .showError = true};
    if (kind == zelqFilterKind::Function) {
        test = zelqFunctionTest(
            half(zelqFunctionTest::Choice(zelqFunctionTest::valuesOf(records), nullptr)));
    } else if (kind != zelqFilterKind::EntryType) {
        test = zelqValueTest(
            kind, half(zelqValueTest::Choice(zelqValueTest::valuesOf(kind, records), nullptr)));
    }
    return std::make_unique<zelqFilterStage>(kind, std::move(test));
}
