#include "ui/zelqFindingsWindow.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>

#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"

namespace {

constexpr int kRowMargin = 4;
/// A name may be as long as a file system allows.
constexpr int kWidestColumn = 260;

}  // namespace

zelqFindingsWindow::zelqFindingsWindow(QWidget* owner)
    : QDialog(owner), table_(new QTableView), more_(new QLabel) {
    const QString title = zelqResourceLibrary::text(zelqId::kFindingsTitle);
    setWindowTitle(title);
    // Over the lower part of the rows: the one that a finding leads to comes to their middle.
    const QRect room = owner->geometry();
    const QSize size(room.width() * 9 / 10, room.height() / 3);
    setGeometry(QRect(
        QPoint(room.left() + (room.width() - size.width()) / 2, room.top() + room.height() * 3 / 5),
        size));
    table_->setModel(&model_);
    table_->setAccessibleName(title);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setTabKeyNavigation(false);
    table_->setShowGrid(false);
    table_->setWordWrap(false);
    table_->setCornerButtonEnabled(false);
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowMargin);
    table_->horizontalHeader()->setHighlightSections(false);
    table_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    table_->horizontalHeader()->setStretchLastSection(true);
    more_->setTextFormat(Qt::PlainText);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(table_);
    layout->addWidget(more_);
    connect(table_, &QTableView::doubleClicked, this, &zelqFindingsWindow::openRow);
}

void zelqFindingsWindow::refresh(const zelqLogCollection& logs) {
    if (!model_.refresh(logs)) {
        return;
    }
    for (int column = 0; column < zelqFindingsModel::What; ++column) {
        table_->resizeColumnToContents(column);
        table_->setColumnWidth(column, std::min(table_->columnWidth(column), kWidestColumn));
    }
    if (!table_->currentIndex().isValid()) {
        table_->setCurrentIndex(model_.index(0, 0));
    }
    more_->setText(zelqResourceLibrary::text(zelqId::kMoreFindings)
                       .arg(QLocale().toString(static_cast<qulonglong>(model_.notListed()))));
    more_->setVisible(model_.notListed() != 0);
}

void zelqFindingsWindow::openRow(const QModelIndex& index) {
    if (const auto place = model_.placeAt(index)) {
        emit opened(*place);
    }
}

void zelqFindingsWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        openRow(table_->currentIndex());
        return;
    }
    QDialog::keyPressEvent(event);
}
