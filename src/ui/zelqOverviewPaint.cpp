// How the overview is painted. Its columns, from the leading edge on: errors as bars that are
// longer the denser they are, matches as blocks, selected rows as a band, marks as tips.

#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <QStyleOptionFocusRect>
#include <algorithm>
#include <cmath>

#include "ui/zelqOverview.h"
#include "ui/zelqRecordContainer.h"

namespace {

// Pixels from the leading edge.
constexpr double kErrors = 2;
constexpr double kErrorsWidth = 10;
constexpr double kMatches = 14;
constexpr double kMatchesWidth = 4;
constexpr double kSelection = 20;
constexpr double kSelectionWidth = 3;
constexpr double kMarks = 24;
constexpr double kMarksWidth = 5;
constexpr int kWidth = 30;

/// The height of what would be lost among its neighbours, a pixel high.
constexpr double kLeastHeight = 2;
/// The length of the bar of a single error among any number of rows.
constexpr double kLeastBar = 2.5;
constexpr int kLeastFrame = 4;

}  // namespace

QSize zelqOverview::sizeHint() const {
    return {kWidth, 0};
}

QSize zelqOverview::minimumSizeHint() const {
    return sizeHint();
}

/// As high as the table's rows are, beside them. A few rows are as high as they are there.
QRect zelqOverview::picture() const {
    const QRect rows = table_.viewport()->geometry();
    const int top = mapFromGlobal(table_.mapToGlobal(rows.topLeft())).y();
    const auto wanted = static_cast<std::int64_t>(rowCount()) * table_.rowHeight();
    return {0, top, width(), static_cast<int>(std::min<std::int64_t>(rows.height(), wanted))};
}

void zelqOverview::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QRect area = picture();
    QRect beside = table_.viewport()->rect();
    beside.moveTop(area.top());
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.fillRect(QRect(0, beside.top(), width(), beside.height()),
                     palette().color(QPalette::Base));
    if (layoutDirection() == Qt::RightToLeft) {
        painter.translate(width(), 0);
        painter.scale(-1, 1);
    }
    const std::vector<Line> all = lines(area.height());
    if (!exact_ && sampled_.size() != all.size()) {
        sampled_.clear();
        for (const Line& line : all) {
            sampled_.push_back(line.errors);
        }
    }
    const double height =
        all.empty() ? 0 : static_cast<double>(area.height()) / static_cast<double>(all.size());
    for (std::size_t line = 0; line < all.size(); ++line) {
        const double top = area.top() + static_cast<double>(line) * height;
        paintLine(painter, all[line], top, top + height);
    }
    if (!all.empty()) {
        paintCurrent(painter, area);
    }
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.backgroundColor = palette().color(QPalette::Base);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
    }
}

void zelqOverview::paintLine(QPainter& painter, const Line& line, double top, double bottom) const {
    const QColor text = palette().color(QPalette::Text);
    const double height = std::max(kLeastHeight, bottom - top);
    if (line.errors > 0) {
        // The root, so that a few errors among thousands of rows are more than none.
        const double length = std::max(kLeastBar, kErrorsWidth * std::sqrt(line.errors));
        const bool isDark = palette().color(QPalette::Base).lightness() < 128;
        painter.fillRect(QRectF(kErrors, top, length, bottom - top),
                         isDark ? QColor(0xFF, 0x6B, 0x60) : QColor(0xC0, 0x1C, 0x12));
    }
    if (line.match) {
        painter.fillRect(QRectF(kMatches, top, kMatchesWidth, height), text);
    }
    if (line.selected) {
        painter.fillRect(QRectF(kSelection, top, kSelectionWidth, height),
                         palette().color(QPalette::Highlight));
    }
    if (line.marked) {
        painter.setRenderHint(QPainter::Antialiasing);
        const double middle = (top + bottom) / 2;
        QPainterPath tip({kMarks + kMarksWidth, middle - kMarksWidth / 2 - 0.5});
        tip.lineTo(kMarks, middle);
        tip.lineTo(kMarks + kMarksWidth, middle + kMarksWidth / 2 + 0.5);
        painter.fillPath(tip, text);
        painter.setRenderHint(QPainter::Antialiasing, false);
    }
}

/// The rows in sight as a frame, the current row as a line through the whole width.
void zelqOverview::paintCurrent(QPainter& painter, const QRect& area) const {
    const auto rows = static_cast<double>(rowCount());
    const auto place = [&area, rows](double row) {
        return area.top() + static_cast<int>(std::lround(row / rows * area.height()));
    };
    const QScrollBar& bar = *table_.verticalScrollBar();
    if (bar.maximum() > 0) {
        const int top = place(bar.value());
        const int height = std::max(kLeastFrame, place(bar.value() + bar.pageStep()) - top);
        QColor frame = palette().color(QPalette::Text);
        frame.setAlphaF(0.5F);
        painter.setPen(frame);
        frame.setAlphaF(0.1F);
        painter.setBrush(frame);
        painter.drawRect(0, top, width() - 1, height - 1);
    }
    if (table_.currentIndex().isValid()) {
        const int middle = std::clamp(place(value() + 0.5), area.top(), area.bottom());
        painter.fillRect(QRect(0, middle - 1, width(), 2), palette().color(QPalette::Text));
    }
}
