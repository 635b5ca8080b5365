#include <algorithm>
#include <cstdlib>

#include "log/zelqBSorter.h"
#include "support/TestSession.h"

namespace {

using Records = std::vector<zelqBCnrObject*>;
using Kind = zelqFilterKind;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

bool contains(const Records& records, const zelqBCnrObject* record) {
    return std::ranges::find(records, record) != records.end();
}

void addMissing(Records& records, const Records& more) {
    std::ranges::copy_if(more, std::back_inserter(records),
                         [&records](auto* record) { return !contains(records, record); });
}

void sort(Records& records) {
    std::stable_sort(records.begin(), records.end(), zelqBSorter{});
}

struct PlainFilter {
    Kind kind;
    unsigned accepted;  ///< a bit for each of the values 0 to 3
    Records passed{};
    Records rejected{};

    /// Gives what was rejected before back to the input, and filters that.
    void run(Records& input) {
        addMissing(input, rejected);
        passed.clear();
        rejected.clear();
        for (zelqBCnrObject* record : input) {
            const std::uint32_t value = zelqValueTest::valueOf(kind, *record);
            const bool passes = value < 4 && (accepted >> value & 1U) != 0;
            (passes ? passed : rejected).push_back(record);
        }
    }
};

/// A session, and a model of it that is made of lists and loops over them.
class Sessions {
public:
    void readLog(std::uint32_t size) {
        std::vector<TestEntry> entries;
        for (std::uint32_t i = 0; i < size; ++i) {
            // Every fifth entry ends in its header and has nothing to expand.
            const auto cut = i % 5 == 4 ? std::optional<std::uint16_t>(24) : std::nullopt;
            entries.push_back({.numbers = {0, i * 7 % 5, i % 4, i / 4 % 4, i / 2 % 3, i / 8 % 4},
                               .entryLength = cut});
        }
        const int slot = logs_.add(std::to_string(logs_.images.size()), logImage(entries));
        session_.logs().logs().back().log->forEach(
            [this](zelqBCnrObject& record) { all_.push_back(&record); });
        if (filters_.empty()) {
            showAll();
            return;
        }
        runFrom(0);
        const bool sorts = !shown_.empty() && !filters_.back().passed.empty();
        int place = 0;
        for (zelqBCnrObject* record : filters_.back().passed) {
            if (record->logIndex() == slot) {
                require(record->entryIndex() == place);
                shown_.push_back(record);
            }
            ++place;
        }
        if (sorts) {
            sort(shown_);
        }
    }
    void unload(int slot) {
        if (session_.logs().logName(slot).empty()) {
            return;
        }
        collapse(all_);
        const auto goes = [slot](const zelqBCnrObject* record) {
            return record->logIndex() == slot;
        };
        for (Records* records : {&all_, &shown_, &parked_, &blank_}) {
            std::erase_if(*records, goes);
        }
        for (PlainFilter& filter : filters_) {
            std::erase_if(filter.passed, goes);
            std::erase_if(filter.rejected, goes);
        }
        (void)session_.unload(slot);
    }
    void apply(Kind kind, unsigned accepted) {
        zelqValueTest::Choice choice({0, 1, 2, 3}, nullptr);
        choice.accept({(accepted & 1U) != 0, (accepted & 2U) != 0, (accepted & 4U) != 0,
                       (accepted & 8U) != 0});
        session_.applyFilter(
            std::make_unique<zelqFilterStage>(kind, zelqValueTest(kind, std::move(choice))));
        const std::size_t place = find(kind);
        filters_.resize(std::max(filters_.size(), place + 1));
        filters_[place] = {.kind = kind, .accepted = accepted};
        runFrom(place);
        shown_ = filters_.back().passed;
        sort(shown_);
    }
    void remove(Kind kind) {
        session_.removeFilter(kind);
        if (const std::size_t place = find(kind); place < filters_.size()) {
            addMissing(shown_, filters_[place].rejected);
            filters_.erase(filters_.begin() + static_cast<std::ptrdiff_t>(place));
        }
    }
    void removeAll() {
        for (const PlainFilter& filter : filters_) {
            addMissing(shown_, filter.rejected);
        }
        filters_.clear();
        Records selected = shown_;
        std::erase_if(selected, [](auto* record) { return !record->selected(); });
        collapse(selected);
        session_.removeAllFilters();
        showAll();
    }
    void displayOnly(zelqDisplayed displayed) {
        Records parked;
        for (zelqBCnrObject* record : shown_) {
            const bool is = displayed <= zelqDisplayed::NonSelected ? record->selected()
                                                                    : contains(expanded_, record);
            if (is !=
                (displayed == zelqDisplayed::Selected || displayed == zelqDisplayed::Expanded)) {
                parked.push_back(record);
            }
        }
        session_.displayOnly(displayed);
        std::erase_if(shown_, [&parked](auto* record) { return contains(parked, record); });
        addMissing(parked_, parked);
        if (displayed != zelqDisplayed::Expanded) {
            collapse(parked);
        }
    }
    void displayAll() {
        session_.displayAll();
        const bool sorts = !shown_.empty() && !parked_.empty();
        addMissing(shown_, parked_);
        parked_.clear();
        if (sorts) {
            sort(shown_);
        }
    }
    void select(unsigned bits) {
        for (zelqBCnrObject* record : shown_) {
            record->setSelected((bits >> (record->pid() % 4 + 4 * (record->tid() % 2)) & 1U) != 0);
        }
    }
    void setExpanded(bool expand, bool selected) {
        Records records = shown_;
        std::erase_if(records, [selected](auto* record) { return record->selected() != selected; });
        session_.setExpanded(records, expand);
        if (!expand) {
            collapse(records);
            return;
        }
        for (zelqBCnrObject* record : records) {
            if (!record->hasExpansion()) {
                blank_.push_back(record);
            } else if (!contains(expanded_, record)) {
                const auto later = std::ranges::find_if(expanded_, [record](auto* other) {
                    return other->entryIndex() > record->entryIndex();
                });
                expanded_.insert(later, record);
            }
        }
    }
    void check() {
        session_.checkInvariants();
        compare(shown_, session_.shown().records());
        compare(parked_, session_.parked().records());
        Records expanded;
        std::size_t line = 0;
        const zelqExpandedRecords& tree = session_.expanded();
        tree.forEach([&](auto& record) {
            expanded.push_back(&record);
            require(tree.linesOf(record).first == line && tree.at(line).record == &record);
            line += tree.linesOf(record).count;
            require(tree.at(line - 1).record == &record);
        });
        require(expanded == expanded_ && line == tree.lineCount());
        for (std::size_t row = 0; row < shown_.size(); ++row) {
            require(session_.shown().rowOf(*session_.shown().records()[row]) == row);
        }
        for (const zelqBCnrObject* record : all_) {
            require(contains(blank_, record) == (record->expandMark() == zelqExpandMark::Blank));
        }
        require(std::ranges::equal(session_.filters().filters(), filters_,
                                   [](const auto& filter, const PlainFilter& plain) {
                                       return filter->kind() == plain.kind &&
                                              std::ranges::equal(filter->passed(), plain.passed) &&
                                              std::ranges::equal(filter->rejected(),
                                                                 plain.rejected);
                                   }));
    }

private:
    /// Records that are equal in all keys may be in any order; the session's is taken over.
    static void compare(Records& plain, std::span<zelqBCnrObject* const> records) {
        require(std::ranges::equal(plain, records, [](const auto* a, const auto* b) {
            return zelqBSorter::compare(*a, *b) == 0;
        }));
        require(std::ranges::is_permutation(plain, records));
        plain.assign(records.begin(), records.end());
    }
    std::size_t find(Kind kind) const {
        const auto found = std::ranges::find(filters_, kind, &PlainFilter::kind);
        return static_cast<std::size_t>(found - filters_.begin());
    }
    void runFrom(std::size_t place) {
        for (; place < filters_.size(); ++place) {
            Records all = all_;
            filters_[place].run(place == 0 ? all : filters_[place - 1].passed);
        }
    }
    void showAll() {
        addMissing(shown_, all_);
        sort(shown_);
        for (std::size_t i = 0; i < all_.size(); ++i) {
            require(all_[i]->entryIndex() == static_cast<int>(i));
        }
    }
    void collapse(const Records& records) {
        for (zelqBCnrObject* record : records) {
            std::erase(expanded_, record);
            if (!record->hasExpansion()) {
                blank_.push_back(record);
            }
        }
    }

    TestSession logs_;
    zelqSession& session_ = logs_.session;
    Records all_;
    std::vector<PlainFilter> filters_;
    Records shown_;
    Records parked_;
    Records expanded_;
    Records blank_;  ///< records that were found to have nothing to expand
};

}  // namespace

/// Every two bytes are a step: what to do, and with what.
// NOLINTNEXTLINE(*-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Sessions sessions;
    sessions.readLog(24);
    for (std::size_t i = 0; i + 1 < std::min<std::size_t>(size, 64); i += 2) {
        const auto kind = static_cast<Kind>(4 + (data[i] >> 4) % 4);  // pid to minor error
        const unsigned value = data[i + 1];
        switch (data[i] & 15U) {
            case 0:
                sessions.readLog(value % 32);
                break;
            case 1:
                sessions.unload(static_cast<int>(value % 4));
                break;
            case 2:
                sessions.remove(kind);
                break;
            case 3:
                value < 128 ? sessions.remove(kind) : sessions.removeAll();
                break;
            case 6:
                sessions.displayOnly(static_cast<zelqDisplayed>(value % 4));
                break;
            case 7:
                sessions.displayAll();
                break;
            case 8:
                sessions.select(value);
                break;
            case 9:
                sessions.setExpanded(value % 2 != 0, value / 2 % 2 != 0);
                break;
            default:
                sessions.apply(kind, value);
                break;
        }
        sessions.check();
    }
    return 0;
}
