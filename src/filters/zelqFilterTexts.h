#pragma once

#include <QString>
#include <cstddef>

#include "output/zelqLocaleText.h"
#include "session/zelqFilterOffer.h"

/// The values of filters as lists and menus show them.
namespace zelqFilterTexts {

/// Empty for the name that is empty.
[[nodiscard]] QString ofItem(const zelqFilterOffer& offer, std::size_t item,
                             const zelqLocaleText& locale);
[[nodiscard]] QString ofCategory(zelqEntryTypeTest::Category category);

}  // namespace zelqFilterTexts
