#pragma once

#include <memory>

#include "filters/zelqFilter.h"

/// A new dialog of a kind.
[[nodiscard]] std::unique_ptr<zelqFilter> makeFilter(zelqFilterKind kind,
                                                     const zelqFilterContext& context);
