#include <QAbstractTableModel>
#include <QAccessible>
#include <QHeaderView>
#include <QScrollBar>
#include <algorithm>
#include <array>
#include <limits>
#include <random>
#include <utility>
#include <vector>

#include "widgets/zelqRowTable.h"

#include "GuiTest.h"

namespace {

/// How many rows there are, and whether the pointer drags boxes round rows or selected rows.
using Case = std::pair<int, bool>;

class SelectionTest : public GuiTest, public testing::WithParamInterface<Case> {
protected:
    void loadRecords(int count) {
        load(write("rows.log", std::vector<TestEntry>(static_cast<std::size_t>(count))));
        ASSERT_EQ(browser.session().shown().size(), static_cast<std::size_t>(count));
    }
    static std::vector<bool> selectedRows(const QAbstractItemView& view) {
        std::vector<bool> rows;
        for (int row = 0; row < view.model()->rowCount(); ++row) {
            rows.push_back(view.selectionModel()->isRowSelected(row));
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
    /// Does something at random that a user could do.
    static void act(QAbstractItemView& view, std::mt19937& random, bool boxes) {
        constexpr std::array kKeys{Qt::Key_Up,    Qt::Key_Down, Qt::Key_Home,    Qt::Key_End,
                                   Qt::Key_Space, Qt::Key_A,    Qt::Key_PageDown};
        constexpr std::array kModifiers{Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier};
        const QPoint from(5, static_cast<int>(random() % 500));
        const QPoint to(5, static_cast<int>(random() % 500));
        const Qt::KeyboardModifiers modifiers = kModifiers[random() % kModifiers.size()];
        if (random() % 2 == 0) {
            // A page of a plain list is a line shorter.
            const bool pages = qobject_cast<QListView*>(&view) == nullptr;
            const Qt::Key key = kKeys[random() % (kKeys.size() - (pages ? 0 : 1))];
            // By itself, Home stays in the row in a plain table.
            const bool stays = key == Qt::Key_Home || key == Qt::Key_End;
            QTest::keyClick(&view, key, stays ? modifiers | Qt::ControlModifier : modifiers);
        } else {
            QTest::mousePress(view.viewport(), Qt::LeftButton, modifiers, from);
            if (boxes) {
                move(view, to, modifiers);
            }
            QTest::mouseRelease(view.viewport(), Qt::LeftButton, modifiers, boxes ? to : from);
        }
    }
};

TEST_P(SelectionTest, BehavesLikeThatOfAPlainTable) {
    const auto [rows, boxes] = GetParam();
    loadRecords(rows);
    QTableView plain(&window());
    plain.setModel(table().model());
    plain.setGeometry(table().geometry());
    plain.setSelectionBehavior(QTableView::SelectRows);
    plain.horizontalHeader()->restoreState(table().horizontalHeader()->saveState());
    plain.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    plain.verticalHeader()->setDefaultSectionSize(table().rowHeight());
    plain.verticalHeader()->hide();
    plain.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);  // as high as the other one
    for (int column = 1; column < plain.model()->columnCount(); ++column) {
        plain.hideColumn(column);  // to which a plain table would go
    }
    plain.show();
    for (QTableView* view : {static_cast<QTableView*>(&table()), &plain}) {
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
            const std::vector<bool> before = selectedRows(plain);
            select(plain, [&before](int row) { return !before[static_cast<std::size_t>(row)]; });
        }
        const std::vector<bool> expected = selectedRows(plain);
        ASSERT_EQ(selectedRows(table()), expected) << step;
        ASSERT_EQ(told, expected) << step;
        ASSERT_EQ(table().currentIndex().row(), plain.currentIndex().row()) << step;
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, SelectionTest,
                         testing::Values(Case{300, false}, Case{300, true}, Case{8, true}));

TEST_F(SelectionTest, OfLinesLooksAndBehavesLikeThatOfAPlainList) {
    loadRecords(60);
    window().command(zelqId::kExpandAll);
    QWidget& owner = browser.expansionWindow();
    auto& list = *owner.findChild<QListView*>();
    struct : QListView {
        void keyboardSearch(const QString& /*search*/) override {}
    } plain;
    const std::array<QListView*, 2> views{&list, &plain};
    plain.setParent(&owner);
    plain.setModel(list.model());
    plain.setFont(list.font());
    plain.setSelectionMode(QListView::ExtendedSelection);
    plain.setUniformItemSizes(true);
    plain.setHorizontalScrollMode(QListView::ScrollPerPixel);
    owner.resize(900, 300);
    plain.setGeometry(list.geometry());
    plain.show();
    owner.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&owner));
    for (QListView* view : views) {
        QTest::keyClick(view, Qt::Key_Home);
    }
    std::mt19937 random(7);
    for (int step = 0; step < 300; ++step) {
        std::array<QImage, 2> images;
        for (QListView* view : views) {
            std::mt19937 same = random;
            act(*view, same, true);
            view->setFocus();
            images[view == &plain] = view->viewport()->grab().toImage();
        }
        random.discard(10);
        if (step % 20 == 0) {  // lines come or go
            zelqBCnrObject* const record = browser.session().shown().records()[random() % 60];
            browser.setExpanded({&record, 1}, !record->expanded());
            QCoreApplication::processEvents();
            for (QListView* view : views) {
                view->verticalScrollBar()->setValue(5);
                view->setFocus();
                images[view == &plain] = view->viewport()->grab().toImage();
            }
        }
        ASSERT_EQ(list.verticalScrollBar()->maximum(), plain.verticalScrollBar()->maximum());
        ASSERT_EQ(list.verticalScrollBar()->pageStep(), plain.verticalScrollBar()->pageStep());
        ASSERT_EQ(list.model()->rowCount(), browser.session().expanded().lineCount());
        ASSERT_EQ(selectedRows(list), selectedRows(plain)) << step;
        ASSERT_EQ(list.currentIndex(), plain.currentIndex()) << step;
        ASSERT_EQ(list.verticalScrollBar()->value(), plain.verticalScrollBar()->value()) << step;
        ASSERT_TRUE(images[0] == images[1]) << step;
    }
}

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
    EXPECT_EQ(table().selectedRecords().size(), 9950U);
    table().scrollToTop();
    table().clearSelection();  // does nothing if the selection model has no range
    EXPECT_EQ(table().nonSelectedRecords().size(), 20000U);
    QTest::keyClick(&table(), Qt::Key_Slash, Qt::ControlModifier);
    QAccessibleTableInterface* const tool =
        QAccessible::queryAccessibleInterface(&table())->tableInterface();
    EXPECT_LT(tool->selectedCellCount(), 2000);  // which it finds out one by one
}

TEST_F(SelectionTest, StaysWithTheRecordsWhateverHappensToTheRows) {
    loadRecords(3000);
    std::vector<zelqBCnrObject*> everyFifth;
    for (std::size_t row = 0; row < 3000; row += 5) {
        everyFifth.push_back(browser.session().shown().records()[row]);
    }
    for (const int step : {1, 2, 700, 5000}) {
        select(table(), [step](int row) { return row % step == 0; });
        const std::vector<zelqBCnrObject*> chosen = table().selectedRecords();
        browser.setExpanded(everyFifth, true);
        window().command(zelqId::kDisplayOnlyNonExpanded);
        EXPECT_LT(table().selectedRecords().size(), chosen.size());
        table().setColumnVisible(zelqColumn::Time, step == 2);
        window().command(zelqId::kDisplayAll);
        EXPECT_EQ(table().selectedRecords(), chosen);
        merge(write("other.log", {{.hour = 1}, {.hour = 23}}));
        EXPECT_EQ(table().selectedRecords(), chosen);
        table().selectionModel()->select(table().model()->index(0, 0), QItemSelectionModel::Select);
        unload(1);
        EXPECT_EQ(table().selectedRecords(), chosen);
    }
}

TEST_F(SelectionTest, RecordsPastTheRowLimitHaveNoRow) {
    const int limit = 2147;
    table().setRowLimit(limit);
    loadRecords(3000);
    EXPECT_EQ(table().model()->rowCount(), limit);
    QTest::keyClick(&table(), Qt::Key_Slash);
    EXPECT_EQ(table().nonSelectedRecords().size(), 3000U - limit);
    EXPECT_TRUE(status().remove(',').startsWith(
        "Records shown: 2147 of 3000 (no more fit into the table)"));
    window().goTo(*browser.session().shown().records()[limit]);
    EXPECT_TRUE(status().contains("The record is not among the rows: no more fit into the table"));
    table().scrollToBottom();
    const int page = table().rowsPerPage();
    EXPECT_EQ(table().rowAt(0), limit - page);
    EXPECT_EQ(table().rowAt(page * table().rowHeight()), -1);
}

/// As many rows as int can count, without anything in them.
class ManyRows : public QAbstractTableModel {
public:
    static constexpr int kLast = std::numeric_limits<int>::max() / 4;

    [[nodiscard]] int rowCount(const QModelIndex& /*parent*/ = {}) const override {
        return kLast + 1;
    }
    [[nodiscard]] int columnCount(const QModelIndex& /*parent*/ = {}) const override { return 2; }
    [[nodiscard]] QVariant data(const QModelIndex& /*index*/, int /*role*/) const override {
        return {};
    }
};

class PlainRowTable : public zelqRowTable {
public:
    [[nodiscard]] int rowHeight() const override { return 20; }
};

TEST(RowTableTest, SelectsBetweenRowsHoweverFarTheyAreFromEachOther) {
    ManyRows model;
    QItemSelectionModel selection(&model);
    PlainRowTable table;
    table.setRows(model, selection);
    table.setSelectionBehavior(QTableView::SelectRows);
    table.show();
    table.horizontalHeader()->resizeSection(0, 150);
    const auto click = [&table](int row, Qt::KeyboardModifiers modifiers) {
        const QModelIndex index = table.model()->index(row, 0);
        table.scrollTo(index, QTableView::PositionAtCenter);
        QTest::mouseClick(table.viewport(), Qt::LeftButton, modifiers,
                          table.visualRect(index).center());
    };
    constexpr int kMany = 100'000'000;
    for (const auto& [from, to] : std::vector<std::pair<int, int>>{
             {3, kMany}, {kMany + 1, 4}, {0, ManyRows::kLast}, {ManyRows::kLast - 2, kMany}}) {
        click(from, Qt::NoModifier);
        click(to, Qt::ShiftModifier);
        ASSERT_EQ(selection.selection().size(), 1) << from << " to " << to;
        EXPECT_EQ(selection.selection().first().top(), std::min(from, to));
        EXPECT_EQ(selection.selection().first().bottom(), std::max(from, to));
        QTest::keyClick(&table, Qt::Key_PageUp, Qt::ShiftModifier);
        const int up = std::max(0, to - table.rowsPerPage());
        EXPECT_EQ(table.currentIndex().row(), up);
        EXPECT_EQ(selection.selection().first().top(), std::min(from, up));
        EXPECT_EQ(selection.selection().first().bottom(), std::max(from, up));
    }
}

}  // namespace
