#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

#include "session/zelqSessionDraft.h"

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

    // Changes of what is shown. While there are few records they are made at once. Else each waits
    // its turn behind the operations that run or wait, and is prepared on another thread while
    // the window lives on; what was selected in the table stays so until it is in place. Where
    // there is not enough memory they throw std::bad_alloc or the status line says so.

    using Steps = zelqSessionDraft::Steps;
    using Done = std::function<void(const zelqSessionDraft&)>;
    /// `done` is called when the change is in place.
    virtual void change(Steps steps, Done done) = 0;
    /// Expands or collapses the records of these rows of the table.
    virtual void setRowsExpanded(zelqSessionDraft::Rows rows, bool expand) = 0;
    virtual void setExpanded(std::span<zelqBCnrObject* const> records, bool expand) = 0;
    virtual void setBookmarked(zelqBCnrObject& record, bool bookmarked) = 0;

    /// Calls `work` when the changes that were asked for before are in place: at once if there are
    /// none. For what depends on the rows or the selection.
    virtual void whenSettled(std::function<void()> work) = 0;
    /// Looks something up in the records, which must not change anything: calls `look`, where they
    /// are many in its turn and on another thread, and then `done`.
    using Look = std::function<void(const std::stop_token&)>;
    virtual void lookUp(Look look, std::function<void()> done) = 0;

    /// The main window is about to close: ends what runs and deletes the expanded-data window.
    virtual void mainWindowCloses() = 0;
};
