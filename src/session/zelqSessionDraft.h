#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "session/zelqSession.h"

/// A change of a session that is made ready on any thread and then put in place. Until then the
/// session shows what it did before: it can be read meanwhile, but must not be changed, and nobody
/// may ask whether a record is in its lists or where its lines are.
///
/// What is to be done are steps, the transitions of the session. A draft takes one of them, or one
/// of a filter and sortShown() after it. When it was put in place it holds what the session knew
/// before, which takes its time to free.
class zelqSessionDraft {
public:
    using Records = std::vector<zelqBCnrObject*>;
    using Steps = std::function<void(zelqSessionDraft&)>;

    /// On the thread that changes the session, whose rows keep their selection from here on.
    /// Throws std::bad_alloc.
    explicit zelqSessionDraft(zelqSession& session);
    zelqSessionDraft(const zelqSessionDraft&) = delete;
    zelqSessionDraft& operator=(const zelqSessionDraft&) = delete;

    /// Takes the steps, on any thread. False if it was asked to stop. Where it throws, for want of
    /// memory, or was stopped, everything is as it was.
    bool prepare(const Steps& steps, const std::stop_token& stop = {});
    /// True when it is to be put in place.
    [[nodiscard]] bool isReady() const noexcept { return isReady_; }
    /// True if texts of records are among the lines that were not before.
    [[nodiscard]] bool expands() const noexcept { return expands_; }

    // Steps; see zelqSession.

    /// The name must have a slot.
    void add(const std::string& name, zelqPreparedLog prepared);
    void load(const std::string& name, zelqPreparedLog prepared);
    void unload(int slot);
    void applyFilter(const zelqFilterStage& filter);
    void removeFilter(zelqFilterKind kind);
    void removeAllFilters();
    void sortShown();
    void displayAll();
    void displayOnly(zelqDisplayed displayed);
    void setExpanded(std::span<zelqBCnrObject* const> records, bool expand);
    /// The last ones are those that opening their row expands.
    enum class Rows { All, Selected, NonSelected, SelectedToOpen };
    void setExpanded(Rows rows, bool expand);
    void collapseAll();

private:
    friend class zelqSession;

    [[nodiscard]] const zelqLogCollection& logs() const { return logs_ ? *logs_ : session_.logs_; }
    [[nodiscard]] const zelqRecordList& shown() const { return shown_ ? *shown_ : session_.shown_; }
    [[nodiscard]] const zelqRecordList& parked() const {
        return parked_ ? *parked_ : session_.parked_;
    }
    zelqFilterChain& filters();
    /// The only record that is expanded or collapsed; null if there are any number.
    [[nodiscard]] const zelqBCnrObject* markedOne() const noexcept { return markedOne_; }

    enum class Selection { Stays, Goes };
    void beginRows(Selection selection, std::size_t added = 0);
    void noteSelection(bool selected) const;
    void findSelection() noexcept;
    void restore() noexcept;

    void showAll(zelqRecordList rows) noexcept;
    void addResult(int slot);
    void dropAll();
    void expand(std::span<zelqBCnrObject* const> records);
    void collapse(std::span<zelqBCnrObject* const> records);
    void reserveCollapse(Records records);
    void finishCollapse() noexcept;
    static void markUnexpandable(std::span<zelqBCnrObject* const> records) noexcept;

    zelqSession& session_;
    zelqParallel parallel_;
    std::optional<zelqRowsView::Rows> selection_;  ///< none without a view
    std::size_t rowLimit_ = 0;

    // What becomes of the session's members of the same names.
    std::optional<zelqLogCollection> logs_;
    std::optional<zelqFilterChain> filters_;
    std::optional<zelqRecordList> shown_;
    std::optional<zelqRecordList> parked_;
    std::optional<zelqExpandedRecords> expanded_;
    std::optional<Records> expandedMeanwhile_;
    std::optional<Records> bookmarked_;
    std::size_t noted_;

    bool changesRows_ = false;
    std::optional<Selection> noting_;                   ///< what becomes of the selection
    zelqRowsView::Rows rows_;                           ///< that are selected afterwards
    std::vector<zelqRowsView::Rows::block_type> bits_;  ///< of these, while they are looked for
    std::optional<int> going_;                          ///< the slot whose records are freed
    Records collapsing_;
    const zelqBCnrObject* markedOne_ = nullptr;
    bool collapsesInPlace_ = false;  ///< the tree is changed when the draft is put in place
    bool expands_ = false;
    std::size_t longestLine_ = 0;
    bool isReady_ = false;
};
