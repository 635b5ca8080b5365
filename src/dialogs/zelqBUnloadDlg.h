#pragma once

#include "dialogs/zelqBDlgBase.h"
#include "session/zelqLogCollection.h"

class QListWidget;

/// Lets the user pick one of the loaded logs.
class zelqBUnloadDlg : public zelqBDlgBase {
    Q_OBJECT

public:
    /// Lists the names of the loaded logs in slot order; `logs` must outlive the dialog.
    zelqBUnloadDlg(const zelqLogCollection& logs, QWidget* owner);

    bool command(int id) override;

    /// The slot of the selected log, -1 if nothing is selected or the log is gone.
    [[nodiscard]] int selectedLog() const;

private:
    const zelqLogCollection& logs_;
    QListWidget* list_;
};
