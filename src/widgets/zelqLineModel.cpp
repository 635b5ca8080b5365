#include "widgets/zelqLineModel.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {

/// Lines past this are not shown; a model has no numbers for them.
constexpr std::size_t kMostRows = std::numeric_limits<int>::max();

}  // namespace

zelqLineModel::zelqLineModel(const zelqLocaleText& locale, QObject* parent)
    : QAbstractListModel(parent), formatter_(locale) {
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
    const zelqExpandedRecords::Place place = records_.at(static_cast<std::size_t>(index.row()));
    const auto line = formatter_.line(*place.record, place.form, place.line);
    QString text = QString::fromLatin1(line.before);
    if (!line.time.empty()) {
        text += QString::fromLocal8Bit(line.time) + QString::fromLatin1(line.after);
    }
    return text;
}

Qt::ItemFlags zelqLineModel::flags(const QModelIndex& index) const {
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren
                           : Qt::NoItemFlags;
}

void zelqLineModel::insert(zelqBCnrObject& record) {
    const zelqAddressForm form = record.nextAddressForm();
    const std::size_t first = records_.insertionLine(record);
    const std::size_t count = zelqRecordFormatter::lineCount(record, form);
    noteLength(record);
    if (records_.lineCount() + count > kMostRows) {
        beginResetModel();
        records_.insert(record, form);
        endResetModel();
        return;
    }
    beginInsertRows({}, static_cast<int>(first), static_cast<int>(first + count) - 1);
    records_.insert(record, form);
    endInsertRows();
}

void zelqLineModel::insertAll(std::vector<zelqBCnrObject*> records) {
    if (records.size() == 1) {
        insert(*records.front());
        return;
    }
    beginResetModel();
    for (const zelqBCnrObject* record : records) {
        noteLength(*record);
    }
    records_.insertAll(std::move(records));
    endResetModel();
}

void zelqLineModel::remove(const zelqBCnrObject& record) {
    const zelqExpandedRecords::Lines lines = records_.linesOf(record);
    if (records_.lineCount() > kMostRows) {
        beginResetModel();
        records_.remove(record);
        endResetModel();
    } else {
        beginRemoveRows({}, static_cast<int>(lines.first),
                        static_cast<int>(lines.first + lines.count) - 1);
        records_.remove(record);
        endRemoveRows();
    }
    if (records_.recordCount() == 0) {
        longestLine_ = 0;
    }
}

void zelqLineModel::removeCollapsed() {
    beginResetModel();
    records_.removeCollapsed();
    endResetModel();
}

void zelqLineModel::clear() {
    beginResetModel();
    records_.clear();
    longestLine_ = 0;
    endResetModel();
}

void zelqLineModel::noteLength(const zelqBCnrObject& record) {
    longestLine_ = std::max(longestLine_, static_cast<int>(formatter_.longestLine(record)));
}
