#include "ui/zelqFindingsModel.h"

#include <QLocale>
#include <algorithm>
#include <utility>

#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "widgets/zelqPlainText.h"

bool zelqFindingsModel::refresh(const zelqLogCollection& collection) {
    std::vector<Log> logs;
    std::size_t rows = 0;
    std::uint64_t notListed = 0;
    for (const auto& [slot, log] : collection.logs()) {
        const zelqLogFindings& findings = *log->findings();
        if (findings.total() != 0) {
            logs.push_back({slot, collection.logName(slot), log->findings(), rows});
            rows += findings.kept.size() + (findings.problem.empty() ? 0 : 1);
            notListed += findings.notKept();
        }
    }
    if (logs == logs_) {
        return false;
    }
    beginResetModel();
    logs_ = std::move(logs);
    rows_ = rows;
    notListed_ = notListed;
    endResetModel();
    return true;
}

/// `row`: 0 to rows_ - 1.
const zelqFindingsModel::Log& zelqFindingsModel::logOf(int row) const {
    const auto next =
        std::ranges::upper_bound(logs_, static_cast<std::size_t>(row), {}, &Log::firstRow);
    return *(next - 1);
}

const zelqFinding* zelqFindingsModel::findingOf(const Log& log, int row) const {
    const std::size_t number = static_cast<std::size_t>(row) - log.firstRow;
    return number < log.findings->kept.size() ? &log.findings->kept[number] : nullptr;
}

std::optional<zelqFindingsModel::Place> zelqFindingsModel::placeAt(const QModelIndex& index) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) {
        return {};
    }
    const Log& log = logOf(index.row());
    const zelqFinding* const finding = findingOf(log, index.row());
    return finding != nullptr ? std::optional(Place{log.slot, finding->entry}) : std::nullopt;
}

int zelqFindingsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_);
}

int zelqFindingsModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kColumns;
}

QVariant zelqFindingsModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) {
        return {};
    }
    const int column = index.column();
    if (role == Qt::TextAlignmentRole && (column == Entry || column == Offset)) {
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    }
    const Log& log = logOf(index.row());
    if (role == Qt::ToolTipRole && column == File) {
        return zelqPlainText::ofFileName(log.name).toHtmlEscaped().prepend(QStringLiteral("<p>"));
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    const zelqFinding* const finding = findingOf(log, index.row());
    if (column == File) {
        return zelqPlainText::ofLastName(log.name);
    }
    if (column == What) {
        return zelqPlainText::visible(
            QString::fromStdString(finding != nullptr ? finding->what() : log.findings->problem));
    }
    if (finding == nullptr) {
        return {};
    }
    return QLocale().toString(
        static_cast<qulonglong>(column == Entry ? finding->entry : finding->offset));
}

QVariant zelqFindingsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 ||
        section >= kColumns) {
        return {};
    }
    return zelqResourceLibrary::text(zelqId::kFindingsFirstHeading + section);
}
