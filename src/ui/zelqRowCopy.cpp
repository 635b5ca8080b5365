#include "ui/zelqRowCopy.h"

#include <string>

#include "output/zelqRecordFormatter.h"
#include "ui/zelqPlainText.h"

void zelqRowCopy::appendRow(const zelqBCnrObject& record, QString& text) const {
    for (int section = 0; section < model_.columnCount(); ++section) {
        if (section != 0) {
            text += u'\t';
        }
        text += zelqPlainText::visible(
            zelqRecordColumns::text(record, model_.columnAt(section), locale_));
    }
    text += u'\n';
}

QString zelqRowCopy::text() const {
    QString text;
    for (const zelqBCnrObject* record : records_) {
        appendRow(*record, text);
    }
    return text;
}

std::optional<QString> zelqRowCopy::textWithData(const zelqSession& session) const {
    QString text;
    zelqTextBuffer dump;
    std::size_t lines = 0;
    for (const zelqBCnrObject* record : records_) {
        const zelqAddressForm form = session.listingForm(*record);
        lines += zelqRecordFormatter::lineCount(*record, form);
        if (lines > kMostLines) {
            return {};
        }
        appendRow(*record, text);
        dump.clear();
        zelqRecordFormatter::appendDump(*record, form, dump);
        text += QString::fromLatin1(dump.text().data(), static_cast<qsizetype>(dump.text().size()));
    }
    return text;
}
