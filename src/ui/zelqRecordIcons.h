#pragma once

#include <QIcon>
#include <QStringList>
#include <array>

#include "log/zelqBCnrObject.h"

/// The icons of the entry types, out of the separate module zelqicon. The module is read when the
/// first icon is asked for, which is when the first record is shown. GUI thread only.
class zelqRecordIcons {
public:
    /// `folders`: where zelqicon.rcc and its checksum, zelqicon.rcc.sha256, are looked for. A
    /// module that is missing or damaged is reported to the logging category zelq.icons, and the
    /// records have no icons.
    explicit zelqRecordIcons(QStringList folders);

    [[nodiscard]] const QIcon& icon(zelqRecordIcon id) const;

private:
    void open() const;
    void readIcons() const;

    QStringList folders_;
    mutable bool opened_ = false;
    mutable std::array<QIcon, 7> icons_;  ///< by the icon's number
};
