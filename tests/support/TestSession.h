#pragma once

#include <algorithm>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "output/zelqRecordFormatter.h"
#include "session/zelqSession.h"
#include "support/LogImage.h"

/// A session, and the bytes of the logs that it was given.
struct TestSession {
    /// Adds a log as the bytes of its file. Returns its slot. The data of every second one are read
    /// on demand.
    int add(const std::string& name, const std::string& image) {
        const int slot = session.logs().slotFor(name);
        images.emplace_back(image, slot);
        return session.add(name, {.log = images.size() % 2 != 0 ? std::move(images.back().log)
                                                                : DemandedLog(image, slot).log});
    }

    std::deque<DecodedLog> images;
    zelqSession session{&zelqRecordFormatter::lineCount};
};

/// Filters, made as the dialogs make them: `values` are those of `loaded` that it accepts.
template <typename Test, typename Value>
auto choose(const zelqSession& session, zelqFilterKind kind, std::vector<Value> loaded,
            const std::vector<Value>& values) {
    typename Test::Choice choice(std::move(loaded), session.filters().choiceOf<Test>(kind));
    std::vector<bool> items;
    for (const auto& offered : choice.offered()) {
        items.push_back(std::ranges::find(values, offered) != values.end());
    }
    choice.accept(items);
    return choice;
}

/// Kinds Time to DetectPoint.
inline std::unique_ptr<zelqFilterStage> valueFilter(const zelqSession& session, zelqFilterKind kind,
                                                    const std::vector<std::uint32_t>& values) {
    return std::make_unique<zelqFilterStage>(
        kind, zelqValueTest(
                  kind, choose<zelqValueTest>(
                            session, kind, zelqValueTest::valuesOf(kind, session.logs()), values)));
}

inline std::unique_ptr<zelqFilterStage> functionFilter(const zelqSession& session,
                                                       const std::vector<std::string>& names) {
    constexpr auto kKind = zelqFilterKind::Function;
    return std::make_unique<zelqFilterStage>(
        kKind, zelqFunctionTest(choose<zelqFunctionTest>(
                   session, kKind, zelqFunctionTest::valuesOf(session.logs()), names)));
}
