#include "dialogs/zelqBDlgBase.h"

#include "resources/zelqIds.h"

zelqBDlgBase::zelqBDlgBase(QWidget* owner, int frameId, int titleId, int promptId)
    : zelqFormDialog(
          owner,
          Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint,
          {.frame = frameId,
           .titleText = titleId,
           .prompt = zelqId::kDialogPrompt,
           .promptText = promptId,
           .buttons = zelqId::kDialogButtons},
          {.margin = 20,
           .promptHeight = 0,
           .aboveControl = 5,
           .belowControl = 10,
           .buttonsHeight = 0}) {}

bool zelqBDlgBase::systemCommand(int id) {
    return (id & 0xFFF0) == zelqId::kExit;
}

bool zelqBDlgBase::commandOfTwo(int id, int action, int cancel) {
    if (id != action && id != cancel) {
        return false;
    }
    done(id == action ? zelqId::kAccepted : zelqId::kCancelled);
    return true;
}

void zelqBDlgBase::reject() {
    if (!systemCommand(zelqId::kExit)) {
        QDialog::reject();
    }
}
