#include "ui/zelqStatusLine.h"

#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <algorithm>

#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"

namespace {

constexpr int kProgressWidth = 160;
constexpr int kLabelMargin = 4;
/// What takes less is over before anybody could read how far it is.
constexpr int kProgressDelay = 100;  // ms

}  // namespace

zelqStatusLine::zelqStatusLine(QWidget* parent)
    : QStatusBar(parent),
      records_(new QLabel),
      logs_(new QLabel),
      outcome_(new QLabel),
      progress_(new QProgressBar) {
    for (QLabel* label : {records_, logs_, outcome_}) {
        label->setContentsMargins(kLabelMargin, 0, kLabelMargin, 0);
        label->setTextFormat(Qt::PlainText);
        addWidget(label, label == outcome_ ? 1 : 0);
    }
    // A long name must not make the window wider.
    outcome_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    progressDelay_.setSingleShot(true);
    progressDelay_.setInterval(kProgressDelay);
    connect(&progressDelay_, &QTimer::timeout, progress_, &QWidget::show);
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

void zelqStatusLine::startProgress() {
    progress_->setRange(0, 0);
    progressDelay_.start();
}

void zelqStatusLine::showProgress(int done, int total) {
    progress_->setRange(0, total);
    progress_->setValue(done);
}

void zelqStatusLine::hideProgress() {
    progressDelay_.stop();
    progress_->hide();
}

void zelqStatusLine::showOutcome(const QString& outcome) {
    outcome_->setText(outcome);
    outcome_->setToolTip(outcome.toHtmlEscaped());
}
