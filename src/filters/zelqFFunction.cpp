#include "filters/zelqFFunction.h"

#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "widgets/zelqValueList.h"

zelqFFunction::zelqFFunction(const zelqFilterContext& context)
    : zelqFilter(context, zelqFilterKind::Function, zelqId::kFunctionPrompt),
      choice_(zelqFunctionTest::valuesOf(context.records),
              context.activeFilters.choiceOf<zelqFunctionTest>(kind())) {
    list().setItems(
        [this](std::size_t item) { return QString::fromLatin1(choice_.offered()[item]); },
        choice_.accepted(), zelqResourceLibrary::text(zelqId::kNoFunctionName));
}

std::optional<zelqRecordTest> zelqFFunction::makeTest(std::vector<bool> selectedItems) {
    choice_.accept(std::move(selectedItems));
    return zelqFunctionTest(std::move(choice_));
}
