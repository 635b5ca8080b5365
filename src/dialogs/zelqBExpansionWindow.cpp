#include "dialogs/zelqBExpansionWindow.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "dialogs/zelqExpansionFinder.h"
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
    setAttribute(Qt::WA_ShowWithoutActivating);

    view_->setFont(zelqFonts::ofLists(kFontSize));
    view_->setObjectName(QString::number(zelqId::kExpansionLines));
    view_->setAccessibleName(windowTitle());
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(view_);
    finder_ = new zelqExpansionFinder(*this, lines_, *view_, locale);
    connect(finder_, &zelqFinder::opened, this, [this, layout] {
        if (finder_->bar().parentWidget() == nullptr) {
            layout->addWidget(&finder_->bar());
        }
    });
    connect(view_, &zelqLineView::recordsDropped, this, &zelqBExpansionWindow::recordsDropped);
    connect(view_, &zelqLineView::recordActivated, this, &zelqBExpansionWindow::recordActivated);
    connect(view_, &zelqLineView::copied, this, &zelqBExpansionWindow::copied);
    connect(view_, &zelqLineView::copyWanted, this, &zelqBExpansionWindow::copyWanted);

    const QString line(static_cast<qsizetype>(zelqRecordFormatter::kDumpWidth), u'0');
    const int width = view_->fontMetrics().horizontalAdvance(line);
    resize(width + kBesideLines, kHeight);
}

zelqBExpansionWindow::~zelqBExpansionWindow() {
    // They refer to the lines, the finder on a thread of its own.
    delete finder_;
    delete view_;
}

void zelqBExpansionWindow::present() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
}

void zelqBExpansionWindow::scrollTo(const zelqBCnrObject& record) {
    const zelqExpandedRecords& records = lines_.records();
    if (records.contains(record)) {
        const zelqExpandedRecords::Lines lines = records.linesOf(record);
        const auto most = static_cast<std::size_t>(lines_.rowCount());
        for (const std::size_t line : {lines.first + lines.count - 1, lines.first}) {
            view_->scrollTo(lines_.index(static_cast<int>(std::min(line, most - 1))));
        }
    }
}

void zelqBExpansionWindow::placeBeside(const QWidget& mainWindow, int belowMenus) {
    // This window has no frame before it is shown, but will have one like the main window's.
    const QRect frame = mainWindow.frameGeometry();
    const QSize borders = frame.size() - mainWindow.size();
    const QRect place =
        placeBeside(frame, belowMenus, size() + borders, mainWindow.screen()->availableGeometry());
    move(place.topLeft());
    resize(place.size() - borders);
}

QRect zelqBExpansionWindow::placeBeside(const QRect& frame, int belowMenus, QSize size,
                                        const QRect& screen) {
    QRect place(frame.topLeft(), size.boundedTo(screen.size()));
    if (screen.right() - frame.right() >= place.width()) {
        place.moveLeft(frame.right() + 1);
    } else if (frame.left() - screen.left() >= place.width()) {
        place.moveRight(frame.left() - 1);
    } else if (screen.bottom() - frame.bottom() >= place.height()) {
        place.moveTop(frame.bottom() + 1);
    } else {
        place.moveBottomRight(screen.bottomRight());
        const int highest = std::min(belowMenus, screen.bottom() - screen.height() / 4);
        place.setTop(std::max(place.top(), highest));
        return place;
    }
    // The main window may reach beyond the screen.
    place.moveLeft(std::clamp(place.left(), screen.left(), screen.right() - place.width() + 1));
    place.moveTop(std::clamp(place.top(), screen.top(), screen.bottom() - place.height() + 1));
    return place;
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
