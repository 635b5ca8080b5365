#include "ui/zelqRecordModel.h"

#include <algorithm>

#include "resources/zelqResourceLibrary.h"

zelqRecordModel::zelqRecordModel(const zelqRecordList& records, const zelqLocaleText& locale,
                                 const zelqRecordIcons& icons, QObject* parent)
    : QAbstractTableModel(parent), records_(records), locale_(locale), icons_(icons) {
    for (std::size_t i = 0; i < kColumnCount; ++i) {
        visible_.push_back(static_cast<zelqColumn>(i));
    }
}

int zelqRecordModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(std::min(records_.size(), mostRows_));
}

int zelqRecordModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(visible_.size());
}

QVariant zelqRecordModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) {
        return {};
    }
    const zelqColumn column = columnAt(index.column());
    const zelqBCnrObject& record = *records_.records()[static_cast<std::size_t>(index.row())];
    switch (role) {
        case Qt::DisplayRole:
            return zelqRecordColumns::text(record, column, locale_);
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(zelqRecordColumns::style(column).alignment);
        case Qt::DecorationRole:
            return column == zelqColumn::EntryType ? QVariant(icons_.icon(record.icon()))
                                                   : QVariant();
        case Qt::AccessibleDescriptionRole:
            return record.isIn(zelqBCnrObject::Bookmarked)
                       ? QVariant(zelqResourceLibrary::text(zelqId::kRowIsMarked))
                       : QVariant();
        default:
            return {};
    }
}

QVariant zelqRecordModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
        return {};
    }
    const zelqColumn column = columnAt(section);
    const zelqColumnStyle& style = zelqRecordColumns::style(column);
    if (style.headingId == 0 &&
        (role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole)) {
        // Without a heading, the column is told by what the menu calls it.
        const int menuText = zelqId::kFirstColumn + static_cast<int>(column);
        return zelqResourceLibrary::text(menuText).remove(u'&');
    }
    if (role == Qt::DisplayRole) {
        return style.headingId != 0 ? zelqResourceLibrary::text(style.headingId) : QString();
    }
    if (role == Qt::TextAlignmentRole && style.headingId != 0) {
        return QVariant::fromValue(Qt::AlignLeft | Qt::AlignBottom);
    }
    return {};
}

Qt::ItemFlags zelqRecordModel::flags(const QModelIndex& index) const {
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled |
                                 Qt::ItemNeverHasChildren
                           : Qt::NoItemFlags;
}

void zelqRecordModel::refreshMarks(int first, int last) {
    const int section = sectionOf(zelqColumn::ExpandMark);
    if (section >= 0 && first <= last && last < rowCount()) {
        emit dataChanged(index(first, section), index(last, section), {Qt::DisplayRole});
    }
}

void zelqRecordModel::setColumnVisible(zelqColumn column, bool visible) {
    if (visible == isColumnVisible(column)) {
        return;
    }
    const auto place = std::lower_bound(visible_.begin(), visible_.end(), column);
    if (visible) {
        visible_.insert(place, column);
    } else {
        visible_.erase(place);
    }
}

int zelqRecordModel::sectionOf(zelqColumn column) const {
    const auto place = std::lower_bound(visible_.begin(), visible_.end(), column);
    return place != visible_.end() && *place == column ? static_cast<int>(place - visible_.begin())
                                                       : -1;
}
