#pragma once

#include <QString>

#include "output/zelqLocaleText.h"
#include "session/zelqSession.h"

class zelqRecordContainer;

/// What the status line says of the current row and of the selection.
struct zelqPlaceText {
    /// The current row: log, number of the entry in it, byte, and time since the row above. If
    /// several rows are selected, their number and from when to when they are instead. Empty if
    /// there is no current row. What it costs does not depend on the number of rows, but for one
    /// look at the selection's bits.
    static zelqPlaceText of(const zelqSession& session, const zelqRecordContainer& table,
                            const zelqLocaleText& locale);

    QString shown;
    QString whole;  ///< with the log's folders, and of both the current row and the selection
};
