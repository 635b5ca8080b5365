#include "filters/zelqFEntryType.h"

#include "resources/zelqIds.h"

zelqFEntryType::zelqFEntryType(const zelqFilterContext& context)
    : zelqFilter(context, zelqId::kEntryTypePrompt) {}
