#pragma once

#include <QString>

/// What a drag of records carries. It holds no data: the records may be unloaded while it goes on,
/// so whoever takes the drop asks the container what is dragged.
inline const QString kRecordMimeType = QStringLiteral("application/x-zelq-records");
