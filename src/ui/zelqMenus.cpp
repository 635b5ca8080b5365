#include "ui/zelqMenus.h"

#include <QMenu>
#include <QMenuBar>
#include <algorithm>
#include <initializer_list>
#include <vector>

#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"

namespace {

constexpr int kSeparator = 0;

struct Menu {
    int title;
    std::vector<int> items;
};

/// The identifiers from first to last.
std::vector<int> run(int first, int last) {
    std::vector<int> ids;
    for (int id = first; id <= last; ++id) {
        ids.push_back(id);
    }
    return ids;
}

std::vector<int> join(std::initializer_list<std::vector<int>> groups) {
    std::vector<int> all;
    for (const std::vector<int>& group : groups) {
        if (!all.empty()) {
            all.push_back(kSeparator);
        }
        all.insert(all.end(), group.begin(), group.end());
    }
    return all;
}

std::vector<Menu> menus() {
    using namespace zelqId;
    return {
        {kFileMenu, join({run(kLoad, kUnload), {kWriteLog}, {kExit}})},
        {kEditMenu, join({{kSelectAll, kDeselectAll}, {kReverseSelections}})},
        {kFiltersMenu, join({run(kEntryTypeFilter, kFunctionFilter), {kRemoveAllFilters}})},
        {kColumnsMenu, run(kFirstColumn, kLastColumn)},
        {kExpansionMenu, join({{kExpand, kUnexpand},
                               {kExpandAll, kUnexpandAll},
                               {kExpandSelected, kUnexpandSelected},
                               {kExpandNonSelected, kUnexpandNonSelected}})},
        {kDisplayMenu, join({{kDisplayAll},
                             {kDisplayOnlySelected, kDisplayOnlyNonSelected},
                             {kDisplayOnlyExpanded, kDisplayOnlyNonExpanded}})},
    };
}

/// Items of these menus carry check marks.
bool isCheckable(int id) {
    return (id >= zelqId::kEntryTypeFilter && id <= zelqId::kFunctionFilter) ||
           (id >= zelqId::kFirstColumn && id <= zelqId::kLastColumn);
}

/// Adds an item. What follows a tab in its text is its key, which is no part of its name.
QAction* addItem(QMenu& menu, const QString& text) {
    const qsizetype tab = text.indexOf(u'\t');
    QAction* const item = menu.addAction(text.left(tab).trimmed());
    if (tab >= 0) {
        const QString key = text.mid(tab + 1);
        const QKeySequence native(key);
        item->setShortcut(native[0].key() != Qt::Key_unknown ? native
                                                             : QKeySequence::fromString(key));
    }
    return item;
}

}  // namespace

zelqMenus::zelqMenus(QMenuBar& bar, const std::function<void(int)>& command) {
    for (const Menu& menu : menus()) {
        QMenu* const target = bar.addMenu(zelqResourceLibrary::text(menu.title));
        target->setObjectName(QString::number(menu.title));
        for (const int id : menu.items) {
            if (id == kSeparator) {
                target->addSeparator();
                continue;
            }
            QAction* const item = addItem(*target, zelqResourceLibrary::text(id));
            item->setObjectName(QString::number(id));
            item->setCheckable(isCheckable(id));
            // Platforms that move Quit and Preferences to other menus must not guess from the text.
            item->setMenuRole(QAction::NoRole);
            QObject::connect(item, &QAction::triggered, &bar, [command, id, item] {
                if (item->isCheckable()) {
                    item->toggle();  // takes back what the click did: marks are the commands'
                                     // business
                }
                command(id);
            });
            items_.emplace(id, item);
        }
    }
}

bool zelqMenus::hasKey(const QKeySequence& key) const {
    return std::ranges::any_of(items_,
                               [&key](const auto& item) { return item.second->shortcut() == key; });
}

void zelqMenus::setChecked(int id, bool checked) {
    items_.at(id)->setChecked(checked);
}
