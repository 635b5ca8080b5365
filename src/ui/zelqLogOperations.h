#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "session/zelqSession.h"

class zelqRecordFormatter;

/// What the main window asks of the application object. GUI thread only.
class zelqLogOperations {
public:
    zelqLogOperations() = default;
    virtual ~zelqLogOperations() = default;
    zelqLogOperations(const zelqLogOperations&) = delete;
    zelqLogOperations& operator=(const zelqLogOperations&) = delete;

    /// What is loaded and shown.
    [[nodiscard]] virtual const zelqSession& session() const = 0;

    /// The name of the file that was chosen last, as the file system has it.
    virtual void setFileName(const std::string& name) = 0;
    /// Remember the name, which must not be empty, and start the operation or queue it behind the
    /// one that runs. It does nothing if a log of that name is loaded when its turn comes.
    virtual void load(const std::string& name) = 0;
    virtual void merge(const std::string& name) = 0;
    /// Merges logs as if each had been asked for by itself. With `anew`, or where nothing is loaded
    /// or about to be, the first is loaded. Says at last which could not be taken, `refused` of
    /// other files included.
    virtual void take(std::vector<std::string> names, bool anew, QStringList refused) = 0;
    /// Starts or queues the unloading of a slot's log, 0 to 99, or with -1 of all logs. Returns 1.
    virtual int unloadLog(int slot) = 0;
    /// Starts or queues the writing of all records as text. Does nothing if the name is empty or
    /// no record is shown.
    virtual void writeLog(const std::string& fileName) = 0;

    /// A text for the clipboard for which data have to be read from the disk.
    struct Copy {
        /// Makes the text, on another thread. `goesOn(done)` tells how much is done, and whether to
        /// go on.
        std::function<QString(zelqRecordFormatter& formatter,
                              const std::function<bool(qint64 done)>& goesOn)>
            text;
        qint64 total = 0;   ///< of what is counted by `done`
        QString outcome{};  ///< what is said when the text is on the clipboard
    };
    /// Starts or queues the copying. Nothing is copied if logs come or go before its turn.
    virtual void copy(Copy copy) = 0;

    // The transitions of the session.
    virtual void setExpanded(std::span<zelqBCnrObject* const> records, bool expand) = 0;
    virtual void setBookmarked(zelqBCnrObject& record, bool bookmarked) = 0;
    virtual void applyFilter(std::unique_ptr<zelqFilterStage> filter) = 0;
    virtual void removeFilter(zelqFilterKind kind) = 0;
    virtual void removeAllFilters() = 0;
    virtual void sortShown() = 0;
    virtual void displayAll() = 0;
    virtual void displayOnly(zelqDisplayed displayed) = 0;

    /// The main window is about to close: ends what runs and deletes the expanded-data window.
    virtual void mainWindowCloses() = 0;
};
