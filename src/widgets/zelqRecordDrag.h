#pragma once

#include <QCoreApplication>
#include <QString>

namespace zelqRecordDrag {

/// What a drag of records carries. It holds no data: the records may be unloaded while it goes on,
/// so whoever takes the drop asks the container what is dragged. Another process has none of them,
/// so each has a type of its own.
inline QString mimeType() {
    return QStringLiteral("application/x-zelq-records-%1").arg(QCoreApplication::applicationPid());
}

}  // namespace zelqRecordDrag
