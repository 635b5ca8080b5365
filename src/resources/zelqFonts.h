#pragma once

#include <QFont>
#include <QString>

namespace zelqFonts {

/// The font of lists whose items align in columns: Courier or, where there is none, another font of
/// fixed width. `size` in points.
inline QFont ofLists(int size = 10) {
    QFont font(QStringLiteral("Courier"), size);
    font.setStyleHint(QFont::TypeWriter);
    return font;
}

}  // namespace zelqFonts
