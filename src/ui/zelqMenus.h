#pragma once

#include <functional>
#include <unordered_map>

class QAction;
class QKeySequence;
class QMenuBar;

/// The main window's menus. Every menu and item is named after its identifier, which for an item is
/// also the command it sends.
class zelqMenus {
public:
    /// Fills the bar; `command` is called with the identifier of an item that is chosen.
    zelqMenus(QMenuBar& bar, const std::function<void(int)>& command);

    /// Whether an item has this key, which then calls its command.
    [[nodiscard]] bool hasKey(const QKeySequence& key) const;
    void setChecked(int id, bool checked);

private:
    std::unordered_map<int, QAction*> items_;
};
