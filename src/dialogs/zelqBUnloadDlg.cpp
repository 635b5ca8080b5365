#include "dialogs/zelqBUnloadDlg.h"

#include <QFile>
#include <QListWidget>

#include "resources/zelqFonts.h"
#include "resources/zelqIds.h"

namespace {

constexpr int kWidth = 480;
constexpr int kHeight = 320;

QString shownName(const zelqLogCollection& logs, int slot) {
    return QFile::decodeName(QByteArray::fromStdString(logs.logName(slot)));
}

}  // namespace

zelqBUnloadDlg::zelqBUnloadDlg(const zelqLogCollection& logs, QWidget* owner)
    : zelqBDlgBase(owner, zelqId::kUnloadDialog, zelqId::kUnloadTitle, zelqId::kUnloadPrompt),
      logs_(logs),
      list_(new QListWidget) {
    list_->setFont(listFont());
    for (int slot = 0; slot < zelqLogCollection::kSlots; ++slot) {
        if (!logs_.logName(slot).empty()) {
            list_->addItem(shownName(logs_, slot));
        }
    }
    setDataControl(list_, zelqId::kUnloadList, SpareHeight::Control);
    addButton(zelqId::kUnloadAction, zelqId::kUnloadActionText);
    addButton(zelqId::kUnloadCancel, zelqId::kUnloadCancelText);
    resize(kWidth, kHeight);
}

bool zelqBUnloadDlg::command(int id) {
    return commandOfTwo(id, zelqId::kUnloadAction, zelqId::kUnloadCancel);
}

int zelqBUnloadDlg::selectedLog() const {
    const QList<QListWidgetItem*> selected = list_->selectedItems();
    if (selected.isEmpty()) {
        return zelqLogCollection::kNoSlot;
    }
    for (int slot = 0; slot < zelqLogCollection::kSlots; ++slot) {
        if (shownName(logs_, slot) == selected.front()->text()) {
            return slot;
        }
    }
    return zelqLogCollection::kNoSlot;
}
