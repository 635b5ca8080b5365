#pragma once

#include <QItemSelectionModel>
#include <cstddef>
#include <optional>

#include <boost/dynamic_bitset.hpp>

/// The selection of whole rows in a view whose rows change by model resets alone. Keeps one bit a
/// row, so that no command depends on how scattered the selection is: the base class alone takes
/// 400 ms to paint a page when there are 100,000 ranges.
///
/// Views and assistive tools ask the base class, which keeps ranges. While the selection is small
/// its ranges are a copy of it. Else they hold the rows in sight only, and the first selected row,
/// so that there is a range whenever anything is selected. The same holds for selectionChanged().
class zelqRowSelection : public QItemSelectionModel {
    Q_OBJECT

public:
    using Rows = boost::dynamic_bitset<>;

    /// `model` must outlive the selection's use.
    explicit zelqRowSelection(QAbstractItemModel& model, QObject* parent = nullptr);

    /// A bit for each row, set if the row is selected. Valid even while the model has no columns.
    [[nodiscard]] const Rows& rows() const noexcept { return selected_; }
    /// How many rows are selected, the first of them and the last one. O(1) but for the first call
    /// after a change, which looks at the bits.
    struct Summary {
        std::size_t count = 0;
        std::size_t first = 0;
        std::size_t last = 0;
    };
    [[nodiscard]] const Summary& summary() const;

    // Without memory for it a change throws std::bad_alloc, and the same rows are selected.

    /// Selects these rows and no others. Extending the selection afterwards replaces it.
    void setRows(Rows rows);
    /// While it is held, select() does nothing.
    void hold(bool holds) noexcept { isHeld_ = holds; }
    [[nodiscard]] bool isHeld() const noexcept { return isHeld_; }
    /// To be called when other rows have come into sight; both are -1 if there are none.
    void setRowsInSight(int first, int last);

    using QItemSelectionModel::select;
    void select(const QItemSelection& selection, SelectionFlags command) override;
    void reset() override;

private:
    void replace(Rows rows);
    void copyToBase(const QItemSelection& selection);
    [[nodiscard]] QItemSelection ranges(const Rows& rows) const;

    Rows selected_;
    Rows settled_;  ///< before the last command, which the next one replaces if it has `Current`
    mutable std::optional<Summary> summary_;
    bool isHeld_ = false;
    int firstInSight_ = -1;
    int lastInSight_ = -1;
};
