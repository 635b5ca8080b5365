#pragma once

#include "filters/zelqFilter.h"

/// Filters by function name.
class zelqFFunction : public zelqFilter {
    Q_OBJECT

public:
    explicit zelqFFunction(const zelqFilterContext& context);

protected:
    std::optional<zelqRecordTest> makeTest(std::vector<bool> selectedItems) override;

private:
    zelqFunctionTest::Choice choice_;  ///< moves into the test
};
