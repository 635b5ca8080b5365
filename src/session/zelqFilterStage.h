#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "session/zelqLogCollection.h"
#include "session/zelqRecordTest.h"

/// A filter in its chain: the test, and what came of the records of the last run.
class zelqFilterStage final {
public:
    using Records = std::vector<zelqBCnrObject*>;

    /// What a run came to: the records that pass, and those that do not, in the order of the input.
    struct Result {
        Records passed;
        Records rejected;
    };

    /// `test`: one for filters of the kind.
    zelqFilterStage(zelqFilterKind kind, zelqRecordTest test);
    zelqFilterStage(const zelqFilterStage&) = delete;
    zelqFilterStage& operator=(const zelqFilterStage&) = delete;

    [[nodiscard]] zelqFilterKind kind() const noexcept { return kind_; }
    [[nodiscard]] const zelqRecordTest& test() const noexcept { return test_; }

    // A run changes nothing here: its result counts once it is taken. Throws std::bad_alloc.

    /// Runs over all loaded records.
    [[nodiscard]] Result filterAll(const zelqLogCollection& records) const;
    /// Runs over records.
    [[nodiscard]] Result filterSequence(std::span<zelqBCnrObject* const> records) const;
    /// Gives what this filter rejected in its last run back to the records that the filter before
    /// lets through, and runs over them. They stay there, though the filter before may by now
    /// reject them: a filter that takes this one's place gets to see them.
    [[nodiscard]] Result filterAgain(Records& records) const;
    void take(Result result) noexcept { result_ = std::move(result); }

    [[nodiscard]] std::span<zelqBCnrObject* const> passed() const noexcept {
        return result_.passed;
    }
    /// Each once.
    [[nodiscard]] std::span<zelqBCnrObject* const> rejected() const noexcept {
        return result_.rejected;
    }

    /// Forgets the records of one log, or all with zelqLogCollection::kAllLogs, because they are
    /// about to be freed.
    void dropLog(int logIndex) noexcept;

private:
    template <typename ForEachRecord>
    [[nodiscard]] Result run(std::size_t count, const ForEachRecord& forEachRecord) const;

    zelqFilterKind kind_;
    zelqRecordTest test_;
    Result result_;
};
