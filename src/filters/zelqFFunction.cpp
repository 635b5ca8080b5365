#include "filters/zelqFFunction.h"

#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"

zelqFFunction::zelqFFunction(const zelqFilterContext& context)
    : zelqFilter(context, zelqId::kFunctionPrompt,
                 zelqResourceLibrary::text(zelqId::kNoFunctionName)) {}
