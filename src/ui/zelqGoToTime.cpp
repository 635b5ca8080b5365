#include "ui/zelqGoToTime.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QStyle>
#include <QToolButton>
#include <memory>
#include <new>

#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "ui/zelqLogOperations.h"
#include "ui/zelqRecordContainer.h"
#include "widgets/zelqElidedLabel.h"

namespace {

constexpr int kMargin = 4;
constexpr int kFieldCharacters = 24;

QString text(int id) {
    return zelqResourceLibrary::text(id);
}

}  // namespace

zelqGoToTime::zelqGoToTime(QWidget& window, zelqLogOperations& operations,
                           zelqRecordContainer& container, const zelqLocaleText& locale)
    : operations_(operations),
      container_(container),
      input_(locale),
      example_(
          QString::fromStdString(locale.date({.year = 2026, .month = 11, .day = 21}) + ' ' +
                                 locale.utf8(locale.time({.seconds = (14 * 60 + 5) * 60 + 30})))),
      field_(new QLineEdit),
      warning_(field_->addAction(style()->standardIcon(QStyle::SP_MessageBoxWarning),
                                 QLineEdit::TrailingPosition)),
      outcome_(new zelqElidedLabel) {
    setAccessibleName(text(zelqId::kGoToTimeBar));
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    auto* const label = new QLabel(text(zelqId::kGoToTimeLabel));
    label->setBuddy(field_);
    field_->setAccessibleName(label->text().remove(u':'));
    field_->setPlaceholderText(example_);
    field_->setToolTip(text(zelqId::kGoToTimeHint).arg(example_));
    field_->setFixedWidth(fontMetrics().averageCharWidth() * kFieldCharacters);
    warning_->setVisible(false);
    connect(field_, &QLineEdit::textChanged, this, [this] { showProblem({}); });
    auto* const button = new QPushButton(text(zelqId::kGoToTimeGo));
    connect(button, &QPushButton::clicked, this, &zelqGoToTime::go);
    auto* const close = new QToolButton;
    close->setAutoRaise(true);
    close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    close->setAccessibleName(text(zelqId::kGoToTimeClose));
    close->setToolTip(close->accessibleName());
    connect(close, &QToolButton::clicked, this, [this] {
        hide();
        container_.setFocus();
    });
    for (QWidget* part : std::initializer_list<QWidget*>{label, field_, button, outcome_, close}) {
        layout->addWidget(part);
    }
    layout->setStretchFactor(outcome_, 1);
    connect(new QShortcut(Qt::CTRL | Qt::Key_G, &window), &QShortcut::activated, this,
            &zelqGoToTime::open);
    hide();
}

void zelqGoToTime::open() {
    emit opened();
    show();
    field_->setFocus(Qt::ShortcutFocusReason);
    field_->selectAll();
}

void zelqGoToTime::go() {
    const auto moment = input_.read(field_->text().toStdString());
    if (!moment) {
        showProblem(text(zelqId::kGoToTimeBad).arg(example_));
        return;
    }
    try {
        operations_.whenSettled([this, moment = *moment] { goTo(moment); });
    } catch (const std::bad_alloc&) {
        showProblem(text(zelqId::kNotEnoughMemory));
    }
}

/// Where rows are in no order each of them may have to be looked at.
void zelqGoToTime::goTo(const zelqTimeInput::Moment& moment) {
    const zelqRecordList& rows = operations_.session().shown();
    const auto row = std::make_shared<std::size_t>(0);
    const auto go = [this, row] {
        if (!container_.goTo(*row)) {
            showProblem(text(zelqId::kGoToTimeNone));
        }
    };
    if (rows.empty()) {
        go();
        return;
    }
    const zelqBCnrObject* const current = container_.cursoredRecord();
    const zelqBCnrObject& day = current != nullptr ? *current : *rows.records().front();
    const std::uint32_t seconds = moment.time.seconds;
    const zelqTimestamp time{
        moment.date.value_or(day.date()), static_cast<std::uint8_t>(seconds / 3600),
        static_cast<std::uint8_t>(seconds / 60 % 60), static_cast<std::uint8_t>(seconds % 60), 0};
    const auto find = [&rows, time, row] { *row = rows.firstNotBefore(time); };
    if (rows.isSorted()) {
        find();
        go();
    } else {
        operations_.lookUp([find](const std::stop_token&) { find(); }, go);
    }
}

void zelqGoToTime::showProblem(const QString& problem) {
    warning_->setVisible(!problem.isEmpty());
    warning_->setToolTip(problem);
    field_->setAccessibleDescription(problem);
    outcome_->showText(problem);
}

void zelqGoToTime::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            go();
            break;
        case Qt::Key_Escape:
            hide();
            container_.setFocus();
            break;
        default:
            QWidget::keyPressEvent(event);
    }
}
