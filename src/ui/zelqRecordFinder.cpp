#include "ui/zelqRecordFinder.h"

#include <algorithm>

#include "output/zelqSearchTexts.h"
#include "session/zelqSession.h"
#include "ui/zelqRecordContainer.h"

zelqRecordFinder::zelqRecordFinder(QWidget& window, const zelqSession& session,
                                   zelqRecordContainer& container, const zelqLocaleText& locale)
    : zelqFinder(window, container, zelqFindBar::Matches::Selectable),
      session_(session),
      container_(container),
      locale_(locale) {
    // The table's model is reset around each change of the rows, and nothing of a change is done
    // before it says that it will be.
    const QAbstractItemModel* const model = container_.model();
    connect(model, &QAbstractItemModel::modelAboutToBeReset, this, [this] { stopForChange(); });
    connect(model, &QAbstractItemModel::modelReset, this, [this] { searchAgain(); });
    connect(model, &QAbstractItemModel::dataChanged, this, [this] {
        if (pattern() &&
            zelqRecordMatcher(pattern(), zelqSearchTexts::of(locale_)).matchesMarks()) {
            searchAgain();  // records were expanded or collapsed
        }
    });
    connect(container_.selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { showCounter(); });
}

std::size_t zelqRecordFinder::count() const {
    return std::min(session_.shown().size(), container_.rowLimit());
}

std::optional<std::size_t> zelqRecordFinder::currentPlace() const {
    const int row = container_.currentIndex().row();
    return row >= 0 && static_cast<std::size_t>(row) < count()
               ? std::optional(static_cast<std::size_t>(row))
               : std::nullopt;
}

std::function<zelqFinder::Matcher()> zelqRecordFinder::matcherMaker(const Pattern& pattern) {
    return [pattern, records = session_.shown().records(), &locale = locale_,
            data = zelqDataReader(session_.logs().dataSources())]() -> Matcher {
        return [matcher = zelqRecordMatcher(pattern, zelqSearchTexts::of(locale), data),
                records](std::size_t place) mutable {
            zelqRecordMatcher::fetch(records, place);
            return matcher.matches(*records[place]);
        };
    };
}

void zelqRecordFinder::goTo(std::size_t place, Way /*way*/) {
    container_.goTo(place);
}

void zelqRecordFinder::selectMatches() {
    const auto bits = search().bits();
    zelqRowSelection::Rows rows(bits.begin(), bits.end());
    rows.resize(search().count());
    container_.selectRows(std::move(rows));
}
