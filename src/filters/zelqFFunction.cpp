#include "filters/zelqFFunction.h"

#include "resources/zelqIds.h"
#include "widgets/zelqValueList.h"

zelqFFunction::zelqFFunction(const zelqFilterContext& context)
    : zelqFilter(context, zelqFilterKind::Function, zelqId::kFunctionPrompt),
      choice_(zelqFunctionTest::valuesOf(context.records),
              context.activeFilters.choiceOf<zelqFunctionTest>(kind())) {
    list().setItems(
        choice_.offered.size(),
        [this](std::size_t item) { return QString::fromLatin1(choice_.offered[item]); },
        [this](std::size_t item) { return choice_.accepts(item); });
}

void zelqFFunction::takeSelection() {
    choice_.accept(list().selectedItems());
    setTest(zelqFunctionTest(choice_));
}
