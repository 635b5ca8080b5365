#include "resources/zelqReadablePalette.h"

#include <algorithm>
#include <cmath>

namespace {

double luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

QColor mixed(const QColor& colour, const QColor& other, double share) {
    const auto mix = [share](float left, float right) {
        return static_cast<float>(left + (right - left) * share);
    };
    return QColor::fromRgbF(mix(colour.redF(), other.redF()), mix(colour.greenF(), other.greenF()),
                            mix(colour.blueF(), other.blueF()));
}

}  // namespace

double zelqReadablePalette::contrast(const QColor& left, const QColor& right) {
    const auto [darker, brighter] = std::minmax({luminance(left), luminance(right)});
    return (brighter + 0.05) / (darker + 0.05);
}

QPalette zelqReadablePalette::from(QPalette palette) {
    constexpr int kSteps = 50;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        const QColor text = palette.color(group, QPalette::HighlightedText);
        const QColor background = palette.color(group, QPalette::Highlight);
        const QColor away =
            contrast(text, Qt::black) > contrast(text, Qt::white) ? Qt::black : Qt::white;
        QColor readable = background;
        for (int step = 1; step <= kSteps && contrast(text, readable) < kLeastContrast; ++step) {
            readable = mixed(background, away, static_cast<double>(step) / kSteps);
        }
        palette.setColor(group, QPalette::Highlight, readable);
        palette.setColor(group, QPalette::HighlightedText, text);
    }
    return palette;
}
