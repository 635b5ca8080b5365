#include "ui/zelqRowCopy.h"

#include <string>

#include "widgets/zelqPlainText.h"

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

std::optional<zelqRowCopy::WithData> zelqRowCopy::withData(const zelqSession& session) const {
    WithData copy;
    std::size_t lines = 0;
    for (const zelqBCnrObject* record : records_) {
        const zelqAddressForm form = session.listingForm(*record);
        lines += zelqRecordFormatter::lineCount(*record, form, session.logs().dataSources());
        if (lines > kMostLines) {
            return {};
        }
        copy.rows.push_back({.record = record, .form = form, .text = {}});
        appendRow(*record, copy.rows.back().text);
        copy.needsReading = copy.needsReading || record->dataPlace().isInFile();
    }
    return copy;
}

QString zelqRowCopy::WithData::text(zelqRecordFormatter& formatter,
                                    const std::function<bool(qint64 done)>& goesOn) const {
    QString text;
    zelqTextBuffer dump;
    qint64 done = 0;
    for (const Row& row : rows) {
        if (!goesOn(done++)) {
            break;
        }
        text += row.text;
        dump.clear();
        formatter.appendDump(*row.record, row.form, dump);
        text += QString::fromLatin1(dump.text().data(), static_cast<qsizetype>(dump.text().size()));
    }
    return text;
}
