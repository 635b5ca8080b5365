#pragma once

#include "filters/zelqFilter.h"

/// Filters by function name.
class zelqFFunction : public zelqFilter {
    Q_OBJECT

public:
    explicit zelqFFunction(const zelqFilterContext& context);
};
