#include "filters/zelqFValue.h"

#include "resources/zelqIds.h"

zelqFTime::zelqFTime(const zelqFilterContext& context)
    : zelqFilter(context, zelqFilterKind::Time, zelqId::kTimePrompt) {}

zelqFDate::zelqFDate(const zelqFilterContext& context)
    : zelqFilter(context, zelqFilterKind::Date, zelqId::kDatePrompt) {}

zelqFPid::zelqFPid(const zelqFilterContext& context)
    : zelqFilter(context, zelqFilterKind::Pid, zelqId::kPidPrompt) {}

zelqFTid::zelqFTid(const zelqFilterContext& context)
    : zelqFilter(context, zelqFilterKind::Tid, zelqId::kTidPrompt) {}

zelqFMaj::zelqFMaj(const zelqFilterContext& context)
    : zelqFilter(context, zelqFilterKind::MajorError, zelqId::kMajorErrorPrompt) {}

zelqFMin::zelqFMin(const zelqFilterContext& context)
    : zelqFilter(context, zelqFilterKind::MinorError, zelqId::kMinorErrorPrompt) {}

zelqFDet::zelqFDet(const zelqFilterContext& context)
    : zelqFilter(context, zelqFilterKind::DetectPoint, zelqId::kDetectPointPrompt) {}
