#pragma once

#include <QString>
#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "output/zelqRecordFormatter.h"
#include "session/zelqSession.h"
#include "ui/zelqRecordModel.h"

/// Rows as text for the clipboard: a line each, with a tab between the cells of the columns that
/// are visible. What of a cell cannot be seen, a tab too, is shown as zelqPlainText does it: nobody
/// knows into what the text is pasted.
class zelqRowCopy {
public:
    /// No more can be copied at a time; few programs would take them.
    static constexpr std::size_t kMostRows = 100'000;
    /// The same of lines of the dump.
    static constexpr std::size_t kMostLines = 1'000'000;

    /// All must outlive the object. `records`: at most kMostRows.
    zelqRowCopy(std::span<zelqBCnrObject* const> records, const zelqRecordModel& model,
                const zelqLocaleText& locale)
        : records_(records), model_(model), locale_(locale) {}

    [[nodiscard]] QString text() const;
    /// After each row come the lines of the record's dump, as a listing of the session has them at
    /// this moment. It does not count as a dump. Nothing if there are too many lines. `text(...)`
    /// may be called on another thread, and `goesOn(done)` is asked by it before each record; false
    /// ends it.
    struct WithData {
        struct Row {
            const zelqBCnrObject* record;
            zelqAddressForm form;
            QString text;
        };
        std::vector<Row> rows;
        bool needsReading = false;  ///< data that are not kept in memory

        [[nodiscard]] QString text(zelqRecordFormatter& formatter,
                                   const std::function<bool(qint64 done)>& goesOn) const;
    };
    [[nodiscard]] std::optional<WithData> withData(const zelqSession& session) const;

private:
    void appendRow(const zelqBCnrObject& record, QString& text) const;

    std::span<zelqBCnrObject* const> records_;
    const zelqRecordModel& model_;
    const zelqLocaleText& locale_;
};
