#include "widgets/zelqLineMenu.h"

#include <QMenu>

#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "widgets/zelqLineView.h"

void zelqLineMenu::popUp(zelqLineView& view, const QPoint& where) {
    auto* const menu = new QMenu(&view);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const QAbstractItemModel* const lines = view.model();
    QObject::connect(lines, &QAbstractItemModel::rowsAboutToBeInserted, menu, &QMenu::close);
    QObject::connect(lines, &QAbstractItemModel::rowsAboutToBeRemoved, menu, &QMenu::close);
    QObject::connect(lines, &QAbstractItemModel::modelAboutToBeReset, menu, &QMenu::close);
    const auto add = [&](int textId, auto act, bool enabled) {
        QAction* const action =
            menu->addAction(zelqResourceLibrary::text(textId), &view, std::move(act));
        action->setEnabled(enabled);
        return action;
    };
    add(
        zelqId::kCopyLines, [&view] { view.copySelection(); }, view.hasSelectedText())
        ->setShortcut(QKeySequence::Copy);
    add(
        zelqId::kSelectAllLines, [&view] { view.selectAll(); }, lines->rowCount() != 0)
        ->setShortcut(QKeySequence::SelectAll);
    menu->addSeparator();
    add(
        zelqId::kGoToRecord, [&view] { view.activateCurrent(); }, view.currentIndex().isValid())
        ->setShortcut(Qt::Key_Return);
    if (!view.actions().empty()) {
        menu->addSeparator();
        menu->addActions(view.actions());
    }
    menu->popup(where);
}
