#pragma once

#include <QDialog>

class QGridLayout;
class QHBoxLayout;
class QLabel;

/// Base of the small modal dialogs: frame, grid, prompt line and a row of push buttons. Only the
/// buttons end such a dialog; close box, system menu, Alt+F4 and Escape leave it open.
class zelqBDlgBase : public QDialog {
    Q_OBJECT

public:
    /// Shows the dialog modally until it is dismissed; returns kAccepted or kCancelled of zelqId.
    int showModally() { return exec(); }

    /// Carries out a command of the dialog's controls. False if it is none of the dialog's.
    virtual bool command(int id) = 0;
    /// A command of the frame's system menu. True for Close, which is thereby swallowed.
    virtual bool systemCommand(int id);

    /// The keyboard's and the title bar's way of closing, a system command here.
    void reject() override;

protected:
    /// `frameId`: the identifier of the frame; `titleId`, `promptId`: texts.
    zelqBDlgBase(QWidget* owner, int frameId, int titleId, int promptId);

    /// Puts the dialog's own control under the prompt, which becomes its label. With `control` the
    /// control takes the spare height, else the space below it.
    enum class SpareHeight { Control, Below };
    void setDataControl(QWidget* control, int id, SpareHeight spare);
    /// Adds a button, which sends `id` to command(). The first one is the default button.
    void addButton(int id, int textId);

    /// The commands of a dialog with an action button and a cancel button, which both end it.
    bool commandOfTwo(int id, int action, int cancel);
    void dismiss(int result) { done(result); }

private:
    QGridLayout* grid_;
    QLabel* prompt_;
    QHBoxLayout* buttons_;
};
