#include <QAccessible>
#include <QMouseEvent>
#include <QScrollBar>
#include <array>
#include <random>
#include <utility>
#include <vector>

#include "GuiTest.h"

using Update = zelqRecordContainer::Update;

namespace {

/// How many rows there are, and whether the pointer drags boxes round rows or selected rows.
using Case = std::pair<int, bool>;

class SelectionTest : public GuiTest, public testing::WithParamInterface<Case> {
protected:
    void loadRecords(int count) {
        std::string image;
        for (int i = 0; i < count; ++i) {
            appendEntry(image, {.pid = static_cast<std::uint32_t>(i)});
        }
        load(folder.write("rows.log", image));
        ASSERT_EQ(table().records().size(), static_cast<std::size_t>(count));
    }
    static std::vector<bool> selectedRows(const QTableView& view) {
        std::vector<bool> rows;
        for (int row = 0; row < view.model()->rowCount(); ++row) {
            rows.push_back(view.selectionModel()->isSelected(view.model()->index(row, 0)));
        }
        return rows;
    }
    /// Selects the rows for which `chosen(row)` is true, as Qt's views do it.
    template <typename Chosen>
    static void select(QTableView& view, const Chosen& chosen) {
        QItemSelection rows;
        for (int row = 0; row < view.model()->rowCount(); ++row) {
            if (chosen(row)) {
                rows.append(QItemSelectionRange(view.model()->index(row, 0)));
            }
        }
        view.selectionModel()->select(
            rows, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
    /// Does what a user could do, drawn by lot.
    static void act(QTableView& view, std::mt19937& random, bool boxes) {
        constexpr std::array kKeys{Qt::Key_Up,       Qt::Key_Down,  Qt::Key_Home, Qt::Key_End,
                                   Qt::Key_PageDown, Qt::Key_Space, Qt::Key_A};
        constexpr std::array kModifiers{Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier};
        QWidget* const viewport = view.viewport();
        const QPoint from(5, static_cast<int>(random() % 500));
        const QPoint to(5, static_cast<int>(random() % 500));
        const Qt::KeyboardModifiers modifiers = kModifiers[random() % kModifiers.size()];
        const auto what = random() % 10;
        if (what < 1) {
            view.verticalScrollBar()->setValue(from.y());
        } else if (what < 2) {
            view.clearSelection();
        } else if (what < 6) {
            QTest::keyClick(&view, kKeys[random() % kKeys.size()], modifiers);
        } else {
            QTest::mousePress(viewport, Qt::LeftButton, modifiers, from);
            if (boxes) {
                QMouseEvent move(QEvent::MouseMove, to, viewport->mapToGlobal(to), Qt::NoButton,
                                 Qt::LeftButton, modifiers);
                QApplication::sendEvent(viewport, &move);
            }
            QTest::mouseRelease(viewport, Qt::LeftButton, modifiers, boxes ? to : from);
        }
    }
};

TEST_P(SelectionTest, BehavesAndLooksLikeThatOfAPlainTable) {
    const auto [rows, boxes] = GetParam();
    loadRecords(rows);
    QTableView plain(&window());
    plain.setModel(table().model());
    plain.setGeometry(table().geometry());
    plain.setSelectionBehavior(QTableView::SelectRows);
    plain.setShowGrid(false);
    plain.setHorizontalScrollMode(QTableView::ScrollPerPixel);
    plain.setIconSize(table().iconSize());
    plain.horizontalHeader()->restoreState(table().horizontalHeader()->saveState());
    plain.verticalHeader()->restoreState(table().verticalHeader()->saveState());
    plain.verticalHeader()->hide();
    plain.show();
    window().setFocus();  // a table that has it frames a cell
    for (QTableView* view : {static_cast<QTableView*>(&table()), &plain}) {
        view->setFocusPolicy(Qt::NoFocus);
        view->setDragEnabled(!boxes);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    }
    std::vector<bool> told = selectedRows(plain);
    QObject::connect(table().selectionModel(), &QItemSelectionModel::selectionChanged,
                     [&told](const QItemSelection& selected, const QItemSelection& deselected) {
                         for (const QItemSelectionRange& range : selected + deselected) {
                             for (int row = range.top(); row <= range.bottom(); ++row) {
                                 told[static_cast<std::size_t>(row)].flip();
                             }
                         }
                     });
    std::mt19937 random(7);
    for (int step = 0; step < 600; ++step) {
        std::mt19937 same = random;
        act(plain, same, boxes);
        act(table(), random, boxes);
        if (step % 50 == 10) {
            table().reverseSelection();
            select(plain, [before = selectedRows(plain)](int row) {
                return !before[static_cast<std::size_t>(row)];
            });
        }
        const std::vector<bool> expected = selectedRows(plain);
        ASSERT_EQ(selectedRows(table()), expected) << step;
        ASSERT_EQ(told, expected) << step;
        for (std::size_t row = 0; row < expected.size(); ++row) {
            ASSERT_EQ(table().isRowSelected(row), expected[row]) << step;
        }
        ASSERT_EQ(table().currentIndex(), plain.currentIndex()) << step;
        if (step % 10 == 0) {
            ASSERT_EQ(table().viewport()->grab().toImage(), plain.viewport()->grab().toImage());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, SelectionTest,
                         testing::Values(Case{300, false}, Case{300, true}, Case{8, true}),
                         [](const auto& test) {
                             return std::to_string(test.param.first) +
                                    (test.param.second ? "Boxes" : "Drags");
                         });

TEST_F(SelectionTest, IsRightForTheRowsInSightHoweverScatteredItIs) {
    loadRecords(20000);
    select(table(), [](int row) { return row < 100 || row % 2 == 0; });
    table().reverseSelection();
    std::mt19937 random(7);
    for (int step = 0; step < 30; ++step) {
        if (step % 2 == 0) {
            table().verticalScrollBar()->setValue(static_cast<int>(random() % 20000));
        } else {
            window().resize(600, 300 + static_cast<int>(random() % 500));
        }
        for (int y = 0; y < table().viewport()->height(); ++y) {
            const int row = table().rowAt(y);
            ASSERT_EQ(table().selectionModel()->isRowSelected(row), row > 100 && row % 2 == 1);
        }
    }
    EXPECT_EQ(table().recordsWhere(true).size(), 9950U);
    table().scrollToTop();
    table().clearSelection();  // does nothing if the selection model knows no range
    EXPECT_EQ(table().recordsWhere(false).size(), 20000U);
    table().selectAll();
    QAccessibleTableInterface* const tool =
        QAccessible::queryAccessibleInterface(&table())->tableInterface();
    EXPECT_LT(tool->selectedCellCount(), 2000);  // which it finds out one by one
}

TEST_F(SelectionTest, StaysWithTheRecordsWhateverHappensToTheRows) {
    loadRecords(3000);
    zelqRecordList parked(zelqBCnrObject::InHiddenContainer);
    for (const int step : {1, 2, 700, 5000}) {
        select(table(), [step](int row) { return row % step == 0; });
        const std::vector<zelqBCnrObject*> chosen = table().recordsWhere(true);
        Update(table()).records().moveIf(parked, [this](std::size_t row, auto&) {
            return row % 5 == 0 || (row > 2900 && table().isRowSelected(row));
        });
        std::vector<zelqBCnrObject*> shown = chosen;
        std::erase_if(shown, [](auto* record) { return !record->isIn(record->InContainer); });
        EXPECT_LT(shown.size(), chosen.size());
        EXPECT_EQ(table().recordsWhere(true), shown);
        for (const bool visible : {false, true}) {
            for (std::size_t column = 0; column < kColumnCount; ++column) {
                table().setColumnVisible(static_cast<zelqColumn>(column), visible);
            }
            EXPECT_EQ(table().recordsWhere(true), shown);
        }
        parked.moveIf(Update(table()).records(), [](auto, auto&) { return true; });  // to the end
        EXPECT_THAT(table().recordsWhere(true), testing::UnorderedElementsAreArray(chosen));
        merge(folder.write("other.log", logImage({{.hour = 1}, {.hour = 23}})));
        EXPECT_EQ(table().recordsWhere(true), chosen);
        table().selectionModel()->select(table().model()->index(0, 0), QItemSelectionModel::Select);
        browser.unloadLog(1);
        wait();
        EXPECT_EQ(table().recordsWhere(true), chosen);
    }
}

TEST_F(SelectionTest, RecordsPastTheRowLimitHaveNoRow) {
    table().verticalHeader()->setDefaultSectionSize(1000000);
    const std::size_t limit = table().rowLimit();
    EXPECT_EQ(limit, 2147U);
    loadRecords(3000);
    EXPECT_EQ(table().model()->rowCount(), static_cast<int>(limit));
    table().selectAll();
    EXPECT_TRUE(table().isRowSelected(limit - 1));
    EXPECT_FALSE(table().isRowSelected(limit));
    EXPECT_EQ(table().recordsWhere(false).size(), 3000 - limit);
    table().scrollToBottom();
    EXPECT_EQ(table().rowAt(0), static_cast<int>(limit) - 1);
}

}  // namespace
