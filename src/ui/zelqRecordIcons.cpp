#include "ui/zelqRecordIcons.h"

#include <QCryptographicHash>
#include <QFile>
#include <QLoggingCategory>
#include <QPixmap>
#include <QResource>
#include <utility>

namespace {

Q_LOGGING_CATEGORY(lcIcons, "zelq.icons")

const QString kModule = QStringLiteral("/zelqicon.rcc");
const QString kRoot = QStringLiteral("/zelqicon-module");
constexpr qint64 kMaximalSize = 1 << 20;

QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(kMaximalSize) : QByteArray();
}

/// Qt follows the offsets in a module wherever they lead, so only the bytes that were built will
/// do.
bool isIntact(const QByteArray& module, const QByteArray& checksum) {
    return checksum.startsWith(
        QCryptographicHash::hash(module, QCryptographicHash::Sha256).toHex());
}

}  // namespace

zelqRecordIcons::zelqRecordIcons(QStringList folders) : folders_(std::move(folders)) {}

const QIcon& zelqRecordIcons::icon(zelqRecordIcon id) const {
    if (!opened_) {
        opened_ = true;
        open();
    }
    return icons_[static_cast<std::size_t>(id)];
}

void zelqRecordIcons::open() const {
    for (const QString& folder : folders_) {
        const QByteArray module = readFile(folder + kModule);
        if (module.isEmpty()) {
            continue;
        }
        const auto* const bytes = reinterpret_cast<const uchar*>(module.constData());
        if (isIntact(module, readFile(folder + kModule + QStringLiteral(".sha256"))) &&
            QResource::registerResource(bytes, kRoot)) {
            readIcons();
            QResource::unregisterResource(bytes, kRoot);
            return;
        }
        qCWarning(lcIcons) << "zelqicon.rcc is damaged, in" << folder;
    }
    qCWarning(lcIcons) << "zelqicon.rcc cannot be opened; looked in" << folders_;
}

void zelqRecordIcons::readIcons() const {
    for (const zelqRecordIcon id : {zelqRecordIcon::Message, zelqRecordIcon::Error,
                                    zelqRecordIcon::Trace, zelqRecordIcon::Unknown}) {
        const auto number = static_cast<std::size_t>(id);
        for (const int size : {16, 24, 32, 48}) {
            const QString name = QStringLiteral("/zelqicon/%1-%2.png").arg(number).arg(size);
            const QPixmap image(':' + kRoot + name);
            if (image.isNull()) {
                qCWarning(lcIcons) << "zelqicon.rcc has no image" << name;
            }
            icons_[number].addPixmap(image);
            icons_[number].addPixmap(image, QIcon::Selected);  // else Qt tints it
        }
    }
}
