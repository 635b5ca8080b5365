#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "session/zelqFilterStage.h"

/// The installed filters in the order in which they run, at most one of a kind. Each sees only what
/// all filters before it let through. Where there is no memory for a run it throws std::bad_alloc,
/// and filters and results are as they were.
class zelqFilterChain {
public:
    using Filters = std::vector<std::unique_ptr<zelqFilterStage>>;

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
    void apply(std::unique_ptr<zelqFilterStage> filter, const zelqLogCollection& records);
    /// Runs all filters.
    void run(const zelqLogCollection& records);

    /// What each filter lets through and rejects, the first one first.
    using Results = std::vector<zelqFilterStage::Result>;
    /// What a run over these logs gives where no filter has rejected anything before.
    [[nodiscard]] Results resultsOf(const zelqLogCollection& records) const;
    /// Makes these the results of the filters.
    void take(Results results) noexcept { take(0, std::move(results)); }

    /// Takes out the filter of a kind; null if there is none. The others do not run again: records
    /// that this filter rejected may fail others as well and still come back.
    [[nodiscard]] std::unique_ptr<zelqFilterStage> remove(zelqFilterKind kind) noexcept;
    /// Takes out all filters.
    [[nodiscard]] Filters removeAll() noexcept { return std::exchange(filters_, {}); }

    /// As zelqFilterStage::dropLog(), for all filters.
    void dropLog(int logIndex) noexcept;

private:
    [[nodiscard]] std::size_t positionOf(zelqFilterKind kind) const noexcept;
    void runBehind(std::size_t position, Results& results) const;
    void take(std::size_t position, Results results) noexcept;

    Filters filters_;
};
