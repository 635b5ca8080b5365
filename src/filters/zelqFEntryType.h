#pragma once

#include "filters/zelqFilter.h"

/// Filters by the three categories of entry types.
class zelqFEntryType : public zelqFilter {
    Q_OBJECT

public:
    explicit zelqFEntryType(const zelqFilterContext& context);
};
