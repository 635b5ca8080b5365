#include "filters/zelqFValue.h"

#include "resources/zelqIds.h"

zelqFTime::zelqFTime(const zelqFilterContext& context) : zelqFilter(context, zelqId::kTimePrompt) {}

zelqFDate::zelqFDate(const zelqFilterContext& context) : zelqFilter(context, zelqId::kDatePrompt) {}

zelqFPid::zelqFPid(const zelqFilterContext& context) : zelqFilter(context, zelqId::kPidPrompt) {}

zelqFTid::zelqFTid(const zelqFilterContext& context) : zelqFilter(context, zelqId::kTidPrompt) {}

zelqFMaj::zelqFMaj(const zelqFilterContext& context)
    : zelqFilter(context, zelqId::kMajorErrorPrompt) {}

zelqFMin::zelqFMin(const zelqFilterContext& context)
    : zelqFilter(context, zelqId::kMinorErrorPrompt) {}

zelqFDet::zelqFDet(const zelqFilterContext& context)
    : zelqFilter(context, zelqId::kDetectPointPrompt) {}
