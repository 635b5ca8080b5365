#include "widgets/zelqElidedLabel.h"

#include <QGuiApplication>
#include <QPainter>
#include <QStyle>
#include <QTextDocument>
#include <algorithm>

namespace {

constexpr int kMargin = 4;
/// Widths of texts are rounded, but eliding goes by the true ones.
constexpr int kRounding = 1;
constexpr int kFewCharacters = 6;
constexpr int kManyCharacters = 60;

}  // namespace

zelqElidedLabel::zelqElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setContentsMargins(kMargin, 0, kMargin, 0);
}

void zelqElidedLabel::showText(const QString& text, const QString& whole) {
    const QString& tip = whole.isEmpty() ? text : whole;
    setText(text);
    // In a paragraph of the other direction, its numbers and punctuation would change places.
    const bool mirrored = QGuiApplication::isRightToLeft() && text.isRightToLeft();
    setLayoutDirection(mirrored ? Qt::RightToLeft : Qt::LeftToRight);
    setAccessibleName(whole);
    // A name could look like rich text.
    setToolTip(tip.isEmpty() ? QString() : Qt::convertFromPlainText(tip, Qt::WhiteSpaceNormal));
}

QSize zelqElidedLabel::sizeFor(int textWidth) const {
    const QMargins margins = contentsMargins();
    return {textWidth + kRounding + margins.left() + margins.right(), fontMetrics().height()};
}

QSize zelqElidedLabel::sizeHint() const {
    return sizeFor(std::min(fontMetrics().horizontalAdvance(text()),
                            fontMetrics().averageCharWidth() * kManyCharacters));
}

QSize zelqElidedLabel::minimumSizeHint() const {
    return sizeFor(std::min(fontMetrics().horizontalAdvance(text()),
                            fontMetrics().averageCharWidth() * kFewCharacters));
}

void zelqElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QRect room = contentsRect();
    const Qt::Alignment side =
        QStyle::visualAlignment(QGuiApplication::layoutDirection(), Qt::AlignLeading);
    style()->drawItemText(
        &painter, room, static_cast<int>(side | Qt::AlignAbsolute | Qt::AlignVCenter), palette(),
        isEnabled(), fontMetrics().elidedText(text(), Qt::ElideRight, room.width()),
        foregroundRole());
}
