#include "resources/zelqResourceLibrary.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QLocale>
#include <utility>

namespace {

const QString kLibraryName = QStringLiteral("ZLQUOR3U");
const QString kSuffix = QStringLiteral(".qm");

}  // namespace

zelqResourceLibrary::zelqResourceLibrary(const QStringList& folders) {
    for (const QString& folder : folders) {
        auto texts = std::make_unique<QTranslator>();
        if (!texts->load(kLibraryName + kSuffix, folder)) {
            continue;
        }
        install(std::move(texts));
        auto variant = std::make_unique<QTranslator>();
        // load() falls back to the plain name, which then only stands twice.
        if (variant->load(QLocale(), kLibraryName, QStringLiteral("_"), folder, kSuffix)) {
            install(std::move(variant));
        }
        return;
    }
    throw zelqResourceError("The resource library ZLQUOR3U.qm cannot be opened.\n\nLooked in:\n" +
                            folders.join(u'\n').toStdString());
}

zelqResourceLibrary::~zelqResourceLibrary() {
    for (const auto& translator : translators_) {
        QCoreApplication::removeTranslator(translator.get());
    }
}

QString zelqResourceLibrary::text(int id) {
    return qtTrId(QByteArray::number(id).constData());
}

QStringList zelqResourceLibrary::dataFolders() {
    const QString program = QCoreApplication::applicationDirPath();
    return {program, QDir::cleanPath(program + QStringLiteral("/../share/ras-log-browser"))};
}

void zelqResourceLibrary::install(std::unique_ptr<QTranslator> translator) {
    QCoreApplication::installTranslator(translator.get());
    translators_.push_back(std::move(translator));
}
