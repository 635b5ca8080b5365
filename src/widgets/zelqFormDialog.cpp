#include "widgets/zelqFormDialog.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>

#include "resources/zelqResourceLibrary.h"

namespace {

enum GridRow { kPromptRow, kAboveControlRow, kControlRow, kBelowControlRow, kButtonRow };

/// Leaves Return to the dialog. On some desktops it would press the button that has the focus.
class Button : public QPushButton {
public:
    using QPushButton::QPushButton;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
            event->ignore();
        } else {
            QPushButton::keyPressEvent(event);
        }
    }
};

}  // namespace

zelqFormDialog::zelqFormDialog(QWidget* owner, Qt::WindowFlags flags, const Ids& ids,
                               const Measures& measures)
    : QDialog(owner, flags),
      grid_(new QGridLayout(this)),
      prompt_(new QLabel(zelqResourceLibrary::text(ids.promptText))),
      buttons_(new QHBoxLayout) {
    setObjectName(QString::number(ids.frame));
    setWindowTitle(zelqResourceLibrary::text(ids.titleText));

    grid_->setContentsMargins(measures.margin, measures.margin, measures.margin, measures.margin);
    grid_->setSpacing(0);
    grid_->setRowMinimumHeight(kAboveControlRow, measures.aboveControl);
    grid_->setRowMinimumHeight(kBelowControlRow, measures.belowControl);

    prompt_->setObjectName(QString::number(ids.prompt));
    prompt_->setMinimumHeight(measures.promptHeight);
    grid_->addWidget(prompt_, kPromptRow, 0);

    auto* const row = new QWidget;
    row->setObjectName(QString::number(ids.buttons));
    row->setMinimumHeight(measures.buttonsHeight);
    row->setLayout(buttons_);
    buttons_->setContentsMargins(0, 0, 0, 0);
    buttons_->addStretch();
    grid_->addWidget(row, kButtonRow, 0);
}

void zelqFormDialog::setDataControl(QWidget* control, int id, SpareHeight spare) {
    control->setObjectName(QString::number(id));
    control->setAccessibleName(prompt_->text());
    prompt_->setBuddy(control);
    grid_->addWidget(control, kControlRow, 0);
    grid_->setRowStretch(spare == SpareHeight::Control ? kControlRow : kBelowControlRow, 1);
    control->setFocus();
}

void zelqFormDialog::addButton(int id, int textId) {
    auto* const button = new Button(zelqResourceLibrary::text(textId));
    button->setObjectName(QString::number(id));
    connect(button, &QPushButton::clicked, this, [this, id] { command(id); });
    const bool isFirst = buttons_->count() == 1;  // after the stretch
    buttons_->addWidget(button);
    button->setAutoDefault(false);  // or it would become the default button with the focus
    button->setDefault(isFirst);
}

void zelqFormDialog::centreOnScreen() {
    if (const QScreen* const screen = QGuiApplication::primaryScreen()) {
        const QRect desktop = screen->geometry();
        move(desktop.left() + desktop.width() / 2 - width() / 2,
             desktop.top() + desktop.height() / 2 - height() / 2);
    }
}
