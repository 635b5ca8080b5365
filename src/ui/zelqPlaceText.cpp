#include "ui/zelqPlaceText.h"

#include <QDate>
#include <QLocale>
#include <cstdlib>
#include <optional>

#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "ui/zelqRecordContainer.h"
#include "widgets/zelqPlainText.h"

namespace {

constexpr std::int64_t kSecondsPerDay = zelqTime::kSecondsPerDay;

QString number(std::uint64_t value) {
    return QLocale().toString(static_cast<qulonglong>(value));
}

/// Seconds from one record to another. Fractions have no known unit. Nothing if the dates differ
/// and one of them is in no calendar.
std::optional<std::int64_t> secondsBetween(const zelqBCnrObject& from, const zelqBCnrObject& to) {
    std::int64_t days = 0;
    if (from.date() != to.date()) {
        const auto calendarDate = [](zelqDate date) {
            return QDate(date.year, date.month, date.day);
        };
        const QDate first = calendarDate(from.date());
        const QDate last = calendarDate(to.date());
        if (!first.isValid() || !last.isValid()) {
            return {};
        }
        days = first.daysTo(last);
    }
    return days * kSecondsPerDay + std::int64_t{to.time().seconds} - from.time().seconds;
}

/// "0:00:05", "-1:00:00" or "2 d 0:00:05".
QString durationText(std::int64_t seconds) {
    const std::int64_t length = std::abs(seconds);
    const std::int64_t days = length / kSecondsPerDay;
    const QString time = QStringLiteral("%1:%2:%3")
                             .arg(length % kSecondsPerDay / 3600)
                             .arg(length / 60 % 60, 2, 10, QChar(u'0'))
                             .arg(length % 60, 2, 10, QChar(u'0'));
    const QString text = days == 0 ? time
                                   : zelqResourceLibrary::text(zelqId::kDaysAndTime)
                                         .arg(number(static_cast<std::uint64_t>(days)), time);
    return seconds < 0 ? u'-' + text : text;
}

/// `name`: of the log, fit to be shown; `afterId`: how the time since the row above is put.
QString ofRow(const zelqLog& log, const QString& name, const zelqBCnrObject& record,
              const zelqBCnrObject* before, int afterId) {
    const std::size_t index = log.indexOf(record).value_or(0);
    const std::optional<std::size_t> offset = log.offsetOf(index);
    QString text = offset.has_value()
                       ? zelqResourceLibrary::text(zelqId::kPlaceInFile)
                             .arg(name, number(index), number(*offset))
                       : zelqResourceLibrary::text(zelqId::kPlaceOfRow).arg(name, number(index));
    if (before != nullptr) {
        if (const auto seconds = secondsBetween(*before, record)) {
            text = zelqResourceLibrary::text(afterId).arg(text, durationText(*seconds));
        }
    }
    return text;
}

QString momentText(const zelqBCnrObject& record, bool withDate, const zelqLocaleText& locale) {
    const QString time = QString::fromLocal8Bit(locale.time(record.time()));
    return withDate ? QString::fromLatin1(locale.date(record.date())) + u' ' + time : time;
}

QString ofSelection(const zelqRowSelection::Summary& rows, const zelqBCnrObject& first,
                    const zelqBCnrObject& last, const zelqLocaleText& locale) {
    const bool withDate = first.date() != last.date();
    const QString text = zelqResourceLibrary::text(zelqId::kSelectedRows)
                             .arg(number(rows.count), momentText(first, withDate, locale),
                                  momentText(last, withDate, locale));
    const auto seconds = secondsBetween(first, last);
    return seconds.has_value()
               ? zelqResourceLibrary::text(zelqId::kSelectedFor).arg(text, durationText(*seconds))
               : text;
}

}  // namespace

zelqPlaceText zelqPlaceText::of(const zelqSession& session, const zelqRecordContainer& table,
                                const zelqLocaleText& locale) {
    zelqPlaceText text;
    const zelqBCnrObject* const record = table.cursoredRecord();
    const zelqBCnrObject* const before = table.recordAt(table.currentIndex().row() - 1);
    for (const auto& [slot, log] : session.logs().logs()) {
        if (record != nullptr && record->logIndex() == slot) {
            const std::string& name = session.logs().logName(slot);
            text.shown =
                ofRow(*log, zelqPlainText::ofLastName(name), *record, before, zelqId::kAfterShort);
            text.whole = ofRow(*log, zelqPlainText::ofFileName(name), *record, before,
                               zelqId::kAfterRowBefore);
        }
    }
    const zelqRowSelection::Summary& rows = table.selectionSummary();
    const zelqBCnrObject* const first = table.recordAt(static_cast<int>(rows.first));
    const zelqBCnrObject* const last = table.recordAt(static_cast<int>(rows.last));
    if (rows.count > 1 && first != nullptr && last != nullptr) {
        text.shown = ofSelection(rows, *first, *last, locale);
        text.whole += QStringLiteral("; ") + text.shown;
    }
    return text;
}
