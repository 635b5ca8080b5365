#pragma once

#include <QPalette>

/// Colours of selected text that can be read: by active and inactive windows alike, in light and
/// dark palettes.
class zelqReadablePalette {
public:
    /// The least contrast of text to its background.
    static constexpr double kLeastContrast = 4.5;

    /// 1 to 21.
    [[nodiscard]] static double contrast(const QColor& left, const QColor& right);
    /// The palette, with the background of selected text darkened, or brightened if the text is
    /// dark, until the contrast is enough.
    [[nodiscard]] static QPalette from(QPalette palette);
};
