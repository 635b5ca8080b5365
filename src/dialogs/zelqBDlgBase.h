#pragma once

#include "widgets/zelqFormDialog.h"

/// Base of the small modal dialogs. Only the buttons end such a dialog; close box, system menu,
/// Alt+F4 and Escape leave it open.
class zelqBDlgBase : public zelqFormDialog {
    Q_OBJECT

public:
    /// A command of the frame's system menu. True for Close, which then has no effect.
    virtual bool systemCommand(int id);

    /// The keyboard's and the title bar's way of closing, a system command here.
    void reject() override;

protected:
    /// `frameId`: the identifier of the frame; `titleId`, `promptId`: texts.
    zelqBDlgBase(QWidget* owner, int frameId, int titleId, int promptId);

    /// The commands of a dialog with an action button and a cancel button, which both end it.
    bool commandOfTwo(int id, int action, int cancel);
};
