#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "session/zelqSession.h"

/// Filters for tests, made as the dialogs make them.

/// `Value` is a number or a text, `Test` the test of such values.
template <typename Test, typename Value>
Test choose(const zelqSession& session, zelqFilterKind kind, std::vector<Value> loaded,
            const std::vector<Value>& values) {
    typename Test::Choice choice(std::move(loaded), session.filters().choiceOf<Test>(kind));
    std::vector<bool> items;
    for (const Value& offered : choice.offered()) {
        items.push_back(std::ranges::find(values, offered) != values.end());
    }
    choice.accept(items);
    if constexpr (std::is_constructible_v<Test, zelqFilterKind, typename Test::Choice>) {
        return Test(kind, std::move(choice));
    } else {
        return Test(std::move(choice));
    }
}

/// Accepts those of the offered values that are named; kinds Time to DetectPoint.
inline std::unique_ptr<zelqFilterStage> valueFilter(const zelqSession& session, zelqFilterKind kind,
                                                    const std::vector<std::uint32_t>& values) {
    return std::make_unique<zelqFilterStage>(
        kind, choose<zelqValueTest>(session, kind, zelqValueTest::valuesOf(kind, session.logs()),
                                    values));
}

inline std::unique_ptr<zelqFilterStage> functionFilter(const zelqSession& session,
                                                       const std::vector<std::string>& names) {
    return std::make_unique<zelqFilterStage>(
        zelqFilterKind::Function,
        choose<zelqFunctionTest>(session, zelqFilterKind::Function,
                                 zelqFunctionTest::valuesOf(session.logs()), names));
}
