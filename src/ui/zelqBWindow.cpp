#include "ui/zelqBWindow.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QMenuBar>
#include <QScreen>
#include <QShortcut>

#include "resources/zelqAccelerators.h"
#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "ui/zelqFileDrop.h"
#include "ui/zelqGoToTime.h"
#include "ui/zelqManual.h"
#include "ui/zelqOverview.h"
#include "ui/zelqRecordFinder.h"
#include "ui/zelqRowMarks.h"
#include "ui/zelqRowMenu.h"

zelqBWindow::zelqBWindow(zelqLogOperations& browser)
    : browser_(browser),
      session_(browser.session()),
      icons_(zelqResourceLibrary::dataFolders()),
      container_(new zelqRecordContainer(session_, locale_, icons_)),
      overview_(new zelqOverview(*container_, session_, locale_)),
      statusLine_(new zelqStatusLine),
      menus_(*menuBar(), [this](int id) { command(id); }) {
    setObjectName(QString::number(zelqId::kMainWindow));
    setWindowTitle(zelqResourceLibrary::text(zelqId::kMainTitle));
    setWindowIcon(programIcon());
    setUpContainer();
    setUpStatusLine();
    setUpAccelerators();
    setUpAdditions();
    if (const QScreen* const screen = QGuiApplication::primaryScreen()) {
        const QRect rectangle = initialRectangle(screen->size());
        move(screen->geometry().topLeft() + rectangle.topLeft());
        resize(rectangle.size());
    }
    refresh();
}

zelqBWindow::~zelqBWindow() {
    // They refer to members of this object, the finder on a thread of its own.
    delete finder_;
    delete goToTime_;
    delete overview_;
    delete takeCentralWidget();
}

void zelqBWindow::setUpContainer() {
    container_->setAccessibleName(zelqResourceLibrary::text(zelqId::kRecordContainer));
    auto* const area = new QWidget;
    auto* const layout = new QGridLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(container_, 0, 0);
    layout->addWidget(overview_, 0, 1);
    setCentralWidget(area);
    setUpFinder(*layout);
    connect(container_, &zelqRecordContainer::opened, this, &zelqBWindow::open);
    container_->setFocus();
    for (int id = zelqId::kFirstColumn; id <= zelqId::kLastColumn; ++id) {
        menus_.setChecked(id, true);
    }
}

/// The find bar and the field for a time, of which one at most is seen.
void zelqBWindow::setUpFinder(QGridLayout& layout) {
    finder_ = new zelqRecordFinder(*this, session_, *container_, locale_);
    goToTime_ = new zelqGoToTime(*this, browser_, *container_, locale_);
    connect(finder_, &zelqFinder::matchesChanged, overview_,
            [this] { overview_->setMatches(finder_->search().bits()); });
    connect(finder_, &zelqFinder::opened, this, [this, &layout] {
        goToTime_->hide();
        if (finder_->bar().parentWidget() == nullptr) {
            layout.addWidget(&finder_->bar(), 1, 0, 1, 2);
        }
    });
    connect(goToTime_, &zelqGoToTime::opened, this, [this, &layout] {
        finder_->close();
        if (goToTime_->parentWidget() == nullptr) {
            layout.addWidget(goToTime_, 2, 0, 1, 2);
        }
    });
}

void zelqBWindow::setUpAccelerators() {
    for (const zelqAccelerator& accelerator : kAccelerators) {
        if (menus_.hasKey(accelerator.key)) {
            continue;  // two that have a key stand in each other's way
        }
        auto* const shortcut = new QShortcut(QKeySequence(accelerator.key), this);
        connect(shortcut, &QShortcut::activated, this,
                [this, id = accelerator.command] { command(id); });
    }
}

/// What is neither in the menus nor in the table of accelerators.
void zelqBWindow::setUpAdditions() {
    auto* const marks = new zelqRowMarks(*this, browser_);
    new zelqRowMenu(*this, browser_, *marks);
    new zelqFileDrop(*this, browser_);
    auto* const help = new QShortcut(Qt::Key_F1, this);
    help->setContext(Qt::ApplicationShortcut);
    connect(help, &QShortcut::activated, this,
            [this] { attempt([this] { statusLine_->showOutcome(zelqManual::open()); }); });
}

/// The desktop's icon of the program, or the program's own. Its picture in pixels serves where Qt
/// cannot read SVG.
QIcon zelqBWindow::programIcon() {
    Q_INIT_RESOURCE(zelqprogram);
    QIcon icon(QStringLiteral(":/zelqprogram/ras-log-browser.svg"));
    icon.addFile(QStringLiteral(":/zelqprogram/ras-log-browser.png"));
    return QIcon::fromTheme(QStringLiteral("ras-log-browser"), icon);
}

QRect zelqBWindow::initialRectangle(QSize desktop) {
    const int width = static_cast<int>(static_cast<unsigned>(desktop.width()) * 3U / 5U);
    const int height = desktop.height() * 3 / 4;
    const int left = desktop.width() / 2 - width / 2;
    // The rule counts from the bottom of the desktop, Qt from the top.
    const int bottom = desktop.height() / 2 - height / 2;
    return {left, desktop.height() - (bottom + height), width, height};
}

bool zelqBWindow::systemCommand(int id) {
    const int masked = id & 0xFFF0;
    if (masked == zelqId::kExit) {
        browser_.mainWindowCloses();
        return false;
    }
    return command(masked);
}

void zelqBWindow::closeEvent(QCloseEvent* event) {
    event->setAccepted(!systemCommand(zelqId::kExit));
}

void zelqBWindow::showWaitPointer() {
    ++waits_;
    setCursor(Qt::WaitCursor);
}

void zelqBWindow::showNormalPointer() {
    if (--waits_ == 0) {
        unsetCursor();
    }
}
