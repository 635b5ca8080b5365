#include "ui/zelqRowMarks.h"

#include <QLocale>
#include <QShortcut>
#include <algorithm>
#include <functional>
#include <mutex>

#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "ui/zelqBWindow.h"
#include "ui/zelqLogOperations.h"

zelqRowMarks::zelqRowMarks(zelqBWindow& window, zelqLogOperations& operations)
    : QObject(&window), window_(window), operations_(operations) {
    const auto onKey = [this](const QKeySequence& key, const std::function<void()>& act) {
        auto* const shortcut = new QShortcut(key, &window_);
        connect(shortcut, &QShortcut::activated, this,
                [this, act] { operations_.whenSettled(act); });
    };
    onKey(Qt::CTRL | Qt::Key_F2, [this] { toggle(); });
    onKey(Qt::Key_F2, [this] { go(Direction::Down); });
    onKey(Qt::SHIFT | Qt::Key_F2, [this] { go(Direction::Up); });
}

std::vector<std::size_t> zelqRowMarks::rows(const zelqSession& session, std::size_t end) {
    const zelqRecordList& shown = session.shown();
    std::vector<std::size_t> rows;
    if (shown.isSorted()) {
        for (const zelqBCnrObject* record : session.bookmarked()) {
            if (shown.contains(*record)) {
                rows.push_back(shown.rowOf(*record));
            }
        }
    } else if (!session.bookmarked().empty()) {
        // All at once, for a look-up goes through the rows. The records are not looked at.
        std::vector<zelqBCnrObject*> marked(session.bookmarked().begin(),
                                            session.bookmarked().end());
        std::ranges::sort(marked, std::less<>());
        std::mutex mutex;
        const auto isMarked = [&marked](const zelqBCnrObject* record) {
            return std::ranges::binary_search(marked, record, std::less<>());
        };
        zelqParallel().walk(shown.size(), [&](std::size_t /*part*/) {
            return [&](std::size_t first, std::size_t pieceEnd) {
                for (; first < pieceEnd; ++first) {
                    if (isMarked(shown.records()[first])) {
                        const std::lock_guard lock(mutex);
                        rows.push_back(first);
                    }
                }
            };
        });
    }
    std::ranges::sort(rows);
    rows.erase(std::ranges::lower_bound(rows, end), rows.end());
    return rows;
}

std::vector<std::size_t> zelqRowMarks::rowsInTable() const {
    return rows(operations_.session(), window_.container().rowsSelected().size());
}

void zelqRowMarks::toggle() {
    zelqBCnrObject* const record = window_.container().cursoredRecord();
    if (record == nullptr) {
        return;
    }
    operations_.setBookmarked(*record, !record->isIn(zelqBCnrObject::Bookmarked));
    window_.container().bookmarkChanged(*record);
    window_.statusLine().showOutcome(zelqResourceLibrary::text(zelqId::kMarks)
                                         .arg(QLocale().toString(static_cast<qulonglong>(
                                             operations_.session().bookmarked().size()))));
}

void zelqRowMarks::go(Direction direction) {
    const std::vector<std::size_t> marked = rowsInTable();
    if (marked.empty()) {
        say(zelqId::kNoMarks);
        return;
    }
    zelqRecordContainer& table = window_.container();
    const int current = table.currentIndex().row();
    std::size_t target = 0;
    bool wraps = false;
    if (direction == Direction::Down) {
        const auto next = std::ranges::upper_bound(
            marked, current, std::less<>(), [](std::size_t row) { return static_cast<int>(row); });
        wraps = next == marked.end();
        target = wraps ? marked.front() : *next;
    } else {
        const auto next = std::ranges::lower_bound(
            marked, current, std::less<>(), [](std::size_t row) { return static_cast<int>(row); });
        wraps = next == marked.begin();
        target = wraps ? marked.back() : *std::prev(next);
    }
    window_.goTo(*table.recordAt(static_cast<int>(target)));
    if (wraps) {
        say(direction == Direction::Down ? zelqId::kFromFirstMark : zelqId::kFromLastMark);
    } else {
        window_.statusLine().showOutcome({});
    }
}

void zelqRowMarks::selectMarked() {
    zelqRowSelection::Rows rows(window_.container().rowsSelected().size());
    for (const std::size_t row : rowsInTable()) {
        rows.set(row);
    }
    window_.container().selectRows(std::move(rows));
}

void zelqRowMarks::say(int textId) {
    window_.statusLine().showOutcome(zelqResourceLibrary::text(textId));
}
