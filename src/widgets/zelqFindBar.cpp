#include "widgets/zelqFindBar.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <vector>

#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "widgets/zelqElidedLabel.h"

namespace {

constexpr int kQueryDelay = 150;     // ms after the last key
constexpr int kProgressDelay = 100;  // ms, as in the status line
constexpr int kProgressWidth = 90;
constexpr int kProgressSteps = 1000;
constexpr int kMargin = 4;
constexpr int kFieldCharacters = 14;

QString text(int id) {
    return zelqResourceLibrary::text(id);
}

QString number(std::size_t value) {
    return QLocale().toString(static_cast<qulonglong>(value));
}

}  // namespace

zelqFindBar::zelqFindBar(Matches matches, QWidget* parent)
    : QWidget(parent),
      field_(new QLineEdit),
      kind_(new QComboBox),
      matchCase_(new QCheckBox(text(zelqId::kFindMatchCase))),
      previous_(new QToolButton),
      next_(new QToolButton),
      selectAll_(new QPushButton(text(zelqId::kFindSelectAll))),
      progress_(new QProgressBar),
      stop_(new QPushButton(text(zelqId::kFindStop))),
      outcome_(new zelqElidedLabel),
      close_(new QToolButton) {
    setAccessibleName(text(zelqId::kFindBar));
    auto* const label = new QLabel(text(zelqId::kFindLabel));
    label->setBuddy(field_);
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    rows->setSpacing(kMargin);
    // What was found has a row of its own, for it may need the room.
    const std::vector<std::vector<QWidget*>> parts{
        {label, field_, kind_, matchCase_, previous_, next_, close_},
        {outcome_, progress_, stop_, selectAll_}};
    for (const auto& partsOfRow : parts) {
        auto* const row = new QHBoxLayout;
        rows->addLayout(row);
        for (QWidget* part : partsOfRow) {
            row->addWidget(part, part == field_ || part == outcome_ ? 1 : 0);
        }
    }
    setUpQuery();
    setUpSteps();
    setUpOutcome(matches);
    hide();
}

void zelqFindBar::setUpQuery() {
    field_->setAccessibleName(text(zelqId::kFindLabel).remove(u':'));
    field_->setMinimumWidth(fontMetrics().averageCharWidth() * kFieldCharacters);
    warning_ = field_->addAction(style()->standardIcon(QStyle::SP_MessageBoxWarning),
                                 QLineEdit::TrailingPosition);
    warning_->setVisible(false);
    for (const int id : {zelqId::kFindText, zelqId::kFindBytes, zelqId::kFindExpression}) {
        kind_->addItem(text(id));  // in the order of zelqSearchPattern::Kind
    }
    kind_->setAccessibleName(text(zelqId::kFindKind));
    kind_->setToolTip(text(zelqId::kFindKind));
    queryDelay_.setSingleShot(true);
    connect(&queryDelay_, &QTimer::timeout, this, &zelqFindBar::queryChanged);
    field_->installEventFilter(this);
    connect(field_, &QLineEdit::textChanged, this, [this] { noteQuery(kQueryDelay); });
    connect(matchCase_, &QCheckBox::toggled, this, [this] { noteQuery(0); });
    connect(kind_, &QComboBox::currentIndexChanged, this, [this](int kind) {
        const bool bytes = kind == static_cast<int>(zelqSearchPattern::Kind::Bytes);
        matchCase_->setEnabled(!bytes);
        field_->setPlaceholderText(bytes ? QStringLiteral("C1 40 7E") : QString());
        noteQuery(0);
    });
}

void zelqFindBar::setUpSteps() {
    const auto setUp = [this](QToolButton& button, Qt::ArrowType arrow, int id,
                              const QKeySequence& key, bool forward) {
        button.setArrowType(arrow);
        button.setAutoRaise(true);
        button.setAccessibleName(text(id));
        button.setToolTip(
            QStringLiteral("%1 (%2)").arg(text(id), key.toString(QKeySequence::NativeText)));
        connect(&button, &QToolButton::clicked, this,
                [this, forward] { emit stepWanted(forward); });
    };
    setUp(*previous_, Qt::UpArrow, zelqId::kFindPrevious, Qt::SHIFT | Qt::Key_F3, false);
    setUp(*next_, Qt::DownArrow, zelqId::kFindNext, Qt::Key_F3, true);
}

void zelqFindBar::setUpOutcome(Matches matches) {
    selectAll_->setVisible(matches == Matches::Selectable);
    selectAll_->setEnabled(false);
    connect(selectAll_, &QPushButton::clicked, this, &zelqFindBar::selectAllWanted);
    progress_->setFixedWidth(kProgressWidth);
    progress_->setAccessibleName(text(zelqId::kFindProgress));
    progress_->setRange(0, kProgressSteps);
    connect(stop_, &QPushButton::clicked, this, &zelqFindBar::stopWanted);
    progressDelay_.setSingleShot(true);
    progressDelay_.setInterval(kProgressDelay);
    connect(&progressDelay_, &QTimer::timeout, this, [this] {
        progress_->show();
        stop_->show();
    });
    progress_->hide();
    stop_->hide();
    close_->setAutoRaise(true);
    close_->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    close_->setAccessibleName(text(zelqId::kFindClose));
    close_->setToolTip(QStringLiteral("%1 (%2)").arg(
        text(zelqId::kFindClose), QKeySequence(Qt::Key_Escape).toString(QKeySequence::NativeText)));
    connect(close_, &QToolButton::clicked, this, &zelqFindBar::closeBar);
}

zelqSearchPattern::Query zelqFindBar::query() const {
    return {.kind = static_cast<zelqSearchPattern::Kind>(kind_->currentIndex()),
            .text = field_->text().toStdString(),
            .matchCase = matchCase_->isChecked()};
}

bool zelqFindBar::hasText() const {
    return !field_->text().isEmpty();
}

void zelqFindBar::open() {
    show();
    field_->setFocus(Qt::ShortcutFocusReason);
    field_->selectAll();
}

/// Says at once what is wrong with the query, and a moment later asks to search for it.
void zelqFindBar::noteQuery(int delay) {
    notice_.clear();
    const zelqStatus status = hasText() ? zelqSearchPattern(query()).status() : zelqStatus();
    showProblem(QString::fromStdString(status.text));
    queryDelay_.start(delay);
}

void zelqFindBar::showFound(std::size_t current, std::size_t matches, Search search) {
    if (matches == 0) {
        counter_ = search == Search::Running   ? text(zelqId::kFindSearching)
                   : search == Search::Stopped ? QString()
                                               : text(zelqId::kFindNone);
    } else if (current == 0) {
        counter_ = text(zelqId::kFindMatches).arg(number(matches));
    } else {
        counter_ = text(zelqId::kFindCurrent).arg(number(current), number(matches));
    }
    selectAll_->setEnabled(search == Search::Complete && matches != 0);
    showOutcome();
}

void zelqFindBar::showNothing() {
    counter_.clear();
    selectAll_->setEnabled(false);
    showOutcome();
}

void zelqFindBar::showNotice(const QString& notice) {
    notice_ = notice;
    showOutcome();
}

void zelqFindBar::showProblem(const QString& problem) {
    problem_ = problem;
    warning_->setVisible(!problem.isEmpty());
    warning_->setToolTip(problem);
    field_->setAccessibleDescription(problem);
    if (!problem.isEmpty()) {
        counter_.clear();
        selectAll_->setEnabled(false);
    }
    showOutcome();
}

void zelqFindBar::showOutcome() {
    QStringList parts{problem_.isEmpty() ? counter_ : text(zelqId::kFindProblem).arg(problem_),
                      notice_};
    parts.removeAll(QString());
    outcome_->showText(parts.join(QStringLiteral(" \u2013 ")));
}

void zelqFindBar::showProgress(std::size_t done, std::size_t total) {
    progress_->setValue(static_cast<int>(static_cast<double>(done) * kProgressSteps /
                                         static_cast<double>(std::max<std::size_t>(1, total))));
    if (progress_->isHidden() && !progressDelay_.isActive()) {
        progressDelay_.start();
    }
}

void zelqFindBar::hideProgress() {
    progressDelay_.stop();
    if (stop_->hasFocus()) {
        field_->setFocus();
    }
    progress_->hide();
    stop_->hide();
}

void zelqFindBar::closeBar() {
    queryDelay_.stop();
    hide();
    emit closed();
}

bool zelqFindBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched == field_ && event->type() == QEvent::KeyPress && !field_->hasSelectedText() &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        emit copyWanted();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void zelqFindBar::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (queryDelay_.isActive()) {
                queryDelay_.stop();  // the first match of what was just typed is the step
                emit queryChanged();
            } else {
                emit stepWanted(!event->modifiers().testFlag(Qt::ShiftModifier));
            }
            break;
        case Qt::Key_Escape:
            closeBar();
            break;
        default:
            QWidget::keyPressEvent(event);
    }
}
