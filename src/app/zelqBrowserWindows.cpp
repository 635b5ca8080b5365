// The window with the text of expanded records, and how one window leads to the other.

#include <QLocale>
#include <QMenuBar>
#include <memory>

#include "app/zelqBrowser.h"
#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "widgets/zelqLineText.h"

zelqBExpansionWindow& zelqBrowser::expansionWindow() {
    if (expansionWindow_ == nullptr) {
        setUpExpansionWindow();
    }
    expansionWindow_->present();
    return *expansionWindow_;
}

void zelqBrowser::setUpExpansionWindow() {
    expansionWindow_ = std::make_unique<zelqBExpansionWindow>(session_, mainWindow_->locale());
    session_.setLinesView(&expansionWindow_->lines());
    const QMenuBar& menus = *mainWindow_->menuBar();
    expansionWindow_->placeBeside(*mainWindow_, menus.mapToGlobal(QPoint(0, menus.height())).y());

    using Window = zelqBExpansionWindow;
    const auto connect = [this](auto signal, auto&& slot) {
        QObject::connect(expansionWindow_.get(), signal, mainWindow_.get(), slot);
    };
    connect(&Window::closedByUser, [this] {
        mainWindow_->attempt(
            [this] { change([](zelqSessionDraft& draft) { draft.collapseAll(); }, nullptr); });
    });
    connect(&Window::recordsDropped, [this] { mainWindow_->attempt([this] { expandDropped(); }); });
    connect(&Window::otherWindowAsked, [this] { goToMainWindow(); });
    connect(&Window::recordActivated, [this](zelqBCnrObject* record) { goToRecord(*record); });
    connect(&Window::copied, [this](qint64 lines, qint64 ofLines) { tellCopied(lines, ofLines); });
    connect(&Window::copyWanted, [this](const zelqLineCopy& lines, qint64 ofLines) {
        copy({.text = [lines](auto& formatter,
                              const auto& goesOn) { return lines.text(formatter, goesOn); },
              .total = lines.lines(),
              .outcome = copiedText(lines.lines(), ofLines)});
    });
}

void zelqBrowser::goToExpansionWindow() {
    if (expansionWindow_ != nullptr && expansionWindow_->isVisible()) {
        expansionWindow_->present();
        expansionWindow_->activateWindow();
    }
}

void zelqBrowser::goToMainWindow() {
    mainWindow_->setWindowState(mainWindow_->windowState() & ~Qt::WindowMinimized);
    mainWindow_->raise();
    mainWindow_->activateWindow();
}

void zelqBrowser::goToRecord(zelqBCnrObject& record) {
    goToMainWindow();
    whenSettled([this, &record] {
        if (session_.logs().has(record)) {
            mainWindow_->goTo(record);
        }
    });
}

QString zelqBrowser::copiedText(qint64 lines, qint64 ofLines) {
    const QLocale locale;
    return lines < ofLines
               ? zelqResourceLibrary::text(zelqId::kCopied)
                     .arg(locale.toString(lines), locale.toString(ofLines))
               : zelqResourceLibrary::text(zelqId::kLinesCopied).arg(locale.toString(lines));
}

void zelqBrowser::tellCopied(qint64 lines, qint64 ofLines) {
    if (lines < ofLines) {
        mainWindow_->statusLine().showOutcome(
            lines == 0 ? zelqResourceLibrary::text(zelqId::kNotEnoughMemory)
                       : copiedText(lines, ofLines));
    }
}
