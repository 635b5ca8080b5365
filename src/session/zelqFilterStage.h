#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "log/zelqParallel.h"
#include "session/zelqLogCollection.h"
#include "session/zelqRecordTest.h"

/// A filter in its chain: the test, and what came of the records of the last run. It never changes:
/// another run makes another stage.
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
    /// The filter of another stage with the result of another run.
    zelqFilterStage(const zelqFilterStage& other, Result result)
        : kind_(other.kind_), test_(other.test_), result_(std::move(result)) {}
    zelqFilterStage(const zelqFilterStage&) = delete;
    zelqFilterStage& operator=(const zelqFilterStage&) = delete;

    [[nodiscard]] zelqFilterKind kind() const noexcept { return kind_; }
    [[nodiscard]] const zelqRecordTest& test() const noexcept { return *test_; }

    // Runs. All throw std::bad_alloc.

    /// Runs over all loaded records.
    [[nodiscard]] Result filterAll(const zelqLogCollection& records,
                                   const zelqParallel& parallel) const;
    /// Runs over records.
    [[nodiscard]] Result filterSequence(std::span<zelqBCnrObject* const> records,
                                        const zelqParallel& parallel) const;
    /// Gives what this filter rejected in its last run back to the records that the filter before
    /// lets through, and runs over them. They stay there, though the filter before may by now
    /// reject them: a filter that takes this one's place gets to see them.
    [[nodiscard]] Result filterAgain(Records& records, const zelqParallel& parallel) const;

    [[nodiscard]] std::span<zelqBCnrObject* const> passed() const noexcept {
        return result_.passed;
    }
    /// Each once.
    [[nodiscard]] std::span<zelqBCnrObject* const> rejected() const noexcept {
        return result_.rejected;
    }

    /// The result without the records of one log, or of all with zelqLogCollection::kAllLogs.
    [[nodiscard]] Result resultWithout(int logIndex, const zelqParallel& parallel) const;

private:
    template <typename ForRange>
    [[nodiscard]] Result run(std::size_t count, const zelqParallel& parallel,
                             const ForRange& forRange) const;

    zelqFilterKind kind_;
    std::shared_ptr<const zelqRecordTest> test_;
    Result result_;
};
