#include "widgets/zelqLineModel.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "widgets/zelqLineText.h"

namespace {

/// Lines past this are not shown; a model has no numbers for them.
constexpr std::size_t kMostRows = std::numeric_limits<int>::max();

}  // namespace

zelqLineModel::zelqLineModel(const zelqSession& session, const zelqLocaleText& locale,
                             QObject* parent)
    : QAbstractListModel(parent),
      session_(session),
      records_(session.expanded()),
      locale_(locale),
      formatter_(locale, zelqDataReader(dataSources(), zelqDataReader::Waits::No)) {
    // A record is freed after its lines were removed. Nothing else is connected yet, so that the
    // formatter forgets it before a view asks for the lines that are left.
    const auto forget = [this] { formatter_.forget(); };
    connect(this, &QAbstractItemModel::rowsRemoved, this, forget);
    connect(this, &QAbstractItemModel::modelReset, this, forget);
}

int zelqLineModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(std::min(records_.lineCount(), kMostRows));
}

QVariant zelqLineModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || index.row() < 0 || index.row() >= rowCount()) {
        return {};
    }
    const auto line = lineAt(index.row());
    showsPending_ = showsPending_ || line.state == zelqDataState::Pending;
    return line.state == zelqDataState::Here ? zelqLineText::of(line)
                                             : zelqLineText::inPlaceOfData(line.state);
}

/// `row`: 0 to rowCount() - 1.
zelqRecordFormatter::Line zelqLineModel::lineAt(int row) const {
    formatter_.data().update(dataSources());
    const zelqExpandedRecords::Place place = records_.at(static_cast<std::size_t>(row));
    return formatter_.line(*place.record, place.form, place.line);
}

void zelqLineModel::showNews() {
    if (std::exchange(showsPending_, false) && rowCount() != 0) {
        emit dataChanged(index(0), index(rowCount() - 1), {Qt::DisplayRole});
    }
    emit dataArrived();
}

Qt::ItemFlags zelqLineModel::flags(const QModelIndex& index) const {
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren
                           : Qt::NoItemFlags;
}

void zelqLineModel::linesAboutToBeInserted(std::size_t first, std::size_t count,
                                           zelqBCnrObject& record) {
    noteLength(record);
    resets_ = records_.lineCount() + count > kMostRows;
    if (resets_) {
        beginResetModel();
    } else {
        beginInsertRows({}, static_cast<int>(first), static_cast<int>(first + count) - 1);
    }
}

void zelqLineModel::linesInserted() noexcept {
    if (resets_) {
        endResetModel();
    } else {
        endInsertRows();
    }
}

void zelqLineModel::linesAboutToBeRemoved(std::size_t first, std::size_t count) noexcept {
    resets_ = records_.lineCount() > kMostRows;
    if (resets_) {
        beginResetModel();
    } else {
        beginRemoveRows({}, static_cast<int>(first), static_cast<int>(first + count) - 1);
    }
}

void zelqLineModel::linesRemoved() noexcept {
    forgetLengths();
    if (resets_) {
        endResetModel();
    } else {
        endRemoveRows();
    }
}

void zelqLineModel::linesAboutToBeReset(std::size_t longest) noexcept {
    longestLine_ = std::max(longestLine_, static_cast<int>(longest));
    beginResetModel();
}

void zelqLineModel::linesReset() noexcept {
    forgetLengths();
    endResetModel();
}

void zelqLineModel::forgetLengths() noexcept {
    if (records_.recordCount() == 0) {
        longestLine_ = 0;
    }
}

void zelqLineModel::noteLength(const zelqBCnrObject& record) {
    longestLine_ = std::max(longestLine_, static_cast<int>(formatter_.longestLine(record)));
}

std::size_t zelqLineModel::longestLine(std::span<zelqBCnrObject* const> records) const {
    zelqRecordFormatter formatter(locale_);  // of its own, for other threads have theirs
    std::size_t longest = 0;
    for (const zelqBCnrObject* record : records) {
        longest = std::max(longest, formatter.longestLine(*record));
    }
    return longest;
}
