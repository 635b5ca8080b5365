#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include <tsl/robin_map.h>
#include <tsl/robin_set.h>

#include "log/zelqKeyedHash.h"
#include "session/zelqLogCollection.h"
#include "session/zelqValueChoice.h"

/// The kinds of filter; the values are the numbers by which they are known.
enum class zelqFilterKind {
    EntryType = 1,
    Time,
    Date,
    Pid,
    Tid,
    MajorError,
    MinorError,
    DetectPoint,
    Function
};

/// What a filter lets through. A matcher is what a run over many records calls for each of them; it
/// lives no longer than the run and the test.

/// Lets entries through by their category. Types that the type names do not list have one too.
struct zelqEntryTypeTest {
    enum class Category { Trace, Error, Message };
    [[nodiscard]] static Category categoryOf(std::uint16_t entryType) noexcept;

    bool showTrace = true;
    bool showError = true;
    bool showMessage = true;

    [[nodiscard]] auto matcher() const noexcept {
        return [shows = *this](const zelqBCnrObject& record) {
            const Category category = categoryOf(record.entryType());
            return category == Category::Trace   ? shows.showTrace
                   : category == Category::Error ? shows.showError
                                                 : shows.showMessage;
        };
    }
};

/// Lets records through whose value is among the accepted ones: a time, a date or a number.
class zelqValueTest {
public:
    using Choice = zelqValueChoice<std::uint32_t>;

    /// `kind`: Time to DetectPoint.
    zelqValueTest(zelqFilterKind kind, Choice choice) : kind_(kind), choice_(std::move(choice)) {}

    /// A record's value as a number that sorts as the values do: seconds since midnight, a packed
    /// date or the number itself.
    [[nodiscard]] static std::uint32_t valueOf(zelqFilterKind kind,
                                               const zelqBCnrObject& record) noexcept;
    /// The values of all records, ascending, each once.
    [[nodiscard]] static std::vector<std::uint32_t> valuesOf(zelqFilterKind kind,
                                                             const zelqLogCollection& records);

    [[nodiscard]] const Choice& choice() const noexcept { return choice_; }

    /// Builds tables of the accepted values, which live as long as the run: a bit for each small
    /// number, a hash table of the others.
    [[nodiscard]] auto matcher() const {
        std::vector<bool> small;
        Numbers large;
        choice_.forEachAccepted([&small, &large](std::uint32_t value) {
            if (value >= kSmall) {
                large.insert(value);
                return;
            }
            small.resize(kSmall);
            small[value] = true;
        });
        return [kind = kind_, small = std::move(small),
                large = std::move(large)](const zelqBCnrObject& record) {
            const std::uint32_t value = valueOf(kind, record);
            return value < small.size() ? small[value] : large.contains(value);
        };
    }

private:
    using Numbers = tsl::robin_set<std::uint32_t, zelqKeyedHash>;
    /// So many bits stay in the processor's nearest cache.
    static constexpr std::uint32_t kSmall = 1U << 16;

    zelqFilterKind kind_;
    Choice choice_;
};

/// Lets records through whose function name is among the accepted ones, compared byte by byte; the
/// empty name is a name like any other.
class zelqFunctionTest {
public:
    using Choice = zelqValueChoice<std::string>;

    explicit zelqFunctionTest(Choice choice) : choice_(std::move(choice)) {}

    /// The names of all records, ascending by byte values, each once.
    [[nodiscard]] static std::vector<std::string> valuesOf(const zelqLogCollection& records);

    [[nodiscard]] const Choice& choice() const noexcept { return choice_; }

    /// Looks up each of a log's names once as long as they are few.
    [[nodiscard]] auto matcher() const {
        return [this, known = tsl::robin_map<const char*, bool, zelqKeyedHash>()](
                   const zelqBCnrObject& record) mutable {
            const zelqText name = record.function();
            if (name.key() == nullptr) {
                return choice_.accepts(name.string());
            }
            if (known.size() == kMostKnown) {
                known.clear();
            }
            const auto [found, isNew] = known.try_emplace(name.key(), false);
            if (isNew) {
                found.value() = choice_.accepts(name.string());
            }
            return found->second;
        };
    }

private:
    /// A hostile log has a name of its own in each record, which is not worth remembering.
    static constexpr std::size_t kMostKnown = std::size_t{1} << 16;

    Choice choice_;
};

using zelqRecordTest = std::variant<zelqEntryTypeTest, zelqValueTest, zelqFunctionTest>;
