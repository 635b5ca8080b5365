// Characters of lines that are shown as selected, in place of lines.

#include <QClipboard>
#include <QGuiApplication>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <utility>

#include "widgets/zelqLineModel.h"
#include "widgets/zelqLineView.h"

/// Nothing while the line's data are not here: its text is not that of the piece then.
QString zelqLineView::pieceText(const Piece& piece) const {
    if (!model_.isHere(piece.line)) {
        return {};
    }
    return model_.index(piece.line).data().toString().mid(piece.column, piece.size);
}

QRect zelqLineView::pieceRect(const Piece& piece) const {
    const QRect line = visualRect(model_.index(piece.line));
    const QString before = model_.index(piece.line).data().toString().left(piece.column);
    const QFontMetrics metrics = fontMetrics();
    const int margin = style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1;
    return {line.left() + margin + metrics.horizontalAdvance(before), line.top(),
            metrics.horizontalAdvance(pieceText(piece)), line.height()};
}

void zelqLineView::selectPieces(std::vector<Piece> pieces) {
    selectionModel()->clearSelection();
    pieces_ = std::move(pieces);
    if (!pieces_.empty()) {
        const Piece first = pieces_.front();
        for (const int line : {pieces_.back().line, first.line}) {  // the first one in any case
            scrollTo(model_.index(line));
        }
        selectionModel()->setCurrentIndex(model_.index(first.line), QItemSelectionModel::NoUpdate);
        const QRect place = pieceRect(first);
        QScrollBar* const bar = horizontalScrollBar();
        if (place.left() < 0 || place.right() > viewport()->width()) {
            bar->setValue(bar->value() + place.center().x() - viewport()->width() / 2);
        }
    }
    viewport()->update();
}

void zelqLineView::dropPieces() {
    if (!pieces_.empty()) {
        pieces_.clear();
        viewport()->update();
    }
}

void zelqLineView::paintPieces(QPainter& painter) const {
    const bool active = window()->isActiveWindow();
    const auto group = active ? QPalette::Active : QPalette::Inactive;
    for (const Piece& piece : pieces_) {
        if (!viewport()->rect().intersects(visualRect(model_.index(piece.line)))) {
            continue;  // there may be thousands
        }
        const QRect place = pieceRect(piece);
        painter.fillRect(place, palette().brush(group, QPalette::Highlight));
        painter.setPen(palette().color(group, QPalette::HighlightedText));
        painter.drawText(place, Qt::AlignVCenter | Qt::TextSingleLine, pieceText(piece));
    }
}

void zelqLineView::copyPieces() const {
    QStringList texts;
    for (const Piece& piece : pieces_) {
        texts += pieceText(piece);
    }
    if (!texts.isEmpty()) {
        QGuiApplication::clipboard()->setText(texts.join(u'\n'));
    }
}
