#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>

#include "app/zelqLogWorker.h"
#include "dialogs/zelqBExpansionWindow.h"
#include "ui/zelqBWindow.h"
#include "ui/zelqLogOperations.h"

#include "session/zelqLogCollection.h"

/// The application object: owns the windows, the logs and their names, and carries out Load, Merge,
/// Unload and Write log.
///
/// These run one at a time, in the order in which they were asked for. The reading goes on in a
/// thread that touches nothing of this object; its result is put in place on the GUI thread, in one
/// go, so that every other command works on what is shown.
class zelqBrowser : public zelqLogOperations {
public:
    /// Builds the main window, hidden. Needs an open resource library.
    zelqBrowser();
    ~zelqBrowser() override;

    [[nodiscard]] zelqBWindow& mainWindow() noexcept { return *mainWindow_; }
    /// True while an operation runs or waits.
    [[nodiscard]] bool isBusy() const noexcept { return running_ || !waiting_.empty(); }

    [[nodiscard]] const zelqLogCollection& logs() const override { return records_; }
    [[nodiscard]] const std::string& fileName() const override { return fileName_; }
    void setFileName(const std::string& name) override { fileName_ = name; }
    int loadLog() override;
    int mergeLog() override;
    int unloadLog(int slot) override;
    void writeLog(const std::string& fileName) override;
    void setExpanded(std::span<zelqBCnrObject* const> records, bool expand) override;
    [[nodiscard]] const zelqFilterChain& activeFilters() const override { return activeFilters_; }
    void applyFilter(std::unique_ptr<zelqFilterStage> filter) override;
    void removeFilter(zelqFilterKind kind) override;
    void removeAllFilters() override;
    void mainWindowCloses() override;

    /// The window with the text of expanded records; made when it is first asked for. Shows it.
    zelqBExpansionWindow& expansionWindow();

private:
    enum class Operation { Load, Merge, Unload, Write };
    struct Job {
        Operation operation;
        std::string fileName;
        int slot = zelqLogCollection::kNoSlot;
    };

    int start(Job job);
    void startNext();
    void finish();
    void startLoad(const Job& job);
    void finishLoad(const std::string& name, zelqPreparedLog prepared);
    void startMerge(const Job& job);
    void finishMerge(const std::string& name, zelqPreparedLog prepared);
    void unload(const Job& job);
    void startWrite(const Job& job);
    void collapse(std::span<zelqBCnrObject* const> records);
    void expandDropped();
    [[nodiscard]] std::optional<std::int32_t> firstNumber(std::size_t number) const;
    void showNewLog(zelqRecordContainer::Update& container, zelqPreparedLog prepared, int slot);
    void removeRecords(zelqRecordContainer::Update& container);
    void collapseAll();

    zelqLogCollection records_;
    std::string fileName_;
    int currentLog_ = zelqLogCollection::kAllLogs;
    std::deque<Job> waiting_;
    bool running_ = false;
    bool pointerWaits_ = false;  ///< the mouse pointer tells of the operation that runs
    std::unique_ptr<zelqBWindow> mainWindow_;
    std::unique_ptr<zelqBExpansionWindow> expansionWindow_;
    zelqFilterChain activeFilters_;  ///< dialogs of the main window, so they go before it
    zelqLogWorker worker_;           // last: its thread ends before the rest goes
};
