#pragma once

#include <QAbstractItemView>
#include <QScrollBar>
#include <QtGlobal>
#include <algorithm>
#include <cstdlib>
#include <limits>

/// Makes of one of Qt's item views a view of rows of one height. Where a row stands is computed
/// from its number, and the value of the vertical scroll bar is the number of the first row in
/// sight. Qt's own views keep memory for every row and walk all rows whenever some come or go.
/// Keyboard, mouse, selection and accessibility stay those of `View`.
///
/// Pixels are counted from the top of the viewport. Qt selects by rectangles between two rows, also
/// between rows out of sight, so each row has a place of its own: those that would not fit into a
/// coordinate are one pixel high.
template <class View>
class zelqUniformRows : public View {
public:
    using typename QAbstractItemView::CursorAction;
    using typename QAbstractItemView::ScrollHint;
    using View::View;

    /// The height of each row, in pixels, at least 1.
    [[nodiscard]] virtual int rowHeight() const = 0;

    [[nodiscard]] int rowCount() const {
        return this->model() != nullptr ? this->model()->rowCount() : 0;
    }
    /// How many rows stand whole in the viewport, but at least 1.
    [[nodiscard]] int rowsPerPage() const {
        return std::max(1, this->viewport()->height() / rowHeight());
    }
    /// The row at a height in the viewport; -1 if there is none.
    [[nodiscard]] int rowAt(int y) const {
        const int row = placeAt(y);
        return row >= 0 && row < rowCount() ? row : -1;
    }

    [[nodiscard]] QModelIndex indexAt(const QPoint& point) const override {
        return this->model()->index(rowAt(point.y()), columnAtPoint(point.x()));
    }

    /// Scrolls up and down only.
    void scrollTo(const QModelIndex& index, ScrollHint hint = View::EnsureVisible) override {
        if (!index.isValid()) {
            return;
        }
        const int row = index.row();
        const int page = rowsPerPage();
        const int top = this->verticalScrollBar()->value();
        int target = row < top ? row : std::max(top, row - page + 1);
        switch (hint) {
            case View::PositionAtTop:
                target = row;
                break;
            case View::PositionAtBottom:
                target = row - page + 1;
                break;
            case View::PositionAtCenter:
                target = row - page / 2;
                break;
            case View::EnsureVisible:
                break;
        }
        this->verticalScrollBar()->setValue(target);
    }

protected:
    /// The column at a place from the left edge of the viewport, -1 if there is none.
    [[nodiscard]] virtual int columnAtPoint(int x) const = 0;

    /// Whether rows have their height there.
    [[nodiscard]] bool isNear(int y) const { return std::abs(y) < nearRows() * rowHeight(); }
    /// The row that stands, or would stand, at a height.
    [[nodiscard]] int placeAt(int y) const {
        const int height = rowHeight();
        const int near = nearRows();
        int distance = 0;
        if (y >= near * height) {
            distance = near + (y - near * height);
        } else if (y < -near * height) {
            distance = -near + (y + near * height);
        } else {
            distance = y < 0 ? (y - height + 1) / height : y / height;
        }
        const qint64 row = qint64{this->verticalScrollBar()->value()} + distance;
        return static_cast<int>(std::min(row, qint64{std::numeric_limits<int>::max()}));
    }
    /// The pixels that a row takes from top to bottom: `top` and `height` are set, nothing else.
    [[nodiscard]] QRect placeOf(int row) const {
        const int height = rowHeight();
        const int near = nearRows();
        const int distance = row - this->verticalScrollBar()->value();
        if (distance >= near) {
            return {0, near * height + std::min(distance - near, kFarthest), 0, 1};
        }
        if (distance < -near) {
            return {0, -near * height + std::max(distance + near, -kFarthest), 0, 1};
        }
        return {0, distance * height, 0, height};
    }

    /// Left and Right scroll; all others go from row to row in the current column.
    [[nodiscard]] QModelIndex moveCursor(CursorAction action,
                                         Qt::KeyboardModifiers /*modifiers*/) override {
        const int last = rowCount() - 1;
        const int row = this->currentIndex().row();
        const auto to = [this, last](int target) {
            return this->model()->index(std::clamp(target, 0, last),
                                        std::max(0, this->currentIndex().column()));
        };
        if (last < 0) {
            return {};
        }
        if (row < 0) {
            return to(0);
        }
        switch (action) {
            case View::MoveUp:
            case View::MovePrevious:
                return to(row - 1);
            case View::MoveDown:
            case View::MoveNext:
                return to(row == last ? last : row + 1);
            case View::MovePageUp:
                return to(row - rowsPerPage());
            case View::MovePageDown:
                return to(row > last - rowsPerPage() ? last : row + rowsPerPage());
            case View::MoveHome:
                return to(0);
            case View::MoveEnd:
                return to(last);
            case View::MoveLeft:
            case View::MoveRight:
                this->horizontalScrollBar()->triggerAction(action == View::MoveLeft
                                                               ? QScrollBar::SliderSingleStepSub
                                                               : QScrollBar::SliderSingleStepAdd);
                break;
        }
        return to(row);
    }

    void setSelection(const QRect& rectangle, QItemSelectionModel::SelectionFlags flags) override {
        const int last = rowCount() - 1;
        const int from = std::max(0, placeAt(std::min(rectangle.top(), rectangle.bottom())));
        const int to = std::min(last, placeAt(std::max(rectangle.top(), rectangle.bottom())));
        QItemSelection selection;
        if (from <= to) {
            selection.select(this->model()->index(from, 0), this->model()->index(to, 0));
        }
        this->selectionModel()->select(selection, flags);
    }
    [[nodiscard]] QRegion visualRegionForSelection(const QItemSelection& selection) const override {
        const QRect whole = this->viewport()->rect();
        QRegion region;
        for (const QItemSelectionRange& range : selection) {
            QRect rows = whole;
            rows.setTop(placeOf(range.top()).top());
            rows.setBottom(placeOf(range.bottom()).bottom());
            region += rows & whole;
        }
        return region;
    }
    [[nodiscard]] bool isIndexHidden(const QModelIndex& /*index*/) const override { return false; }

    /// Qt notes places by it while the pointer drags, and compares them after scrolling. Where it
    /// would not fit into a coordinate it begins anew.
    [[nodiscard]] int verticalOffset() const override {
        return this->verticalScrollBar()->value() % nearRows() * rowHeight();
    }

    /// Gives the vertical scroll bar its range.
    void updateRowRange() {
        QScrollBar* const bar = this->verticalScrollBar();
        bar->setSingleStep(1);
        bar->setPageStep(rowsPerPage());
        bar->setRange(0, std::max(0, rowCount() - rowsPerPage()));
    }

private:
    /// Pixels or rows. A sum of two, and of the height of a window, is a coordinate.
    static constexpr int kFarthest = 1 << 29;

    /// How far from the first row in sight rows have their height.
    [[nodiscard]] int nearRows() const { return kFarthest / rowHeight(); }
};
