#include "ui/zelqFileDrop.h"

#include <QDropEvent>
#include <QFile>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>
#include <QWidget>
#include <algorithm>
#include <string>
#include <vector>

#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "ui/zelqLogOperations.h"
#include "widgets/zelqPlainText.h"
#include "widgets/zelqRecordDrag.h"

zelqFileDrop::zelqFileDrop(QWidget& window, zelqLogOperations& operations)
    : QObject(&window), operations_(operations) {
    window.setAcceptDrops(true);
    window.installEventFilter(this);
}

bool zelqFileDrop::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::DragEnter:
        case QEvent::DragMove:
            return accept(static_cast<QDropEvent&>(*event));
        case QEvent::Drop:
            if (accept(static_cast<QDropEvent&>(*event))) {
                take(static_cast<QDropEvent&>(*event));
                return true;
            }
            return false;
        default:
            return QObject::eventFilter(watched, event);
    }
}

/// Files are read, so a source that would move them must not take that as done: with Shift held
/// down it proposes to.
bool zelqFileDrop::accept(QDropEvent& event) {
    for (const Qt::DropAction action : {Qt::CopyAction, Qt::LinkAction}) {
        if (event.mimeData()->hasUrls() &&
            !event.mimeData()->hasFormat(zelqRecordDrag::mimeType()) &&
            event.possibleActions().testFlag(action)) {
            event.setDropAction(action);
            event.accept();
            return true;
        }
    }
    return false;
}

void zelqFileDrop::take(const QDropEvent& event) {
    const bool anew = event.modifiers().testFlag(Qt::ShiftModifier);
    const zelqLogCollection& logs = operations_.session().logs();
    std::vector<std::string> names;
    QStringList refused;
    for (const QUrl& url : event.mimeData()->urls()) {
        const QString file = url.toLocalFile();
        std::string name = QFile::encodeName(file).toStdString();
        if (file.isEmpty() || !QFileInfo(file).isFile()) {
            refused += zelqResourceLibrary::text(zelqId::kNotTakenFile)
                           .arg(zelqPlainText::visible(file.isEmpty() ? url.toDisplayString()
                                                                      : QFileInfo(file).fileName()),
                                zelqResourceLibrary::text(zelqId::kNoLogFile));
        } else if (anew || logs.isNotLoaded(name)) {
            names.push_back(std::move(name));
        }
    }
    std::ranges::sort(names);
    names.erase(std::unique(names.begin(), names.end()), names.end());
    operations_.take(std::move(names), anew, std::move(refused));
}
