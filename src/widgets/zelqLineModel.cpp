#include "widgets/zelqLineModel.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "output/zelqHexDump.h"

namespace {

constexpr int kDumpLine = static_cast<int>(zelqDumpBlock::kLineSize);
/// Lines past this are not shown; a model has no numbers for them.
constexpr std::size_t kMostRows = std::numeric_limits<int>::max();

/// The first summary line without its time, its numbers and the function's name.
constexpr int kSummaryLine = 43;
/// What the time is filled up to.
constexpr int kTimeWidth = 14;

constexpr std::string_view kTimeLabel = "Time: ";

int numberWidth(std::uint32_t number) {
    constexpr int kLeast = 4;
    auto rest = std::abs(static_cast<std::int64_t>(static_cast<std::int32_t>(number)));
    int width = rest != number ? 1 : 0;  // the sign
    for (; rest != 0; rest /= 10) {
        ++width;
    }
    return std::max(kLeast, width);
}

}  // namespace

zelqLineModel::zelqLineModel(const zelqSession& session, const zelqLocaleText& locale,
                             QObject* parent)
    : QAbstractListModel(parent),
      locale_(locale),
      records_(session.expanded()),
      formatter_(locale),
      timeWidth_(static_cast<int>(locale.time({zelqTime::kSecondsPerDay - 1}).size())) {}

int zelqLineModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(std::min(records_.lineCount(), kMostRows));
}

QVariant zelqLineModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || index.row() < 0 || index.row() >= rowCount()) {
        return {};
    }
    const zelqExpandedRecords::Place place = records_.at(static_cast<std::size_t>(index.row()));
    const std::string line = formatter_.line(*place.record, place.form, place.line);
    const auto latin1 = [&line](std::size_t first, std::size_t size) {
        return QString::fromLatin1(line.data() + first, static_cast<qsizetype>(size));
    };
    if (place.line != 0 || !line.starts_with(kTimeLabel)) {
        return latin1(0, line.size());
    }
    // The time is in the locale's character set, all else of a line is not.
    const std::string time = locale_.time(place.record->time());
    const std::size_t end = kTimeLabel.size() + time.size();
    return latin1(0, kTimeLabel.size()) + QString::fromLocal8Bit(time) +
           latin1(end, line.size() - end);
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

void zelqLineModel::linesAboutToBeReset(std::span<zelqBCnrObject* const> records) {
    beginResetModel();
    for (const zelqBCnrObject* record : records) {
        noteLength(*record);
    }
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
    const int summary = kSummaryLine + std::max(kTimeWidth, timeWidth_) +
                        numberWidth(record.pid()) + numberWidth(record.majorError()) +
                        static_cast<int>(record.summaryFunction().size());
    longestLine_ = std::max({longestLine_, kDumpLine, summary});
}
