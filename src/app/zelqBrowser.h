#pragma once

#include <QString>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/zelqLogWorker.h"
#include "dialogs/zelqBExpansionWindow.h"
#include "session/zelqSessionDraft.h"
#include "ui/zelqBWindow.h"
#include "ui/zelqLogOperations.h"

/// The application object: owns the windows, what is loaded and shown, and the queue of operations.
///
/// Load, Merge, Unload and Write log run one at a time, in the order in which they were asked for.
/// The reading and writing goes on in a thread that changes nothing of the session; what it has
/// read is put in place on the GUI thread, so that every other command works on what is shown.
/// Where that takes long, and for every other change of many rows, it is prepared in a thread: this
/// is one more operation of the queue, and commands that depend on its outcome wait for it.
class zelqBrowser : public zelqLogOperations {
public:
    /// Builds the main window, hidden. Needs an open resource library.
    zelqBrowser();
    ~zelqBrowser() override;

    [[nodiscard]] zelqBWindow& mainWindow() noexcept { return *mainWindow_; }
    /// True while an operation runs or waits.
    [[nodiscard]] bool isBusy() const noexcept { return running_ || !waiting_.empty(); }
    [[nodiscard]] const zelqSession& session() const override { return session_; }

    /// The name of the file that loadLog() and mergeLog() read.
    [[nodiscard]] const std::string& fileName() const noexcept { return fileName_; }
    void setFileName(const std::string& name) override { fileName_ = name; }
    /// Start or queue the operation and return 1.
    int loadLog();
    int mergeLog();
    int unloadLog(int slot) override;

    void load(const std::string& name) override;
    void merge(const std::string& name) override;
    void take(std::vector<std::string> names, bool anew, QStringList refused) override;
    void writeLog(const std::string& fileName) override;
    void copy(Copy copy) override;
    /// In place of the browser's own choice: up to which length the bytes of a log are kept.
    void setMostKept(std::optional<std::size_t> bytes) noexcept { mostKept_ = bytes; }

    void change(Steps steps, Done done) override;
    void setRowsExpanded(zelqSessionDraft::Rows rows, bool expand) override;
    void setExpanded(std::span<zelqBCnrObject* const> records, bool expand) override;
    void setBookmarked(zelqBCnrObject& record, bool bookmarked) override {
        session_.setBookmarked(record, bookmarked);
    }
    void applyFilter(std::unique_ptr<zelqFilterStage> filter);
    void removeFilter(zelqFilterKind kind) {
        change([kind](zelqSessionDraft& draft) { draft.removeFilter(kind); }, nullptr);
    }
    void displayOnly(zelqDisplayed displayed) {
        change([displayed](zelqSessionDraft& draft) { draft.displayOnly(displayed); }, nullptr);
    }
    void whenSettled(std::function<void()> work) override;
    void lookUp(Look look, std::function<void()> done) override;
    /// Changes where there are more records than this are prepared in a thread. For tests.
    void setMostAtOnce(std::size_t records) noexcept { mostAtOnce_ = records; }
    void mainWindowCloses() override;

    /// The window with the text of expanded records; made when it is first asked for. Shows it.
    zelqBExpansionWindow& expansionWindow();

private:
    /// An operation that waits: what begins it, and whether the mouse pointer says that it runs.
    struct Job {
        std::function<void()> start;
        bool pointerWaits = true;
        bool changes = false;  ///< what is shown, or depends on what was asked for before
    };
    using Outcome = std::function<QString()>;
    using Failed = zelqLogWorker::Failed;

    /// From when a listing is asked for until it has ended.
    class Listing;

    int start(Job job);
    int startLoad(const std::function<bool()>& isWanted);
    void startNext();
    void finish(const Outcome& outcome);
    enum class Puts { Anew, More };
    void startRead(const std::string& name, int slot, std::size_t firstNumber, Puts puts);
    void put(const std::string& name, Puts puts, const std::shared_ptr<zelqPreparedLog>& prepared,
             const Outcome& outcome);
    void startMerge(const std::string& name);
    void unload(const std::string& name, int slot);
    void startWrite(const std::string& fileName, const std::shared_ptr<Listing>& listing);
    [[nodiscard]] bool isChanging() const noexcept;
    void startChange(const Steps& steps, const Done& done, const Outcome& outcome,
                     const Failed& failed);
    void hold(bool holds);
    void act(const std::function<void()>& work);
    void showExpanded(bool addsLines);
    [[nodiscard]] QString reasonNotTaken(const std::string& name) const;
    void expandDropped();
    void setUpExpansionWindow();
    void goToExpansionWindow();
    void goToMainWindow();
    void goToRecord(zelqBCnrObject& record);
    void tellCopied(qint64 lines, qint64 ofLines);
    [[nodiscard]] static QString copiedText(qint64 lines, qint64 ofLines);
    void startCopy(const Copy& copy);
    void setUpNews();
    void showNews();

    zelqSession session_;
    std::string fileName_;
    std::optional<std::size_t> mostKept_;
    std::atomic<bool> hasNews_ = false;  ///< and showNews() will be called
    std::deque<Job> waiting_;
    bool running_ = false;
    bool changing_ = false;       ///< the operation that runs is one that changes, see Job
    std::ptrdiff_t acting_ = -1;  ///< while one acts: the number of jobs that it has asked for
    std::size_t mostAtOnce_ = 500'000;
    std::shared_ptr<zelqSessionDraft> draft_;  ///< which is being prepared
    std::unique_ptr<zelqBWindow> mainWindow_;
    std::unique_ptr<zelqBExpansionWindow> expansionWindow_;
    std::optional<zelqWaitPointer> waitPointer_;  ///< of the operation that runs
    zelqLogWorker worker_;                        // last: its thread ends before the rest goes
};
