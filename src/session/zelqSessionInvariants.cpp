// What zelqSession promises to be true after each of its transitions, checked record by record.

#include <algorithm>
#include <array>
#include <span>
#include <vector>

#include "log/zelqBSorter.h"
#include "session/zelqInvariant.h"
#include "session/zelqSession.h"

using zelqInvariant::require;

namespace {

using Records = std::span<zelqBCnrObject* const>;
using Known = std::vector<const zelqBCnrObject*>;  ///< in ascending order

/// All records of a list, which has to hold each once.
Known eachOnce(Records records, const char* what) {
    Known known(records.begin(), records.end());
    std::sort(known.begin(), known.end());
    require(std::adjacent_find(known.begin(), known.end()) == known.end(), what);
    return known;
}

bool includes(const Known& all, const Known& some) {
    return std::includes(all.begin(), all.end(), some.begin(), some.end());
}

void checkLogs(const zelqLogCollection& logs) {
    std::array<bool, zelqLogCollection::kSlots> used{};
    std::size_t records = 0;
    for (const auto& [slot, log] : logs.logs()) {
        require(!logs.logName(slot).empty(), "a log's slot has a name");
        require(!std::exchange(used[static_cast<std::size_t>(slot)], true),
                "a slot belongs to one log");
        records += log->size();
    }
    require(records == logs.size(), "the collection knows how many records it has");
    require(static_cast<int>(logs.logs().size()) == logs.logCount(), "a name belongs to a log");
}

void checkFilters(const zelqFilterChain& filters, const Known& all) {
    for (const auto& filter : filters.filters()) {
        require(filters.find(filter->kind()) == filter.get(), "there is one filter of a kind");
        for (const Records records : {filter->passed(), filter->rejected()}) {
            require(includes(all, eachOnce(records, "a filter knows a record once")),
                    "a filter knows loaded records only");
        }
    }
}

}  // namespace

void zelqSession::checkInvariants() const {
    Known all;
    all.reserve(logs_.size());
    std::size_t expandedMarks = 0;
    std::size_t inShown = 0;
    std::size_t inParked = 0;
    std::size_t inBookmarked = 0;
    logs_.forEach([&](const zelqBCnrObject& record) {
        all.push_back(&record);
        expandedMarks += record.expanded() ? 1U : 0U;
        inShown += shown_.contains(record) ? 1U : 0U;
        inParked += parked_.contains(record) ? 1U : 0U;
        inBookmarked += record.isIn(zelqBCnrObject::Bookmarked) ? 1U : 0U;
        require(!record.isIn(zelqBCnrObject::Marked), "no record is left marked");
    });
    std::sort(all.begin(), all.end());
    checkLogs(logs_);
    checkFilters(filters_, all);
    for (const auto& [list, members] :
         {std::pair{&shown_, inShown}, std::pair{&parked_, inParked}}) {
        require(includes(all, eachOnce(list->records(), "a list holds a record once")),
                "a list holds loaded records only");
        require(members == list->size(), "records know whether they are in a list");
    }
    require(includes(all, eachOnce(bookmarked_, "a record is bookmarked once")),
            "bookmarked records are loaded");
    require(inBookmarked == bookmarked_.size(), "records know whether they are bookmarked");
    if (shown_.isSorted()) {
        require(std::is_sorted(shown_.records().begin(), shown_.records().end(), zelqBSorter{}),
                "rows that count as sorted are in order");
    }
    expanded_.checkInvariants();
    expanded_.forEach([&all](const zelqBCnrObject& record) {
        require(std::binary_search(all.begin(), all.end(), &record), "expanded records are loaded");
    });
    require(expandedMarks == expanded_.recordCount(), "a marked record's text is shown");
}
