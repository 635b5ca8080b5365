#pragma once

#include <span>
#include <vector>

#include "session/zelqLogCollection.h"
#include "session/zelqRecordTest.h"

/// A filter in its chain: the test, and what came of the records of the last run.
class zelqFilterStage final {
public:
    /// `test`: one for filters of the kind.
    zelqFilterStage(zelqFilterKind kind, zelqRecordTest test);
    zelqFilterStage(const zelqFilterStage&) = delete;
    zelqFilterStage& operator=(const zelqFilterStage&) = delete;

    [[nodiscard]] zelqFilterKind kind() const noexcept { return kind_; }
    [[nodiscard]] const zelqRecordTest& test() const noexcept { return test_; }
    [[nodiscard]] bool passes(const zelqBCnrObject& record) const;

    /// Runs over all loaded records.
    void filterAll(const zelqLogCollection& records);
    /// Runs over what the filter before let through. What this filter rejected in its run before is
    /// given back to `previous` first and stays there, though the filter before may by now reject
    /// it: a filter that takes this one's place gets to see it.
    void filterSequence(zelqFilterStage& previous);

    /// The records of the last run that pass, in the order of the input.
    [[nodiscard]] std::span<zelqBCnrObject* const> passed() const noexcept { return passed_; }
    /// Those that do not, each once.
    [[nodiscard]] std::span<zelqBCnrObject* const> rejected() const noexcept { return rejected_; }

    /// Forgets the records of one log, or all with zelqLogCollection::kAllLogs, because they are
    /// about to be freed.
    void dropLog(int logIndex);

private:
    using Records = std::vector<zelqBCnrObject*>;

    template <typename ForEachRecord>
    void run(std::size_t count, const ForEachRecord& forEachRecord);

    zelqFilterKind kind_;
    zelqRecordTest test_;
    Records passed_;
    Records rejected_;
};
