#include "session/zelqFilterOffer.h"

#include <algorithm>
#include <utility>

namespace {

using Category = zelqEntryTypeTest::Category;

template <typename Values, typename Value>
std::size_t placeOf(const Values& values, const Value& value) {
    return static_cast<std::size_t>(std::lower_bound(values.begin(), values.end(), value) -
                                    values.begin());
}

}  // namespace

zelqFilterOffer::zelqFilterOffer(zelqFilterKind kind, const zelqLogCollection& records,
                                 const zelqFilterChain& installed)
    : kind_(kind), choice_(choiceFor(kind, records, installed)) {
    if (const auto* const shown = std::get_if<zelqEntryTypeTest>(&choice_)) {
        accepted_ = {shown->showTrace, shown->showError, shown->showMessage};
    } else if (const auto* const values = std::get_if<zelqValueTest::Choice>(&choice_)) {
        accepted_ = values->accepted();
    } else {
        accepted_ = std::get<zelqFunctionTest::Choice>(choice_).accepted();
    }
}

zelqFilterOffer::Choice zelqFilterOffer::choiceFor(zelqFilterKind kind,
                                                   const zelqLogCollection& records,
                                                   const zelqFilterChain& installed) {
    if (kind == zelqFilterKind::EntryType) {
        const zelqFilterStage* const stage = installed.find(kind);
        return stage != nullptr ? std::get<zelqEntryTypeTest>(stage->test()) : zelqEntryTypeTest{};
    }
    if (kind == zelqFilterKind::Function) {
        return zelqFunctionTest::Choice(zelqFunctionTest::valuesOf(records),
                                        installed.choiceOf<zelqFunctionTest>(kind));
    }
    return zelqValueTest::Choice(zelqValueTest::valuesOf(kind, records),
                                 installed.choiceOf<zelqValueTest>(kind));
}

std::size_t zelqFilterOffer::itemOf(const zelqBCnrObject& record) const {
    if (const auto* const values = std::get_if<zelqValueTest::Choice>(&choice_)) {
        return placeOf(values->offered(), zelqValueTest::valueOf(kind_, record));
    }
    if (const auto* const names = std::get_if<zelqFunctionTest::Choice>(&choice_)) {
        return placeOf(names->offered(), record.function().string());
    }
    return static_cast<std::size_t>(zelqEntryTypeTest::categoryOf(record.entryType()));
}

std::unique_ptr<zelqFilterStage> zelqFilterOffer::makeStage(std::vector<bool> items) {
    const auto stage = [this](zelqRecordTest test) {
        return std::make_unique<zelqFilterStage>(kind_, std::move(test));
    };
    if (auto* const values = std::get_if<zelqValueTest::Choice>(&choice_)) {
        values->accept(std::move(items));
        return stage(zelqValueTest(kind_, std::move(*values)));
    }
    if (auto* const names = std::get_if<zelqFunctionTest::Choice>(&choice_)) {
        names->accept(std::move(items));
        return stage(zelqFunctionTest(std::move(*names)));
    }
    const auto shows = [&items](Category category) {
        return items[static_cast<std::size_t>(category)];
    };
    const zelqEntryTypeTest test{.showTrace = shows(Category::Trace),
                                 .showError = shows(Category::Error),
                                 .showMessage = shows(Category::Message)};
    if (test.showTrace && test.showError && test.showMessage) {
        return nullptr;
    }
    return stage(test);
}
