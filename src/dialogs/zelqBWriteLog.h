#pragma once

#include <QString>

#include "dialogs/zelqBDlgBase.h"

class QLineEdit;

/// Asks for the name of the file that the listing is written to.
class zelqBWriteLog : public zelqBDlgBase {
    Q_OBJECT

public:
    explicit zelqBWriteLog(QWidget* owner);

    bool command(int id) override;

    /// The text of the entry field, unchecked.
    [[nodiscard]] QString fileName() const;

private:
    QLineEdit* field_;
};
