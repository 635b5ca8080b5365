#include "ui/zelqStatusLine.h"

#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>
#include <initializer_list>

#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "widgets/zelqElidedLabel.h"

namespace {

constexpr int kProgressWidth = 160;
/// What takes less is over before anybody could read how far it is.
constexpr int kProgressDelay = 100;  // ms

QString number(std::uint64_t value) {
    return QLocale().toString(static_cast<qulonglong>(value));
}

}  // namespace

zelqStatusLine::zelqStatusLine(QWidget* parent)
    : QStatusBar(parent),
      records_(new zelqElidedLabel),
      logs_(new zelqElidedLabel),
      filters_(new zelqElidedLabel),
      parked_(new zelqElidedLabel),
      findings_(new QPushButton),
      outcome_(new zelqElidedLabel),
      progress_(new QProgressBar),
      place_(new zelqElidedLabel) {
    findings_->setFlat(true);
    connect(findings_, &QPushButton::clicked, this, &zelqStatusLine::findingsWanted);
    for (QWidget* part :
         std::initializer_list<QWidget*>{records_, logs_, filters_, parked_, findings_}) {
        addWidget(part);
    }
    addWidget(outcome_, 1);
    outcome_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    for (QWidget* part : std::initializer_list<QWidget*>{filters_, parked_, findings_}) {
        part->hide();
    }
    progressDelay_.setSingleShot(true);
    progressDelay_.setInterval(kProgressDelay);
    connect(&progressDelay_, &QTimer::timeout, progress_, &QWidget::show);
    progress_->setFixedWidth(kProgressWidth);
    progress_->setAccessibleName(zelqResourceLibrary::text(zelqId::kProgress));
    addPermanentWidget(progress_);
    // At the end, where its changes while the cursor moves do not move the others.
    addPermanentWidget(place_);
    progress_->hide();
}

void zelqStatusLine::showCounts(std::size_t shown, std::size_t most, std::size_t loaded, int logs) {
    const int textId = shown <= most ? zelqId::kRecordsShown : zelqId::kMostRecordsShown;
    records_->showText(
        zelqResourceLibrary::text(textId).arg(number(std::min(shown, most)), number(loaded)));
    logs_->showText(zelqResourceLibrary::text(zelqId::kLogsLoaded).arg(logs));
}

void zelqStatusLine::showNarrowing(const QStringList& filters, std::size_t parked) {
    filters_->showText(
        zelqResourceLibrary::text(zelqId::kActiveFilters).arg(filters.join(QStringLiteral(", "))));
    filters_->setVisible(!filters.isEmpty());
    parked_->showText(zelqResourceLibrary::text(zelqId::kParkedRows).arg(number(parked)));
    parked_->setVisible(parked != 0);
}

void zelqStatusLine::showFindings(std::uint64_t count) {
    findings_->setText(zelqResourceLibrary::text(zelqId::kFindings).arg(number(count)));
    findings_->setVisible(count != 0);
}

void zelqStatusLine::showPlace(const QString& place, const QString& whole) {
    place_->showText(place, place.isEmpty()
                                ? QString()
                                : zelqResourceLibrary::text(zelqId::kCurrentRow).arg(whole));
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
    outcome_->showText(outcome);
}

QString zelqStatusLine::outcome() const {
    return outcome_->text();
}
