// What zelqSession promises to be true after each of its transitions, checked record by record.

#include <algorithm>
#include <array>
#include <span>
#include <unordered_set>

#include "log/zelqBSorter.h"
#include "session/zelqInvariant.h"
#include "session/zelqSession.h"

using zelqInvariant::require;

namespace {

using Records = std::span<zelqBCnrObject* const>;
using Known = std::unordered_set<const zelqBCnrObject*>;

/// All records of a list, which has to hold each once.
Known eachOnce(Records records, const char* what) {
    Known known(records.begin(), records.end());
    require(known.size() == records.size(), what);
    return known;
}

bool includes(const Known& all, Records some) {
    return std::all_of(some.begin(), some.end(),
                       [&all](const zelqBCnrObject* record) { return all.contains(record); });
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
    std::unordered_set<int> kinds;
    for (const auto& filter : filters.filters()) {
        require(kinds.insert(static_cast<int>(filter->kind())).second,
                "there is one filter of a kind");
        for (const Records records : {filter->passed(), filter->rejected()}) {
            eachOnce(records, "a filter knows a record once");
            require(includes(all, records), "a filter knows loaded records only");
        }
    }
}

}  // namespace

void zelqSession::checkInvariants() const {
    Known all;
    std::size_t expandedMarks = 0;
    std::size_t inShown = 0;
    std::size_t inParked = 0;
    logs_.forEach([&](const zelqBCnrObject& record) {
        all.insert(&record);
        expandedMarks += record.expanded() ? 1U : 0U;
        inShown += shown_.contains(record) ? 1U : 0U;
        inParked += parked_.contains(record) ? 1U : 0U;
        require(!record.isIn(zelqBCnrObject::Marked), "no record is left marked");
    });
    checkLogs(logs_);
    checkFilters(filters_, all);
    for (const auto& [list, members] :
         {std::pair{&shown_, inShown}, std::pair{&parked_, inParked}}) {
        eachOnce(list->records(), "a list holds a record once");
        require(includes(all, list->records()), "a list holds loaded records only");
        require(members == list->size(), "records know whether they are in a list");
    }
    if (shown_.isSorted()) {
        require(std::is_sorted(shown_.records().begin(), shown_.records().end(), zelqBSorter{}),
                "rows that count as sorted are in order");
    }
    expanded_.checkInvariants();
    expanded_.forEach([&all](const zelqBCnrObject& record) {
        require(all.contains(&record), "expanded records are loaded");
    });
    require(expandedMarks == expanded_.recordCount(), "a marked record's text is shown");
}
