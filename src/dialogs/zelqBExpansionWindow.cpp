#include "dialogs/zelqBExpansionWindow.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "resources/zelqFonts.h"
#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "widgets/zelqLineView.h"

namespace {

constexpr int kFontSize = 8;
constexpr int kHeight = 480;
/// Frame and scroll bar beside the lines.
constexpr int kBesideLines = 32;

}  // namespace

zelqBExpansionWindow::zelqBExpansionWindow(const zelqSession& session, const zelqLocaleText& locale)
    : lines_(session, locale), view_(new zelqLineView(lines_)) {
    setObjectName(QString::number(zelqId::kExpansionWindow));
    setWindowTitle(zelqResourceLibrary::text(zelqId::kExpansionTitle));
    // No reason to keep the program running.
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_ShowWithoutActivating);

    view_->setFont(listFont(kFontSize));
    view_->setObjectName(QString::number(zelqId::kExpansionLines));
    view_->setAccessibleName(windowTitle());
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_);
    connect(view_, &zelqLineView::recordsDropped, this, &zelqBExpansionWindow::recordsDropped);
    connect(view_, &zelqLineView::recordActivated, this, &zelqBExpansionWindow::recordActivated);
    connect(view_, &zelqLineView::copied, this, &zelqBExpansionWindow::copied);

    const QString line(static_cast<qsizetype>(zelqRecordFormatter::kDumpWidth), u'0');
    const int width = view_->fontMetrics().horizontalAdvance(line);
    resize(width + kBesideLines, kHeight);
}

zelqBExpansionWindow::~zelqBExpansionWindow() {
    delete view_;  // it refers to the lines
}

void zelqBExpansionWindow::present() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
}

void zelqBExpansionWindow::refresh() {
    view_->viewport()->update();
}

void zelqBExpansionWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    hide();
    emit closedByUser();
}

void zelqBExpansionWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F6 && event->modifiers() == Qt::NoModifier) {
        emit otherWindowAsked();
    } else {
        QWidget::keyPressEvent(event);
    }
}
