#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "session/zelqFilterStage.h"

/// The installed filters in the order in which they run, at most one of a kind. Each sees only what
/// all filters before it let through. A copy shares the results of the runs. What needs memory for
/// a run and does not get it throws std::bad_alloc, and filters and results are as they were.
class zelqFilterChain {
public:
    using Filters = std::vector<std::shared_ptr<const zelqFilterStage>>;

    [[nodiscard]] bool empty() const noexcept { return filters_.empty(); }
    [[nodiscard]] const Filters& filters() const noexcept { return filters_; }
    /// The installed filter of a kind, null if there is none.
    [[nodiscard]] const zelqFilterStage* find(zelqFilterKind kind) const noexcept;
    /// What the user chose in the installed filter of a kind, null if there is none. `Test` is the
    /// kind's test.
    template <typename Test>
    [[nodiscard]] const typename Test::Choice* choiceOf(zelqFilterKind kind) const {
        const zelqFilterStage* const installed = find(kind);
        return installed != nullptr ? &std::get<Test>(installed->test()).choice() : nullptr;
    }
    /// What the last filter let through; nothing if there is no filter.
    [[nodiscard]] std::span<zelqBCnrObject* const> result() const noexcept;

    /// Installs a filter, in the place of the installed one of its kind or else at the end, and
    /// runs it and those behind it. The results of those before it stand.
    void apply(const zelqFilterStage& filter, const zelqLogCollection& records,
               const zelqParallel& parallel);
    /// Runs all filters.
    void run(const zelqLogCollection& records, const zelqParallel& parallel);
    /// Runs all filters as if none had rejected anything before.
    void runAnew(const zelqLogCollection& records, const zelqParallel& parallel);

    /// Takes out the filter of a kind. The others do not run again: records that this filter
    /// rejected may fail others as well and still come back.
    void remove(zelqFilterKind kind) noexcept;
    /// Takes out all filters.
    void removeAll() noexcept { filters_.clear(); }

    /// Forgets the records of one log, or all with zelqLogCollection::kAllLogs.
    void dropLog(int logIndex, const zelqParallel& parallel);

private:
    using Results = std::vector<zelqFilterStage::Result>;

    [[nodiscard]] std::size_t positionOf(zelqFilterKind kind) const noexcept;
    void runBehind(std::size_t position, Results& results, const zelqParallel& parallel) const;
    void take(std::size_t position, Filters filters, Results results);

    Filters filters_;
};
