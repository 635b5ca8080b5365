#pragma once

#include <QString>
#include <QStringList>
#include <Qt>

#include "log/zelqBCnrObject.h"
#include "log/zelqColumnExtremes.h"
#include "output/zelqLocaleText.h"
#include "output/zelqRecordCells.h"
#include "resources/zelqIds.h"

struct zelqColumnStyle {
    int headingId;  ///< text of the heading, 0 for none
    int width;      ///< pixels, 0 for as wide as heading and contents need
    Qt::Alignment alignment;
};

static_assert(zelqId::kLastColumn - zelqId::kFirstColumn + 1 == kColumnCount);

namespace zelqRecordColumns {

[[nodiscard]] const zelqColumnStyle& style(zelqColumn column) noexcept;

/// What a cell shows, finished.
[[nodiscard]] QString text(const zelqBCnrObject& record, zelqColumn column,
                           const zelqLocaleText& locale);

/// Cell texts of a column among which is the widest one that records with these extremes have. All
/// their digits are `digit`, which should be the widest one of the font.
[[nodiscard]] QStringList widestTexts(zelqColumn column, const zelqColumnExtremes& extremes,
                                      const zelqLocaleText& locale, QChar digit);

}  // namespace zelqRecordColumns
