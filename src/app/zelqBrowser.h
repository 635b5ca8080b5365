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
#include "session/zelqSession.h"
#include "ui/zelqBWindow.h"
#include "ui/zelqLogOperations.h"

/// The application object: owns the windows, what is loaded and shown, and the queue of operations.
///
/// Load, Merge, Unload and Write log run one at a time, in the order in which they were asked for.
/// The reading and writing goes on in a thread that changes nothing of the session; what it has
/// read is put in place on the GUI thread, in one go, so that every other command works on what is
/// shown.
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

    void setExpanded(std::span<zelqBCnrObject* const> records, bool expand) override;
    void setBookmarked(zelqBCnrObject& record, bool bookmarked) override {
        session_.setBookmarked(record, bookmarked);
    }
    void applyFilter(std::unique_ptr<zelqFilterStage> filter) override;
    void removeFilter(zelqFilterKind kind) override { session_.removeFilter(kind); }
    void removeAllFilters() override { session_.removeAllFilters(); }
    void sortShown() override { session_.sortShown(); }
    void displayAll() override { session_.displayAll(); }
    void displayOnly(zelqDisplayed displayed) override { session_.displayOnly(displayed); }
    void mainWindowCloses() override;

    /// The window with the text of expanded records; made when it is first asked for. Shows it.
    zelqBExpansionWindow& expansionWindow();

private:
    /// An operation that waits: what begins it, and whether the mouse pointer says that it runs.
    struct Job {
        std::function<void()> start;
        bool pointerWaits = true;
    };

    /// While one of these lives, a listing was asked for and has not ended.
    using Listing = std::shared_ptr<zelqSession>;

    int start(Job job);
    int startLoad(const std::function<bool()>& isWanted);
    void startNext();
    template <typename Outcome>
    void finish(const Outcome& outcome);
    void startRead(const std::string& name, int slot, std::size_t firstNumber,
                   void (zelqBrowser::*place)(const std::string& name, zelqPreparedLog prepared));
    void putLoaded(const std::string& name, zelqPreparedLog prepared);
    void startMerge(const std::string& name);
    void putMerged(const std::string& name, zelqPreparedLog prepared);
    void unload(const std::string& name, int slot);
    void startWrite(const std::string& fileName, const Listing& listing);
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
    std::unique_ptr<zelqBWindow> mainWindow_;
    std::unique_ptr<zelqBExpansionWindow> expansionWindow_;
    std::optional<zelqWaitPointer> waitPointer_;  ///< of the operation that runs
    zelqLogWorker worker_;                        // last: its thread ends before the rest goes
};

/// `outcome()`: what the status line says of the operation. It is asked when the next operation can
/// begin, for there may be no memory for a text.
template <typename Outcome>
void zelqBrowser::finish(const Outcome& outcome) {
    running_ = false;
    waitPointer_.reset();
    mainWindow_->statusLine().hideProgress();
    mainWindow_->attempt([this, &outcome] {
        mainWindow_->statusLine().showOutcome(outcome());
        mainWindow_->refresh();
    });
    startNext();
}
