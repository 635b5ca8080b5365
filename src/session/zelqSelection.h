#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "session/zelqNumberRanges.h"
#include "session/zelqRecordMatcher.h"
#include "session/zelqRecordTest.h"
#include "session/zelqTimeRange.h"

/// Which records somebody asks for: those that meet all conditions that are given, each of which
/// may name several values. Attributes are those that the filters of the window go by. What is
/// given wrongly has a failure for its status and changes nothing. One object serves one thread;
/// copies are independent.
class zelqSelection {
public:
    [[nodiscard]] zelqStatus setFrom(std::string_view time) { return times_.setFrom(time); }
    [[nodiscard]] zelqStatus setTo(std::string_view time) { return times_.setTo(time); }
    /// "error", "trace", "message": as the filter by entry type groups them. "unknown": those of
    /// no known type, which that filter groups with the others.
    [[nodiscard]] zelqStatus addType(std::string_view name);
    /// `kind`: Pid to DetectPoint. `list`: see zelqNumberRanges.
    [[nodiscard]] zelqStatus addNumbers(zelqFilterKind kind, std::string_view list);
    /// "entry", "exit", "api-call", "debug" or "none".
    [[nodiscard]] zelqStatus addDetectPointType(std::string_view name);
    /// Names that are as the glob says, as a whole: "*" is any text, "?" any character, "[a-f]" one
    /// of these, "[!a-f]" none of these, and a backslash takes such a meaning away.
    [[nodiscard]] zelqStatus addFunction(std::string_view glob, bool matchCase);
    /// Several patterns must all be found.
    [[nodiscard]] zelqStatus addPattern(const zelqSearchPattern::Query& query,
                                        const zelqRecordMatcher::LocaleTexts& texts);
    /// Selects all other records instead.
    void setInverted(bool inverted) noexcept { inverted_ = inverted; }

    /// True if no condition is given, so that no record need be asked.
    [[nodiscard]] bool isEverything() const noexcept;
    [[nodiscard]] bool accepts(const zelqBCnrObject& record);

private:
    struct Types {
        zelqEntryTypeTest known{.showTrace = false, .showError = false, .showMessage = false};
        bool showUnknown = false;
    };

    [[nodiscard]] bool meetsAll(const zelqBCnrObject& record);
    [[nodiscard]] bool hasFunction(const zelqBCnrObject& record);

    zelqTimeRange times_;
    std::optional<Types> types_;
    std::map<zelqFilterKind, zelqNumberRanges> numbers_;
    std::set<std::string_view> detectPointTypes_;  ///< as records show them
    std::vector<std::shared_ptr<const re2::RE2>> functions_;
    std::vector<zelqRecordMatcher> patterns_;
    bool inverted_ = false;
    std::string name_;
};
