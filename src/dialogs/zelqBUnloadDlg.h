#pragma once

#include "dialogs/zelqBDlgBase.h"
#include "session/zelqLogCollection.h"

class QListWidget;

/// Lets the user pick one of the loaded logs. The first one is selected at the start.
class zelqBUnloadDlg : public zelqBDlgBase {
    Q_OBJECT

public:
    /// Lists the names of the loaded logs in slot order; `logs` must outlive the dialog.
    zelqBUnloadDlg(const zelqLogCollection& logs, QWidget* owner);

    bool command(int id) override;

    /// The slot of the selected log, kNoSlot of zelqLogCollection if nothing is selected or the log
    /// is not loaded any more.
    [[nodiscard]] int selectedLog() const;

private:
    const zelqLogCollection& logs_;
    QListWidget* list_;
};
