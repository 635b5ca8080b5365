#pragma once

#include <QString>
#include <QStringList>

/// The manual, a page for browsers that is installed with the program.
class zelqManual {
public:
    /// Shows the page in the user's browser, out of the first folder that has it. Returns what the
    /// status line is to say: why it is not shown, or nothing. GUI thread.
    [[nodiscard]] static QString open(const QStringList& folders = zelqManual::folders());

    /// Where the page is looked for, as seen from the executable: where it is installed, then where
    /// it is built.
    [[nodiscard]] static QStringList folders();
};
