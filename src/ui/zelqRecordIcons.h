#pragma once

#include <QIcon>
#include <QStringList>
#include <array>

#include "log/zelqBCnrObject.h"

/// The icons of the entry types, out of the separate module zelqicon. The module is opened when the
/// first icon is asked for, which is when the first record is shown, and stays open. GUI thread
/// only.
class zelqRecordIcons {
public:
    /// `folders`: where zelqicon.rcc is looked for. Without it the records have no icons.
    explicit zelqRecordIcons(QStringList folders);

    [[nodiscard]] const QIcon& icon(zelqRecordIcon id) const;

private:
    void open() const;

    QStringList folders_;
    mutable bool opened_ = false;
    mutable std::array<QIcon, 7> icons_;  ///< by the icon's number
};
