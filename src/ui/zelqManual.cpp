#include "ui/zelqManual.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"

QString zelqManual::open(const QStringList& folders) {
    const QString page = QStringLiteral("manual.html");
    for (const QString& folder : folders) {
        const QString file = QDir(folder).filePath(page);
        if (!QFileInfo::exists(file)) {
            continue;
        }
        return QDesktopServices::openUrl(QUrl::fromLocalFile(file))
                   ? QString()
                   : zelqResourceLibrary::text(zelqId::kManualNotShown).arg(file);
    }
    return zelqResourceLibrary::text(zelqId::kNoManual).arg(QDir(folders.value(0)).filePath(page));
}

QStringList zelqManual::folders() {
    const QString program = QCoreApplication::applicationDirPath();
    return {QDir::cleanPath(program + QStringLiteral("/" INSTALLED_MANUAL)),
            QDir::cleanPath(program + QStringLiteral("/" BUILT_MANUAL))};
}
