#include "dialogs/zelqBDlgBase.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"

namespace {

// The grid; margins and spacer in pixels. Row 2 is left empty.
constexpr int kMargin = 20;
constexpr int kSpacer = 10;
constexpr int kControlColumn = 1;
constexpr int kLastColumn = 2;
constexpr int kPromptRow = 1;
constexpr int kControlRow = 3;
constexpr int kSpacerRow = 4;
constexpr int kButtonRow = 5;
constexpr int kLastRow = 6;

}  // namespace

zelqBDlgBase::zelqBDlgBase(QWidget* owner, int frameId, int titleId, int promptId)
    : QDialog(owner, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                         Qt::WindowSystemMenuHint),
      grid_(new QGridLayout(this)),
      prompt_(new QLabel(zelqResourceLibrary::text(promptId))),
      buttons_(new QHBoxLayout) {
    setObjectName(QString::number(frameId));
    setWindowTitle(zelqResourceLibrary::text(titleId));

    grid_->setContentsMargins(0, 0, 0, 0);
    grid_->setSpacing(0);
    grid_->setRowMinimumHeight(0, kMargin);
    grid_->setRowMinimumHeight(kControlRow, kSpacer);
    grid_->setRowMinimumHeight(kSpacerRow, kSpacer);
    grid_->setRowMinimumHeight(kLastRow, kMargin);
    grid_->setColumnMinimumWidth(0, kMargin);
    grid_->setColumnMinimumWidth(kLastColumn, kMargin);
    grid_->setColumnStretch(kControlColumn, 1);

    prompt_->setObjectName(QString::number(zelqId::kDialogPrompt));
    prompt_->setMinimumHeight(prompt_->sizeHint().height() + kSpacer / 2);
    grid_->addWidget(prompt_, kPromptRow, kControlColumn);

    auto* const buttonRow = new QWidget;
    buttonRow->setObjectName(QString::number(zelqId::kDialogButtons));
    buttonRow->setLayout(buttons_);
    buttons_->setContentsMargins(0, 0, 0, 0);
    buttons_->addStretch();
    grid_->addWidget(buttonRow, kButtonRow, kControlColumn);
}

bool zelqBDlgBase::systemCommand(int id) {
    return (id & 0xFFF0) == zelqId::kExit;
}

bool zelqBDlgBase::commandOfTwo(int id, int action, int cancel) {
    if (id != action && id != cancel) {
        return false;
    }
    dismiss(id == action ? zelqId::kAccepted : zelqId::kCancelled);
    return true;
}

void zelqBDlgBase::reject() {
    if (!systemCommand(zelqId::kExit)) {
        QDialog::reject();
    }
}

void zelqBDlgBase::setDataControl(QWidget* control, int id, SpareHeight spare) {
    control->setObjectName(QString::number(id));
    prompt_->setBuddy(control);
    control->setAccessibleName(prompt_->text());
    grid_->addWidget(control, kControlRow, kControlColumn);
    grid_->setRowStretch(spare == SpareHeight::Control ? kControlRow : kSpacerRow, 1);
    control->setFocus();
}

void zelqBDlgBase::addButton(int id, int textId) {
    auto* const button = new QPushButton(zelqResourceLibrary::text(textId));
    button->setObjectName(QString::number(id));
    button->setAutoDefault(true);
    button->setDefault(buttons_->count() == 1);  // only the stretch stands before it
    connect(button, &QPushButton::clicked, this, [this, id] { command(id); });
    buttons_->addWidget(button);
}
