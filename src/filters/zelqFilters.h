#pragma once

#include <memory>

#include "filters/zelqFilter.h"

namespace zelqFilters {

/// A new dialog of a kind.
[[nodiscard]] std::unique_ptr<zelqFilter> makeDialog(zelqFilterKind kind,
                                                     const zelqFilterContext& context);

}  // namespace zelqFilters
