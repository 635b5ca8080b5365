#include "ui/zelqOverview.h"

#include <QHelpEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <new>
#include <system_error>
#include <utility>

#include "output/zelqLocaleText.h"
#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "ui/zelqRecordContainer.h"
#include "ui/zelqRowMarks.h"

namespace {

/// So many records are looked at without a thread: it takes some milliseconds at most.
constexpr std::size_t kFewRows = 100'000;
/// Samples for each line of the picture.
constexpr std::size_t kSamples = 48;
constexpr int kBetweenLooks = 20;  // ms

QString number(std::size_t value) {
    return QLocale().toString(static_cast<qulonglong>(value));
}

/// Tells of one range after another, in ascending order, whether any of its rows is among some. All
/// ranges together take one walk over these.
class Walk {
public:
    explicit Walk(const zelqRowSelection::Rows& rows) : rows_(rows), next_(rows.find_first()) {}

    bool anyIn(std::size_t first, std::size_t end) {
        if (next_ < first) {
            next_ = rows_.find_next(first - 1);
        }
        return next_ < end;  // npos is the largest number
    }

private:
    const zelqRowSelection::Rows& rows_;
    std::size_t next_;
};

}  // namespace

zelqOverview::zelqOverview(zelqRecordContainer& table, const zelqSession& session,
                           const zelqLocaleText& locale, QWidget* parent)
    : QAbstractSlider(parent), table_(table), session_(session), locale_(locale) {
    setObjectName(QString::number(zelqId::kOverview));
    setAccessibleName(zelqResourceLibrary::text(zelqId::kOverview));
    setAccessibleDescription(zelqResourceLibrary::text(zelqId::kOverviewHelp));
    setOrientation(Qt::Vertical);
    setInvertedControls(true);  // Down goes to later rows
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    setRange(0, 0);
    look_.setInterval(kBetweenLooks);
    connect(&look_, &QTimer::timeout, this, &zelqOverview::takeCounted);
    const QAbstractItemModel* const rows = table.model();
    connect(rows, &QAbstractItemModel::modelAboutToBeReset, this, &zelqOverview::stop);
    connect(rows, &QAbstractItemModel::modelReset, this, &zelqOverview::rowsChanged);
    const QItemSelectionModel* const selection = table.selectionModel();
    connect(selection, &QItemSelectionModel::selectionChanged, this, [this] { update(); });
    connect(selection, &QItemSelectionModel::currentChanged, this, &zelqOverview::follow);
    connect(&table, &zelqRecordContainer::bookmarksChanged, this, [this] {
        marks_ = zelqRowMarks::rows(session_, rowCount());
        update();
    });
    connect(table.verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { update(); });
    // A scroll bar below the rows comes and goes by it.
    connect(table.horizontalScrollBar(), &QScrollBar::rangeChanged, this, [this] { update(); });
    connect(this, &QAbstractSlider::valueChanged, this, [this](int row) {
        if (!follows_) {
            table_.goToRow(row);
        }
        update();
    });
}

zelqOverview::~zelqOverview() {
    stop();
}

std::size_t zelqOverview::rowCount() const {
    return static_cast<std::size_t>(table_.model()->rowCount());
}

zelqErrorRows::Rows zelqOverview::records() const {
    return session_.shown().records().first(rowCount());
}

/// No thread looks at a record from here on, and nothing is left that is about the rows.
void zelqOverview::stop() noexcept {
    if (counter_.joinable()) {
        counter_.request_stop();
        counter_.join();
    }
    look_.stop();
    counted_.reset();
    hasCounted_ = false;
    errors_ = {};
    sampled_.clear();
    matches_.clear();
    marks_.clear();
    exact_ = false;
}

void zelqOverview::rowsChanged() noexcept {
    try {
        marks_ = zelqRowMarks::rows(session_, rowCount());
        countErrors();
    } catch (const std::bad_alloc&) {
        // The samples serve as well.
    }
    const int last = std::max(0, static_cast<int>(rowCount()) - 1);
    follows_ = true;
    setRange(0, last);
    follows_ = false;
    setSteps();
    follow();
}

void zelqOverview::resizeEvent(QResizeEvent* event) {
    QAbstractSlider::resizeEvent(event);
    setSteps();
}

/// An arrow key goes from line to line of the picture.
void zelqOverview::setSteps() {
    const int step = maximum() / std::max(1, height()) + 1;
    setSingleStep(step);
    setPageStep(10 * step);
}

void zelqOverview::countErrors() {
    if (rowCount() <= kFewRows) {
        errors_ = zelqErrorRows(records(), {});
        exact_ = true;
        return;
    }
    try {
        counter_ = std::jthread([this, rows = records()](const std::stop_token& asked) {
            try {
                zelqErrorRows counted(rows, asked);
                if (!asked.stop_requested()) {
                    counted_ = std::move(counted);
                    hasCounted_.store(true, std::memory_order_release);
                }
            } catch (const std::bad_alloc&) {
                // The samples serve as well.
            }
        });
        look_.start();
    } catch (const std::system_error&) {
        // The same.
    }
}

void zelqOverview::takeCounted() {
    if (hasCounted_.load(std::memory_order_acquire)) {
        look_.stop();
        counter_.join();
        errors_ = std::move(*counted_);
        counted_.reset();
        exact_ = true;
        sampled_ = {};
        update();
    }
}

void zelqOverview::follow() {
    follows_ = true;
    setValue(std::max(0, table_.currentIndex().row()));
    follows_ = false;
    update();
}

void zelqOverview::setMatches(const std::vector<std::uint64_t>& bits) {
    matches_ = zelqRowSelection::Rows(bits.begin(), bits.end());
    matches_.resize(rowCount());
    update();
}

double zelqOverview::errorShare(std::size_t first, std::size_t end) const {
    return exact_
               ? static_cast<double>(errors_.count(first, end)) / static_cast<double>(end - first)
               : zelqErrorRows::sampledShare(records().subspan(first, end - first), kSamples);
}

std::vector<zelqOverview::Line> zelqOverview::lines(int height) const {
    const std::size_t rows = rowCount();
    const std::size_t count = std::min(rows, static_cast<std::size_t>(std::max(0, height)));
    std::vector<Line> lines;
    lines.reserve(count);
    auto mark = marks_.begin();
    Walk matches(matches_);
    Walk selected(table_.rowsSelected());
    for (std::size_t line = 0; line < count; ++line) {
        const std::size_t first = line * rows / count;
        const std::size_t end = (line + 1) * rows / count;
        mark = std::lower_bound(mark, marks_.end(), first);
        lines.push_back(
            {.first = first,
             .end = end,
             .errors = sampled_.size() == count ? sampled_[line] : errorShare(first, end),
             .match = matches.anyIn(first, end),
             .selected = selected.anyIn(first, end),
             .marked = mark != marks_.end() && *mark < end});
    }
    return lines;
}

/// The row to go to from a line of the picture: the one that somebody who sees the line looks for.
std::size_t zelqOverview::remarkableRow(std::size_t first, std::size_t end) const {
    const auto mark = std::ranges::lower_bound(marks_, first);
    if (mark != marks_.end() && *mark < end) {
        return *mark;
    }
    if (Walk(matches_).anyIn(first, end)) {
        return matches_.test(first) ? first : matches_.find_next(first);
    }
    if (exact_) {
        const std::size_t error = errors_.find(first, end);
        return error < end ? error : first;
    }
    const auto rows = records().subspan(first, end - first);
    const auto error = std::ranges::find_if(
        rows, [](const zelqBCnrObject* record) { return zelqErrorRows::isError(*record); });
    return error != rows.end() ? first + static_cast<std::size_t>(error - rows.begin()) : first;
}

void zelqOverview::goTo(int y) {
    const QRect area = picture();
    const std::size_t rows = rowCount();
    if (rows == 0 || area.height() <= 0) {
        return;
    }
    const std::size_t count = std::min(rows, static_cast<std::size_t>(area.height()));
    const std::size_t line = std::min(lineAt(y), count - 1);
    table_.goToRow(static_cast<int>(remarkableRow(line * rows / count, (line + 1) * rows / count)));
}

/// The line at a height; one past the last line below the picture.
std::size_t zelqOverview::lineAt(int y) const {
    const QRect area = picture();
    const std::size_t count = std::min(rowCount(), static_cast<std::size_t>(area.height()));
    const auto down = static_cast<std::size_t>(std::max(0, y - area.top()));
    return std::min(count, down * count / static_cast<std::size_t>(std::max(1, area.height())));
}

bool zelqOverview::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto& help = static_cast<const QHelpEvent&>(*event);
        QToolTip::showText(help.globalPos(), tipAt(help.pos().y()), this);
        return true;
    }
    return QAbstractSlider::event(event);
}

QString zelqOverview::tipAt(int y) const {
    const QRect area = picture();
    const std::size_t rows = rowCount();
    const std::size_t count = std::min(rows, static_cast<std::size_t>(area.height()));
    const std::size_t line = lineAt(y);
    if (line >= count) {
        return zelqResourceLibrary::text(zelqId::kOverviewHelp);
    }
    const std::size_t first = line * rows / count;
    const std::size_t end = (line + 1) * rows / count;
    const zelqBCnrObject& record = *records()[first];
    const QString time = QString::fromLatin1(locale_.date(record.date())) + u' ' +
                         QString::fromLocal8Bit(locale_.time(record.time()));
    const QString place =
        zelqResourceLibrary::text(zelqId::kOverviewTip).arg(time, number(first + 1), number(end));
    const QString errors =
        exact_
            ? zelqResourceLibrary::text(zelqId::kOverviewErrors)
                  .arg(number(errors_.count(first, end)), number(end - first))
            : zelqResourceLibrary::text(zelqId::kOverviewSome)
                  .arg(number(static_cast<std::size_t>(std::lround(100 * errorShare(first, end)))),
                       number(end - first));
    return place + u'\n' + errors;
}

void zelqOverview::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        goTo(qRound(event->position().y()));
    }
}

void zelqOverview::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons().testFlag(Qt::LeftButton)) {
        goTo(qRound(event->position().y()));
    }
}

void zelqOverview::wheelEvent(QWheelEvent* event) {
    QCoreApplication::sendEvent(table_.verticalScrollBar(), event);
}
