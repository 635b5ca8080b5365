#pragma once

#include "filters/zelqFilter.h"

/// Filters by a value of the records that is a number or like one.
class zelqFValue : public zelqFilter {
    Q_OBJECT

protected:
    using Text = QString (*)(std::uint32_t value, const zelqLocaleText& locale);

    zelqFValue(const zelqFilterContext& context, zelqFilterKind kind, int promptId, Text text);
    std::optional<zelqRecordTest> makeTest(std::vector<bool> selectedItems) override;

private:
    zelqValueTest::Choice choice_;  ///< moves into the test
};

class zelqFTime : public zelqFValue {
public:
    explicit zelqFTime(const zelqFilterContext& context);
};

class zelqFDate : public zelqFValue {
public:
    explicit zelqFDate(const zelqFilterContext& context);
};

class zelqFPid : public zelqFValue {
public:
    explicit zelqFPid(const zelqFilterContext& context);
};

class zelqFTid : public zelqFValue {
public:
    explicit zelqFTid(const zelqFilterContext& context);
};

class zelqFMaj : public zelqFValue {
public:
    explicit zelqFMaj(const zelqFilterContext& context);
};

class zelqFMin : public zelqFValue {
public:
    explicit zelqFMin(const zelqFilterContext& context);
};

class zelqFDet : public zelqFValue {
public:
    explicit zelqFDet(const zelqFilterContext& context);
};
