#include "filters/zelqFilterTexts.h"

#include "widgets/zelqPlainText.h"

namespace {

QString valueText(zelqFilterKind kind, std::uint32_t value, const zelqLocaleText& locale) {
    switch (kind) {
        case zelqFilterKind::Time:
            return QString::fromLocal8Bit(locale.time({value}));
        case zelqFilterKind::Date:
            return QString::fromLatin1(locale.shortDate(zelqDate::unpacked(value)));
        default:
            return QString::number(value);
    }
}

}  // namespace

QString zelqFilterTexts::ofCategory(zelqEntryTypeTest::Category category) {
    switch (category) {
        case zelqEntryTypeTest::Category::Trace:
            return QStringLiteral("TRC");
        case zelqEntryTypeTest::Category::Error:
            return QStringLiteral("ERR");
        case zelqEntryTypeTest::Category::Message:
            break;
    }
    return QStringLiteral("MSG");
}

QString zelqFilterTexts::ofItem(const zelqFilterOffer& offer, std::size_t item,
                                const zelqLocaleText& locale) {
    switch (offer.kind()) {
        case zelqFilterKind::EntryType:
            return ofCategory(zelqFilterOffer::category(item));
        case zelqFilterKind::Function:
            return zelqPlainText::visible(QString::fromLatin1(offer.name(item)));
        default:
            return valueText(offer.kind(), offer.value(item), locale);
    }
}
