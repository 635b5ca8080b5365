#pragma once

#include <cstddef>
#include <span>

#include "log/zelqBCnrObject.h"

/// Where the shown records of a session are seen as rows. Called on the thread that changes the
/// session.
class zelqRowsView {
public:
    /// What becomes of the records whose rows are about to change.
    enum class Fate { Stay, AllGo };

    /// The shown records are about to change. The view notes in each record whether its row is
    /// selected, for the session goes by that; not where all records are to be freed.
    virtual void rowsAboutToChange(Fate fate) = 0;
    /// They have changed, or the change was given up. Rows are selected whose record says so.
    virtual void rowsChanged() noexcept = 0;
    /// Comes between the two: the records of a log, or of all with zelqLogCollection::kAllLogs, are
    /// about to be freed, and nothing may refer to them any more.
    virtual void recordsAboutToGo(int slot) noexcept = 0;
    /// Records were expanded or collapsed: this one, or with null any number of them.
    virtual void marksChanged(const zelqBCnrObject* one) noexcept = 0;

protected:
    ~zelqRowsView() = default;
};

/// Where the text of the expanded records is seen as lines. Called on the thread that changes the
/// session.
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
    /// Many lines come or go; `records` are those whose text comes.
    virtual void linesAboutToBeReset(std::span<zelqBCnrObject* const> records) = 0;
    virtual void linesReset() noexcept = 0;

protected:
    ~zelqLinesView() = default;
};
