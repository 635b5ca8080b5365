#include "resources/zelqResourceLibrary.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QLoggingCategory>
#include <utility>

#include "resources/zelqTextFileCheck.h"

namespace {

Q_LOGGING_CATEGORY(lcTexts, "zelq.texts")

const QString kLibraryName = QStringLiteral("ZLQUOR3U");
const QString kSuffix = QStringLiteral(".qm");

std::unique_ptr<QTranslator> open(const QString& path) {
    const auto fail = [&path](const QString& what) {
        throw zelqResourceError("The resource library " + path.toStdString() + ' ' +
                                what.toStdString() + '.');
    };
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        fail(QStringLiteral("cannot be opened: ") + file.errorString());
    }
    auto texts = std::make_unique<QTranslator>();
    if (!zelqTextFileCheck::isIntact(file.readAll()) || !texts->load(path) || texts->isEmpty()) {
        fail(QStringLiteral("is damaged"));
    }
    return texts;
}

bool isIntact(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && zelqTextFileCheck::isIntact(file.readAll());
}

}  // namespace

zelqResourceLibrary::zelqResourceLibrary(const QStringList& folders, const QString& qtFolder) {
    for (const QString& folder : folders) {
        const QString path = QDir(folder).filePath(kLibraryName + kSuffix);
        if (QFileInfo::exists(path)) {
            std::unique_ptr<QTranslator> texts = open(path);
            installForLanguage(QStringLiteral("qtbase"), qtFolder);
            install(std::move(texts));
            installForLanguage(kLibraryName, folder);
            return;
        }
    }
    throw zelqResourceError("The resource library ZLQUOR3U.qm is missing.\n\nLooked in:\n" +
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
    return {program, QDir::cleanPath(program + QStringLiteral("/" INSTALLED_DATA))};
}

void zelqResourceLibrary::install(std::unique_ptr<QTranslator> texts) {
    QCoreApplication::installTranslator(texts.get());
    translators_.push_back(std::move(texts));
}

void zelqResourceLibrary::installForLanguage(const QString& name, const QString& folder) {
    auto texts = std::make_unique<QTranslator>();
    // Where there is no variant this finds the plain file again, which changes nothing.
    if (!texts->load(QLocale(), name, QStringLiteral("_"), folder, kSuffix)) {
        return;
    }
    if (!isIntact(texts->filePath())) {
        qCWarning(lcTexts) << texts->filePath() << "is damaged";
        return;
    }
    install(std::move(texts));
}
