#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "session/zelqExpandedRecords.h"
#include "session/zelqFilterChain.h"
#include "session/zelqLogCollection.h"
#include "session/zelqPreparedLog.h"
#include "session/zelqRecordList.h"
#include "session/zelqSessionView.h"

/// Which rows stay when a Display command parks the others.
enum class zelqDisplayed { Selected, NonSelected, Expanded, NonExpanded };

class zelqSessionDraft;

/// What is loaded and shown, and why: the logs and their slots, the chain of filters, the records
/// that are shown and those that are parked out of sight, and the expanded ones. Nobody else
/// changes any of these.
///
/// Each transition below leaves all of this true:
/// - Every log has a slot of its own whose name is not empty.
/// - Shown, parked and expanded records and those that a filter knows are of the loaded logs. None
///   is twice in any of these lists, and a record knows which of the first two it is in. A record
///   can be shown and parked at a time: what brings all records back does not look at the parked
///   ones.
/// - A record's mark says "expanded" exactly while its text is among the expanded ones.
/// - At most one filter of a kind is installed.
/// - Bookmarked records are of the loaded logs, each is known once, and a record knows that it is
///   one. Nothing but the user and unloading takes a bookmark away.
///
/// A transition that does not get the memory it needs throws std::bad_alloc and has changed
/// nothing. One thread at a time; a listing may read the records meanwhile, see beginListing().
/// What takes long can be prepared on another thread and put in place when it is ready, see
/// zelqSessionDraft; the transitions do the same in one go.
class zelqSession {
public:
    /// What nothing refers to any more. It may take its time to free, on any thread.
    using Remains = std::shared_ptr<void>;

    /// `countLines`: how many lines the text of an expanded record has.
    explicit zelqSession(zelqExpandedRecords::LineCount countLines)
        : expanded_(countLines, logs_.dataSources()) {}
    zelqSession(const zelqSession&) = delete;
    zelqSession& operator=(const zelqSession&) = delete;

    /// Views are told of changes from here on; null for none. They must outlive their use.
    void setRowsView(zelqRowsView* view) noexcept { rowsView_ = view; }
    void setLinesView(zelqLinesView* view) noexcept { linesView_ = view; }

    [[nodiscard]] const zelqLogCollection& logs() const noexcept { return logs_; }
    [[nodiscard]] const zelqFilterChain& filters() const noexcept { return filters_; }
    [[nodiscard]] const zelqRecordList& shown() const noexcept { return shown_; }
    [[nodiscard]] const zelqRecordList& parked() const noexcept { return parked_; }
    [[nodiscard]] const zelqExpandedRecords& expanded() const noexcept { return expanded_; }
    /// In the order in which they were set.
    [[nodiscard]] std::span<zelqBCnrObject* const> bookmarked() const noexcept {
        return bookmarked_;
    }

    /// Adds a log that was read for slotFor(name). Without filters all records are shown, numbered
    /// from 0 in the order of reading, and sorted. With filters the chain runs, and what of the new
    /// log it lets through joins the rows; a number is then the place in the whole result, and rows
    /// that come into an empty list keep the result's order. Returns the slot, or kNoSlot if there
    /// is none for the name, which changes nothing.
    int add(const std::string& name, zelqPreparedLog prepared);
    /// Unloads all logs and adds this one. Returns the logs that were loaded.
    [[nodiscard]] Remains load(const std::string& name, zelqPreparedLog prepared);
    /// Takes the log of a slot, or all logs, out of every place that knows its records, collapses
    /// every record that stays, and returns the log.
    [[nodiscard]] Remains unload(int slot);

    /// Installs a filter, in the place of the one of its kind if there is one, runs the chain from
    /// its place on and shows what the last filter lets through, in order.
    void applyFilter(std::unique_ptr<zelqFilterStage> filter);
    /// Takes out the filter of a kind, if there is one, and adds what it had hidden behind the
    /// rows. The other filters do not run again.
    void removeFilter(zelqFilterKind kind);
    /// Takes out all filters, collapses the selected ones of the rows and of what the filters had
    /// hidden, and shows all records as add() does without filters.
    void removeAllFilters();
    /// Brings the rows into order.
    void sortShown();

    /// Brings all parked records back. They come behind the rows and are sorted among them; into an
    /// empty list they come in the order in which they were parked.
    void displayAll();
    /// Parks all other rows. Parked records are collapsed, but for those parked because they are
    /// not expanded.
    void displayOnly(zelqDisplayed displayed);

    /// Expands or collapses records one after another. Those without expansion data only get a
    /// blank mark.
    void setExpanded(std::span<zelqBCnrObject* const> records, bool expand);
    void collapseAll();

    /// Puts a change in place that was made ready. Looks at no record.
    void commit(zelqSessionDraft& draft) noexcept;

    /// Sets a bookmark on a loaded record or takes it away. Takes time by the number of bookmarks.
    void setBookmarked(zelqBCnrObject& record, bool bookmarked);

    /// A listing that was asked for counts as made at once, though it is written later and on other
    /// threads: until endListing() the records that are expanded show true addresses and their
    /// state is the listing's alone. Pairs nest.
    void beginListing() noexcept { ++listings_; }
    void endListing() noexcept;
    /// The form in which a listing that is asked for now will show a record's addresses.
    [[nodiscard]] zelqAddressForm listingForm(const zelqBCnrObject& record) const noexcept {
        return listings_ != 0 ? zelqAddressForm::True : record.addressForm();
    }

    /// Aborts if one of the invariants does not hold. Looks at every record.
    void checkInvariants() const;

private:
    friend class zelqSessionDraft;
    class Transition;

    template <typename Steps>
    [[nodiscard]] Remains change(const Steps& steps);
    void commitLines(zelqSessionDraft& draft) noexcept;
    void expandOne(zelqBCnrObject& record);
    void dropCollapsed(const zelqBCnrObject& record) noexcept;

    zelqLogCollection logs_;
    zelqFilterChain filters_;
    zelqRecordList shown_{zelqBCnrObject::InContainer};
    zelqRecordList parked_{zelqBCnrObject::InHiddenContainer};
    zelqExpandedRecords expanded_;
    std::vector<zelqBCnrObject*> expandedMeanwhile_;  ///< while listings are written
    std::vector<zelqBCnrObject*> bookmarked_;
    int listings_ = 0;
    std::size_t noted_ = 0;  ///< the number of records that are not shown and were selected
    zelqRowsView* rowsView_ = nullptr;
    zelqLinesView* linesView_ = nullptr;
};
