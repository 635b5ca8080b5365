#include "filters/zelqFEntryType.h"

#include <array>

#include "resources/zelqIds.h"
#include "widgets/zelqValueList.h"

zelqFEntryType::zelqFEntryType(const zelqFilterContext& context)
    : zelqFilter(context, zelqFilterKind::EntryType, zelqId::kEntryTypePrompt) {
    zelqEntryTypeTest shown;
    if (const zelqFilterStage* const installed = context.activeFilters.find(kind())) {
        shown = std::get<zelqEntryTypeTest>(installed->test());
    }
    static const std::array kItems{QStringLiteral("TRC"), QStringLiteral("ERR"),
                                   QStringLiteral("MSG")};
    list().setItems([](std::size_t item) { return kItems[item]; },
                    {shown.showTrace, shown.showError, shown.showMessage});
}

std::optional<zelqRecordTest> zelqFEntryType::makeTest(std::vector<bool> selectedItems) {
    const zelqEntryTypeTest test{.showTrace = selectedItems[0],
                                 .showError = selectedItems[1],
                                 .showMessage = selectedItems[2]};
    if (test.showTrace && test.showError && test.showMessage) {
        return {};
    }
    return test;
}
