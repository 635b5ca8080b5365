#pragma once

#include "output/zelqLocaleText.h"
#include "session/zelqRecordMatcher.h"

/// What a search needs to know of how cells are shown.
namespace zelqSearchTexts {

/// `locale` must outlive the texts. They can be asked for on any thread.
[[nodiscard]] inline zelqRecordMatcher::LocaleTexts of(const zelqLocaleText& locale) {
    return {.time = [&locale](zelqTime time) { return locale.utf8(locale.time(time)); },
            .date = [&locale](zelqDate date) { return locale.date(date); }};
}

}  // namespace zelqSearchTexts
