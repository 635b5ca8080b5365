#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "log/zelqBCnrObject.h"
#include "log/zelqDataReader.h"
#include "session/zelqSearchPattern.h"

/// Tells whether a pattern is in what a reader sees of a record: its eleven cells and its data. A
/// cell is one text, and so are the data of a block. Only reads the records. One object serves one
/// thread.
class zelqRecordMatcher {
public:
    /// The cells whose text depends on the user's locale, in UTF-8. Called on the matcher's thread.
    struct LocaleTexts {
        std::function<std::string(zelqTime)> time;
        std::function<std::string(zelqDate)> date;
    };

    /// `pattern` is not null. Nothing is found in data that `data` does not give.
    zelqRecordMatcher(std::shared_ptr<const zelqSearchPattern> pattern, LocaleTexts texts,
                      zelqDataReader data = {});

    [[nodiscard]] bool matches(const zelqBCnrObject& record);

    /// To be called before a record of a list is tested: has the memory of the next ones fetched.
    static void fetch(std::span<zelqBCnrObject* const> records, std::size_t place) noexcept;

    /// Whether the pattern is in one of the texts of the expandability column, so that expanding a
    /// record changes what is found.
    [[nodiscard]] bool matchesMarks() const noexcept { return matchesMarks_; }

private:
    /// What was found out of some values of a column. Successive records tend to share them.
    class Known {
    public:
        template <typename Find>
        bool answer(std::uintptr_t value, const Find& find) {
            Entry& entry = entries_[static_cast<std::uint32_t>(value) * kSpread >> kShift];
            if (!entry.known || entry.value != value) {
                entry = {.value = value, .known = true, .matches = find()};
            }
            return entry.matches;
        }

    private:
        static constexpr std::uint32_t kSpread = 0x9E3779B1;
        static constexpr unsigned kShift = 32 - 10;
        struct Entry {
            std::uintptr_t value = 0;
            bool known = false;
            bool matches = false;
        };
        std::vector<Entry> entries_ = std::vector<Entry>(std::size_t{1} << (32 - kShift));
    };

    [[nodiscard]] bool canBeInTimes() const;
    [[nodiscard]] bool isInNumbers(const zelqBCnrObject& record);
    [[nodiscard]] bool isInTimeOrDate(const zelqBCnrObject& record);
    [[nodiscard]] bool isInFunction(const zelqBCnrObject& record);
    [[nodiscard]] bool isInData(const zelqBCnrObject& record);

    std::shared_ptr<const zelqSearchPattern> pattern_;
    LocaleTexts texts_;
    zelqDataReader data_;
    bool matchesTexts_;  ///< the pattern can be in cells at all
    bool matchesNumbers_;
    // Whether the pattern is in one of the few texts of a column.
    bool matchesTypes_;
    bool matchesDetectPointTypes_;
    bool matchesMarks_;
    bool matchesTimes_;  ///< it can be in a time
    std::array<Known, 5> numbers_;
    Known times_;
    Known dates_;
    Known names_;  ///< by their keys
    std::string name_;
};
