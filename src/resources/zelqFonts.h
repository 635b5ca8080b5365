#pragma once

#include <QFont>
#include <QString>

/// The font of lists whose items align in columns: Courier or, where there is none, another font of
/// fixed width. `size` in points.
inline QFont listFont(int size = 10) {
    QFont font(QStringLiteral("Courier"), size);
    font.setStyleHint(QFont::TypeWriter);
    return font;
}
