#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "session/zelqFilterChain.h"

/// What a filter of a kind offers to choose from: the three categories of entry types, or the
/// values of one attribute that the loaded records have and the installed filter offered, in
/// ascending order. A dialog shows them as the items of a list; a choice of items makes a filter.
class zelqFilterOffer {
public:
    /// The accepted items are those of the installed filter of the kind, or all of them. Looks at
    /// all records. Throws std::bad_alloc.
    zelqFilterOffer(zelqFilterKind kind, const zelqLogCollection& records,
                    const zelqFilterChain& installed);

    [[nodiscard]] zelqFilterKind kind() const noexcept { return kind_; }
    /// Whether each of the items is accepted, and thereby their number.
    [[nodiscard]] const std::vector<bool>& accepted() const noexcept { return accepted_; }

    // The values of the items. To be asked for by the kind.

    /// Of Time to DetectPoint, see zelqValueTest::valueOf().
    [[nodiscard]] std::uint32_t value(std::size_t item) const {
        return std::get<zelqValueTest::Choice>(choice_).offered()[item];
    }
    /// Of Function.
    [[nodiscard]] const std::string& name(std::size_t item) const {
        return std::get<zelqFunctionTest::Choice>(choice_).offered()[item];
    }
    /// Of EntryType.
    [[nodiscard]] static zelqEntryTypeTest::Category category(std::size_t item) noexcept {
        return static_cast<zelqEntryTypeTest::Category>(item);
    }

    /// The item that a loaded record belongs to.
    [[nodiscard]] std::size_t itemOf(const zelqBCnrObject& record) const;

    /// The filter that lets the records of these items through, as many as accepted() has; null
    /// where none of the kind is needed. The offer is used up.
    [[nodiscard]] std::unique_ptr<zelqFilterStage> makeStage(std::vector<bool> items);

private:
    using Choice = std::variant<zelqEntryTypeTest, zelqValueTest::Choice, zelqFunctionTest::Choice>;

    static Choice choiceFor(zelqFilterKind kind, const zelqLogCollection& records,
                            const zelqFilterChain& installed);

    zelqFilterKind kind_;
    Choice choice_;
    std::vector<bool> accepted_;
};
