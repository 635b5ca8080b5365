#include "widgets/zelqLineText.h"

#include <algorithm>

#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"

QString zelqLineText::of(const zelqRecordFormatter::Line& line) {
    QString text = QString::fromLatin1(line.before);
    if (!line.time.empty()) {
        text += QString::fromLocal8Bit(line.time) + QString::fromLatin1(line.after);
    }
    return text;
}

QString zelqLineText::inPlaceOfData(zelqDataState state) {
    switch (state) {
        case zelqDataState::Pending:
            return zelqResourceLibrary::text(zelqId::kDataPending);
        case zelqDataState::Changed:
            return zelqResourceLibrary::text(zelqId::kDataChanged);
        case zelqDataState::Unreadable:
            return zelqResourceLibrary::text(zelqId::kDataUnreadable);
        case zelqDataState::Here:
            break;
    }
    return {};
}

zelqLineCopy::zelqLineCopy(const zelqExpandedRecords& records, const QItemSelection& ranges,
                           qint64 most)
    : changed_(zelqLineText::inPlaceOfData(zelqDataState::Changed)),
      unreadable_(zelqLineText::inPlaceOfData(zelqDataState::Unreadable)) {
    for (const QItemSelectionRange& range : ranges) {
        const auto end = static_cast<std::size_t>(range.bottom()) + 1;
        for (auto line = static_cast<std::size_t>(range.top()); line < end && lines_ < most;) {
            const zelqExpandedRecords::Place place = records.at(line);
            const std::size_t ofRecord = records.linesOf(*place.record).count - place.line;
            const std::size_t count =
                std::min({ofRecord, end - line, static_cast<std::size_t>(most - lines_)});
            pieces_.push_back(
                {.record = place.record, .form = place.form, .first = place.line, .count = count});
            needsReading_ = needsReading_ || place.record->dataPlace().isInFile();
            lines_ += static_cast<qint64>(count);
            line += count;
        }
    }
}

QString zelqLineCopy::text(zelqRecordFormatter& formatter,
                           const std::function<bool(qint64 done)>& goesOn) const {
    QString text;
    qint64 done = 0;
    for (const Piece& piece : pieces_) {
        if (!goesOn(done)) {
            break;
        }
        for (std::size_t line = piece.first; line < piece.first + piece.count; ++line) {
            const auto made = formatter.line(*piece.record, piece.form, line);
            text += made.state == zelqDataState::Here         ? zelqLineText::of(made)
                    : made.state == zelqDataState::Unreadable ? unreadable_
                                                              : changed_;
            text += u'\n';
        }
        done += static_cast<qint64>(piece.count);
    }
    return text;
}
