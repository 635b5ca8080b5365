#pragma once

#include <QDialog>

class QGridLayout;
class QHBoxLayout;
class QLabel;

/// The skeleton of the modal dialogs: a prompt, below it one control, below that a row of push
/// buttons. The first button is the default button and stays it: Return presses it wherever the
/// focus is, Space presses the button that has the focus. The object names of the dialog and its
/// controls are their identifiers.
class zelqFormDialog : public QDialog {
    Q_OBJECT

public:
    /// Shows the dialog modally until a command ends it; returns kAccepted or kCancelled of zelqId.
    int showModally() { return exec(); }

    /// Carries out a command of the dialog's buttons. False if it is none of them.
    virtual bool command(int id) = 0;

protected:
    /// Identifiers of windows and of texts.
    struct Ids {
        int frame;
        int titleText;
        int prompt;
        int promptText;
        int buttons;  ///< the row of buttons
    };
    /// Heights and widths in pixels.
    struct Measures {
        int margin;         ///< on all sides
        int promptHeight;   ///< at least
        int aboveControl;   ///< between the prompt and the control
        int belowControl;   ///< between the control and the buttons
        int buttonsHeight;  ///< at least
    };
    zelqFormDialog(QWidget* owner, Qt::WindowFlags flags, const Ids& ids, const Measures& measures);

    /// Puts the control under the prompt, which becomes its label, and gives it the focus.
    /// `spare`: what takes the height that nothing else needs.
    enum class SpareHeight { Control, BelowControl };
    void setDataControl(QWidget* control, int id, SpareHeight spare);
    /// Adds a button, which sends `id` to command().
    void addButton(int id, int textId);

    /// Makes the dialog as large as `wanted`, or larger if its controls need more.
    void resizeToFit(QSize wanted) { resize(wanted.expandedTo(minimumSizeHint())); }
    void centreOnScreen();

private:
    QGridLayout* grid_;
    QLabel* prompt_;
    QHBoxLayout* buttons_;
};
