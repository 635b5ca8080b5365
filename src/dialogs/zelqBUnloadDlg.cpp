#include "dialogs/zelqBUnloadDlg.h"

#include <QFile>
#include <QListWidget>

#include "resources/zelqFonts.h"
#include "resources/zelqIds.h"

namespace {

constexpr QSize kSize{480, 320};

/// The item's data: the name as it is, of which the text may show some bytes only by a substitute.
constexpr int kNameRole = Qt::UserRole;

}  // namespace

zelqBUnloadDlg::zelqBUnloadDlg(const zelqLogCollection& logs, QWidget* owner)
    : zelqBDlgBase(owner, zelqId::kUnloadDialog, zelqId::kUnloadTitle, zelqId::kUnloadPrompt),
      logs_(logs),
      list_(new QListWidget) {
    list_->setFont(zelqFonts::ofLists());
    for (int slot = 0; slot < zelqLogCollection::kSlots; ++slot) {
        const QByteArray name = QByteArray::fromStdString(logs_.logName(slot));
        if (!name.isEmpty()) {
            auto* const item = new QListWidgetItem(QFile::decodeName(name), list_);
            item->setData(kNameRole, name);
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
