#include "filters/zelqFilters.h"

#include "filters/zelqFEntryType.h"
#include "filters/zelqFFunction.h"
#include "filters/zelqFValue.h"

std::unique_ptr<zelqFilter> zelqFilters::makeDialog(zelqFilterKind kind,
                                                    const zelqFilterContext& context) {
    switch (kind) {
        case zelqFilterKind::EntryType:
            return std::make_unique<zelqFEntryType>(context);
        case zelqFilterKind::Time:
            return std::make_unique<zelqFTime>(context);
        case zelqFilterKind::Date:
            return std::make_unique<zelqFDate>(context);
        case zelqFilterKind::Pid:
            return std::make_unique<zelqFPid>(context);
        case zelqFilterKind::Tid:
            return std::make_unique<zelqFTid>(context);
        case zelqFilterKind::MajorError:
            return std::make_unique<zelqFMaj>(context);
        case zelqFilterKind::MinorError:
            return std::make_unique<zelqFMin>(context);
        case zelqFilterKind::DetectPoint:
            return std::make_unique<zelqFDet>(context);
        case zelqFilterKind::Function:
            break;
    }
    return std::make_unique<zelqFFunction>(context);
}
