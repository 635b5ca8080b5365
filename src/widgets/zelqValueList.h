#pragma once

#include <QListView>
#include <cstddef>
#include <functional>
#include <vector>

class zelqRowSelection;

/// A list of values, several of which can be selected at a time, in a fixed-width font. Texts are
/// made when they are shown: there may be a million values, and every second one selected.
class zelqValueList : public QListView {
    Q_OBJECT

public:
    explicit zelqValueList(QWidget* parent = nullptr);

    /// Fills the list, once; `text(i)` and `selected(i)` tell of item i.
    void setItems(std::size_t count, std::function<QString(std::size_t)> text,
                  const std::function<bool(std::size_t)>& selected);
    /// Whether each item is selected.
    [[nodiscard]] std::vector<bool> selectedItems() const;
    void selectItems(bool selected);

public slots:
    void selectAll() override { selectItems(true); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void updateGeometries() override;

private:
    void noteItemsInSight();

    zelqRowSelection* selection_ = nullptr;
};
