#include "dialogs/zelqBUnloadDlg.h"

#include <QListWidget>

#include "resources/zelqFonts.h"
#include "resources/zelqIds.h"
#include "widgets/zelqPlainText.h"

namespace {

constexpr QSize kSize{480, 320};

/// The item's data: the name as it is, of which the text shows some characters by a substitute.
constexpr int kNameRole = Qt::UserRole;

}  // namespace

zelqBUnloadDlg::zelqBUnloadDlg(const zelqLogCollection& logs, QWidget* owner)
    : zelqBDlgBase(owner, zelqId::kUnloadDialog, zelqId::kUnloadTitle, zelqId::kUnloadPrompt),
      logs_(logs),
      list_(new QListWidget) {
    list_->setFont(zelqFonts::ofLists());
    for (int slot = 0; slot < zelqLogCollection::kSlots; ++slot) {
        const std::string name = logs_.logName(slot);
        if (!name.empty()) {
            auto* const item = new QListWidgetItem(zelqPlainText::ofFileName(name), list_);
            item->setData(kNameRole, QByteArray::fromStdString(name));
        }
    }
    list_->setCurrentRow(0);  // otherwise it has the focus but is not selected
    setDataControl(list_, zelqId::kUnloadList, SpareHeight::Control);
    addButton(zelqId::kUnloadAction, zelqId::kUnloadActionText);
    addButton(zelqId::kUnloadCancel, zelqId::kUnloadCancelText);
    resizeToFit(kSize);
}

bool zelqBUnloadDlg::command(int id) {
    return commandOfTwo(id, zelqId::kUnloadAction, zelqId::kUnloadCancel);
}

int zelqBUnloadDlg::selectedLog() const {
    const QList<QListWidgetItem*> selected = list_->selectedItems();
    if (selected.isEmpty()) {
        return zelqLogCollection::kNoSlot;
    }
    const std::string name = selected.front()->data(kNameRole).toByteArray().toStdString();
    for (int slot = 0; slot < zelqLogCollection::kSlots; ++slot) {
        if (logs_.logName(slot) == name) {
            return slot;
        }
    }
    return zelqLogCollection::kNoSlot;
}
