#include "ui/zelqRecordIcons.h"

#include <QLoggingCategory>
#include <QResource>
#include <utility>

namespace {

Q_LOGGING_CATEGORY(lcIcons, "zelq.icons")

const QString kModule = QStringLiteral("/zelqicon.rcc");

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
        if (!QResource::registerResource(folder + kModule)) {
            continue;
        }
        for (const zelqRecordIcon id : {zelqRecordIcon::Message, zelqRecordIcon::Error,
                                        zelqRecordIcon::Trace, zelqRecordIcon::Unknown}) {
            const auto number = static_cast<std::size_t>(id);
            icons_[number] = QIcon(QStringLiteral(":/zelqicon/%1.svg").arg(number));
        }
        return;
    }
    qCWarning(lcIcons) << "zelqicon.rcc cannot be opened; looked in" << folders_;
}
