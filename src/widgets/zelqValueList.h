#pragma once

#include <QAccessible>
#include <QListView>
#include <QString>
#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

class zelqRowSelection;

/// A list of values, several of which can be selected at a time, in a fixed-width font. Texts are
/// made when they are shown: there may be a million values, and every second one selected.
class zelqValueList : public QListView {
    Q_OBJECT

public:
    /// `placeholder`: what the list shows when it is filled with no item.
    explicit zelqValueList(QString placeholder, QWidget* parent = nullptr);

    using Text = std::function<QString(std::size_t item)>;
    /// Fills the list, once. `selected`: whether each item is selected, and thereby their count;
    /// `standIn`: shown for empty texts, in italics to tell it from a text that is the same.
    void setItems(Text text, const std::vector<bool>& selected, const QString& standIn = {});
    [[nodiscard]] bool isEmpty() const;
    void selectItems(bool selected);
    /// Empties the list, and returns whether each item was selected.
    [[nodiscard]] std::vector<bool> takeSelectedItems();

public slots:
    void selectAll() override { selectItems(true); }

protected:
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;
    void paintEvent(QPaintEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void updateGeometries() override;

private:
    class Items;

    void announceInSight(const QItemSelection& changed, QAccessible::Event type);
    void noteItemsInSight();
    [[nodiscard]] std::pair<int, int> itemsInSight() const;

    QString placeholder_;
    Items* items_ = nullptr;
    zelqRowSelection* selection_ = nullptr;
};
