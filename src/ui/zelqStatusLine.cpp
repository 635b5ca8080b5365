#include "ui/zelqStatusLine.h"

#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <algorithm>

#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"

namespace {

constexpr int kProgressWidth = 160;
constexpr int kProgressSteps = 1000;
constexpr int kLabelMargin = 4;

}  // namespace

zelqStatusLine::zelqStatusLine(QWidget* parent)
    : QStatusBar(parent), records_(new QLabel), logs_(new QLabel), progress_(new QProgressBar) {
    for (QLabel* label : {records_, logs_}) {
        label->setContentsMargins(kLabelMargin, 0, kLabelMargin, 0);
        addWidget(label);
    }
    progress_->setFixedWidth(kProgressWidth);
    progress_->setAccessibleName(zelqResourceLibrary::text(zelqId::kProgress));
    addPermanentWidget(progress_);
    progress_->hide();
}

void zelqStatusLine::showCounts(std::size_t shown, std::size_t most, std::size_t loaded, int logs) {
    const QLocale locale;
    const int textId = shown <= most ? zelqId::kRecordsShown : zelqId::kMostRecordsShown;
    records_->setText(zelqResourceLibrary::text(textId).arg(
        locale.toString(static_cast<qulonglong>(std::min(shown, most))),
        locale.toString(static_cast<qulonglong>(loaded))));
    logs_->setText(zelqResourceLibrary::text(zelqId::kLogsLoaded).arg(logs));
}

void zelqStatusLine::showProgress(std::uint64_t done, std::uint64_t total) {
    progress_->setRange(0, total == 0 ? 0 : kProgressSteps);
    if (total != 0) {
        progress_->setValue(static_cast<int>(static_cast<double>(done) /
                                             static_cast<double>(total) * kProgressSteps));
    }
    progress_->show();
}

void zelqStatusLine::hideProgress() {
    progress_->hide();
}
