#pragma once

#include <QItemSelection>
#include <QString>
#include <functional>
#include <vector>

#include "output/zelqRecordFormatter.h"
#include "session/zelqExpandedRecords.h"

/// Lines of expanded records as the window shows them.
namespace zelqLineText {

/// The text of a line that is made of data that are here.
[[nodiscard]] QString of(const zelqRecordFormatter::Line& line);
/// What is shown in the place of data that are not here. GUI thread only.
[[nodiscard]] QString inPlaceOfData(zelqDataState state);

}  // namespace zelqLineText

/// Lines that are to be copied, and that can be made into text on another thread, while the window
/// goes on. Valid as long as the records are.
class zelqLineCopy {
public:
    /// `ranges`: rows of the lines, from top to bottom; of these as many as `most`.
    zelqLineCopy(const zelqExpandedRecords& records, const QItemSelection& ranges, qint64 most);

    /// Whether data are needed that are not kept in memory.
    [[nodiscard]] bool needsReading() const noexcept { return needsReading_; }
    [[nodiscard]] qint64 lines() const noexcept { return lines_; }
    /// The lines, each with a line end. `goesOn(done)` is asked before each record, with how many
    /// lines are made; false ends it.
    [[nodiscard]] QString text(zelqRecordFormatter& formatter,
                               const std::function<bool(qint64 done)>& goesOn) const;

private:
    struct Piece {
        const zelqBCnrObject* record;
        zelqAddressForm form;
        std::size_t first;
        std::size_t count;
    };

    std::vector<Piece> pieces_;
    qint64 lines_ = 0;
    bool needsReading_ = false;
    QString changed_;
    QString unreadable_;
};
