#include "filters/zelqFValue.h"

#include "resources/zelqIds.h"
#include "widgets/zelqValueList.h"

namespace {

QString numberText(std::uint32_t value, const zelqLocaleText& /*locale*/) {
    return QString::number(value);
}

QString timeText(std::uint32_t value, const zelqLocaleText& locale) {
    return QString::fromLocal8Bit(locale.time({value}));
}

QString dateText(std::uint32_t value, const zelqLocaleText& locale) {
    return QString::fromLatin1(locale.shortDate(zelqDate::unpacked(value)));
}

}  // namespace

zelqFValue::zelqFValue(const zelqFilterContext& context, zelqFilterKind kind, int promptId,
                       Text text)
    : zelqFilter(context, kind, promptId),
      choice_(zelqValueTest::valuesOf(kind, context.records),
              context.activeFilters.choiceOf<zelqValueTest>(kind)) {
    list().setItems([this, text, &locale = context.locale](
                        std::size_t item) { return text(choice_.offered()[item], locale); },
                    choice_.accepted());
}

std::optional<zelqRecordTest> zelqFValue::makeTest(std::vector<bool> selectedItems) {
    choice_.accept(std::move(selectedItems));
    return zelqValueTest(kind(), std::move(choice_));
}

zelqFTime::zelqFTime(const zelqFilterContext& context)
    : zelqFValue(context, zelqFilterKind::Time, zelqId::kTimePrompt, timeText) {}

zelqFDate::zelqFDate(const zelqFilterContext& context)
    : zelqFValue(context, zelqFilterKind::Date, zelqId::kDatePrompt, dateText) {}

zelqFPid::zelqFPid(const zelqFilterContext& context)
    : zelqFValue(context, zelqFilterKind::Pid, zelqId::kPidPrompt, numberText) {}

zelqFTid::zelqFTid(const zelqFilterContext& context)
    : zelqFValue(context, zelqFilterKind::Tid, zelqId::kTidPrompt, numberText) {}

zelqFMaj::zelqFMaj(const zelqFilterContext& context)
    : zelqFValue(context, zelqFilterKind::MajorError, zelqId::kMajorErrorPrompt, numberText) {}

zelqFMin::zelqFMin(const zelqFilterContext& context)
    : zelqFValue(context, zelqFilterKind::MinorError, zelqId::kMinorErrorPrompt, numberText) {}

zelqFDet::zelqFDet(const zelqFilterContext& context)
    : zelqFValue(context, zelqFilterKind::DetectPoint, zelqId::kDetectPointPrompt, numberText) {}
