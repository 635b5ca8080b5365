#pragma once

#include <QDialog>

#include "ui/zelqFindingsModel.h"

class QLabel;
class QTableView;

/// The list of what was wrong with the loaded files. Escape closes it; the other windows can be
/// used meanwhile.
class zelqFindingsWindow : public QDialog {
    Q_OBJECT

public:
    explicit zelqFindingsWindow(QWidget* owner);

    /// To be called when a log came or went.
    void refresh(const zelqLogCollection& logs);

signals:
    /// The user opened, by double click or Return, a row that tells of a record.
    void opened(zelqFindingsModel::Place place);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void openRow(const QModelIndex& index);

    zelqFindingsModel model_;
    QTableView* table_;
    QLabel* more_;
};
