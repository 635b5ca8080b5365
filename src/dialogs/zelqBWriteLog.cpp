#include "dialogs/zelqBWriteLog.h"

#include <QLineEdit>

#include "resources/zelqIds.h"

namespace {

constexpr int kMostCharacters = 256;
constexpr int kWidth = 480;

}  // namespace

zelqBWriteLog::zelqBWriteLog(QWidget* owner)
    : zelqBDlgBase(owner, zelqId::kWriteDialog, zelqId::kWriteTitle, zelqId::kWritePrompt),
      field_(new QLineEdit) {
    field_->setMaxLength(kMostCharacters);
    setDataControl(field_, zelqId::kWriteField, SpareHeight::BelowControl);
    addButton(zelqId::kWriteAction, zelqId::kWriteActionText);
    addButton(zelqId::kWriteCancel, zelqId::kWriteCancelText);
    resizeToFit({kWidth, 0});
}

bool zelqBWriteLog::command(int id) {
    return commandOfTwo(id, zelqId::kWriteAction, zelqId::kWriteCancel);
}

QString zelqBWriteLog::fileName() const {
    return field_->text();
}
