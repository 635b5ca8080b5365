#pragma once

#include <QFont>
#include <QString>

/// The font of lists whose items are to stand in columns: Courier or, where there is none, another
/// one of fixed width. `size` in points.
inline QFont listFont(int size = 10) {
    QFont font(QStringLiteral("Courier"), size);
    font.setStyleHint(QFont::TypeWriter);
    return font;
}
