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
    const std::array selected{shown.showTrace, shown.showError, shown.showMessage};
    list().setItems(
        kItems.size(), [](std::size_t item) { return kItems[item]; },
        [&selected](std::size_t item) { return selected[item]; });
}

void zelqFEntryType::takeSelection() {
    const std::vector<bool> selected = list().selectedItems();
    const zelqEntryTypeTest test{
        .showTrace = selected[0], .showError = selected[1], .showMessage = selected[2]};
    setTest(test);
    if (test.showTrace && test.showError && test.showMessage) {
        requestRemoval();  // a filter that hides nothing is not needed
    }
}
