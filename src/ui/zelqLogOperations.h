#pragma once

#include <memory>
#include <span>
#include <string>

#include "session/zelqFilterChain.h"
#include "session/zelqLogCollection.h"

/// What the main window asks of the application object. GUI thread only.
class zelqLogOperations {
public:
    zelqLogOperations() = default;
    virtual ~zelqLogOperations() = default;
    zelqLogOperations(const zelqLogOperations&) = delete;
    zelqLogOperations& operator=(const zelqLogOperations&) = delete;

    [[nodiscard]] virtual const zelqLogCollection& logs() const = 0;

    /// The file that the next Load or Merge reads, as the file system names it.
    [[nodiscard]] virtual const std::string& fileName() const = 0;
    virtual void setFileName(const std::string& name) = 0;

    /// Start an operation, or queue it behind the one that runs, and return 1 at once.
    virtual int loadLog() = 0;
    virtual int mergeLog() = 0;
    /// `slot`: 0 to 99, or -1 for all logs.
    virtual int unloadLog(int slot) = 0;

    /// Starts or queues the writing of all records as text. Does nothing if the name is empty or
    /// the container holds no record.
    virtual void writeLog(const std::string& fileName) = 0;

    /// Expands or collapses records one after another: their text comes into the expanded-data
    /// window, or goes. Records without expansion data only get a blank mark.
    virtual void setExpanded(std::span<zelqBCnrObject* const> records, bool expand) = 0;

    [[nodiscard]] virtual const zelqFilterChain& activeFilters() const = 0;
    /// Installs a filter, runs the chain from its place on and shows what the last filter lets
    /// through, in order.
    virtual void applyFilter(std::unique_ptr<zelqFilterStage> filter) = 0;
    /// Takes out the installed filter of a kind, if there is one, and adds what it had hidden to
    /// the rows. The other filters do not run again.
    virtual void removeFilter(zelqFilterKind kind) = 0;
    /// Takes out all filters, collapses the selected records and shows all records.
    virtual void removeAllFilters() = 0;

    /// The main window is about to close: ends what runs and deletes the expanded-data window.
    virtual void mainWindowCloses() = 0;
};
