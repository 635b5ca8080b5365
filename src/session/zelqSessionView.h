#pragma once

#include <cstddef>
#include <span>

#include <boost/dynamic_bitset.hpp>

#include "log/zelqBCnrObject.h"

/// Where the shown records of a session are seen as rows. Called on the thread that changes the
/// session.
class zelqRowsView {
public:
    /// A bit for each row, set if it is selected.
    using Rows = boost::dynamic_bitset<>;

    [[nodiscard]] virtual const Rows& rowsSelected() const = 0;
    /// No more rows than this are in the view.
    [[nodiscard]] virtual std::size_t rowLimit() const = 0;

    /// The shown records are about to be others.
    virtual void rowsAboutToChange() noexcept = 0;
    /// Comes between the two: the records of a log, or of all with zelqLogCollection::kAllLogs, are
    /// about to be freed, and nothing may refer to them any more.
    virtual void recordsAboutToGo(int slot) noexcept = 0;
    /// They are. These rows are selected now; the session has found those of the records that were
    /// selected before, at any time since when they were not shown.
    virtual void rowsChanged(Rows selected) noexcept = 0;
    /// Records were expanded or collapsed: this one, or with null any number of them.
    virtual void marksChanged(const zelqBCnrObject* one) noexcept = 0;

protected:
    ~zelqRowsView() = default;
};

/// Where the text of the expanded records is seen as lines. Called on the thread that changes the
/// session, but for longestLine().
class zelqLinesView {
public:
    /// Comes first of all where one record is expanded or rows change: who reads the expanded
    /// records on another thread ends that. Nothing need change afterwards.
    virtual void linesAboutToChange() noexcept {}
    /// As many lines, the text of one record, are about to stand from `first` on.
    virtual void linesAboutToBeInserted(std::size_t first, std::size_t count,
                                        zelqBCnrObject& record) = 0;
    virtual void linesInserted() noexcept = 0;
    virtual void linesAboutToBeRemoved(std::size_t first, std::size_t count) noexcept = 0;
    virtual void linesRemoved() noexcept = 0;
    /// Many lines come or go. `longest`: longestLine() of all records whose text comes.
    virtual void linesAboutToBeReset(std::size_t longest) noexcept = 0;
    virtual void linesReset() noexcept = 0;
    /// A number that says how long the lines of these records are. Several threads at a time.
    [[nodiscard]] virtual std::size_t longestLine(
        std::span<zelqBCnrObject* const> records) const = 0;

protected:
    ~zelqLinesView() = default;
};
