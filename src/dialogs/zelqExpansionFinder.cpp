#include "dialogs/zelqExpansionFinder.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "widgets/zelqLineModel.h"
#include "widgets/zelqLineView.h"

zelqExpansionFinder::zelqExpansionFinder(QWidget& window, zelqLineModel& lines, zelqLineView& view,
                                         const zelqLocaleText& locale)
    : zelqFinder(window, view, zelqFindBar::Matches::NotSelectable),
      lines_(lines),
      view_(view),
      locale_(locale) {
    view_.addAction(&findAction());  // which its context menu shows
    connect(&bar(), &zelqFindBar::copyWanted, &view_, &zelqLineView::copySelection);
    const auto stops = [this] {
        stopForChange();
        found_.reset();
        pending_.reset();
    };
    const auto begins = [this] { searchAgain(); };
    connect(&lines_, &zelqLineModel::recordsAboutToChange, this, [this] {
        stopForChange();
        searchAgain();  // of the lines, nothing else need change
    });
    connect(&lines_, &zelqLineModel::rowsAboutToBeInserted, this, stops);
    connect(&lines_, &zelqLineModel::rowsAboutToBeRemoved, this, stops);
    connect(&lines_, &zelqLineModel::modelAboutToBeReset, this, stops);
    connect(&lines_, &zelqLineModel::rowsInserted, this, begins);
    connect(&lines_, &zelqLineModel::rowsRemoved, this, begins);
    connect(&lines_, &zelqLineModel::modelReset, this, begins);
    connect(&lines_, &zelqLineModel::dataArrived, this, [this] {
        if (const auto pending = std::exchange(pending_, {}); pending && zelqFinder::pattern()) {
            goTo(pending->first, pending->second);
        }
    });
    connect(view_.selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { showCounter(); });
}

std::size_t zelqExpansionFinder::count() const {
    return lines_.records().recordCount();
}

std::optional<std::size_t> zelqExpansionFinder::currentPlace() const {
    const int row = view_.currentIndex().row();
    if (row < 0 || row >= lines_.rowCount()) {
        return std::nullopt;
    }
    const zelqExpandedRecords& records = lines_.records();
    return records.numberOf(*records.at(static_cast<std::size_t>(row)).record);
}

std::function<zelqFinder::Matcher()> zelqExpansionFinder::matcherMaker(const Pattern& pattern) {
    if (zelqSearchPattern::Query query = bar().query(); query != query_) {
        query_ = std::move(query);
        found_.reset();
        pending_.reset();
    }
    return [pattern, &records = lines_.records(), &locale = locale_,
            data = zelqDataReader(lines_.dataSources())]() -> Matcher {
        return [search = std::make_shared<zelqLineSearch>(pattern, locale, data),
                places = records.places()](std::size_t place) {
            return search->isIn(*places[place].record, places[place].form);
        };
    };
}

void zelqExpansionFinder::goTo(std::size_t place, Way way) {
    const zelqExpandedRecords& records = lines_.records();
    const std::size_t first = records.lineOfRecord(place);
    const zelqExpandedRecords::Place record = records.at(first);
    zelqDataReader data(lines_.dataSources(), zelqDataReader::Waits::No);
    pending_.reset();
    if (data.dataOf(*record.record).state == zelqDataState::Pending) {
        pending_ = std::pair(place, way);
        const auto line = std::min(first + zelqRecordFormatter::kDumpLine,
                                   static_cast<std::size_t>(lines_.rowCount()) - 1);
        view_.scrollTo(lines_.index(static_cast<int>(line)));
        return;
    }
    found_ = Found{
        .record = record.record,
        .places = zelqLineSearch(pattern(), locale_, data).placesIn(*record.record, record.form),
        .at = 0};
    if (found_->places.empty()) {
        found_.reset();
        return;
    }
    if (way == Way::Backward) {
        found_->at = found_->places.size() - 1;
    } else if (const int row = view_.currentIndex().row();
               way == Way::Here && row > static_cast<int>(first)) {
        // The first one that is not before the current line, if there is one.
        const auto line = static_cast<std::size_t>(row) - first;
        const auto nearest = std::ranges::find_if(
            found_->places, [line](const auto& one) { return one.front().line >= line; });
        found_->at = nearest != found_->places.end()
                         ? static_cast<std::size_t>(nearest - found_->places.begin())
                         : 0;
    }
    show();
}

bool zelqExpansionFinder::goOnWithin(Way way) {
    const std::optional<std::size_t> place = currentPlace();
    const zelqExpandedRecords& records = lines_.records();
    const bool isCurrent =
        found_ && place && records.at(records.lineOfRecord(*place)).record == found_->record;
    const std::size_t next =
        isCurrent
            ? found_->at + (way == Way::Backward ? std::numeric_limits<std::size_t>::max() : 1)
            : 0;
    if (!isCurrent || next >= found_->places.size()) {
        return false;
    }
    found_->at = next;
    show();
    return true;
}

void zelqExpansionFinder::forgetMatches() {
    found_.reset();
    pending_.reset();
    view_.selectPieces({});
}

void zelqExpansionFinder::show() {
    const std::size_t first = lines_.records().linesOf(*found_->record).first;
    std::vector<zelqLineView::Piece> pieces;
    for (const zelqLineSearch::Piece& piece : found_->places[found_->at]) {
        const std::size_t line = first + piece.line;
        if (line < static_cast<std::size_t>(lines_.rowCount())) {
            pieces.push_back({.line = static_cast<int>(line),
                              .column = static_cast<int>(piece.column),
                              .size = static_cast<int>(piece.size)});
        }
    }
    view_.selectPieces(std::move(pieces));
}
