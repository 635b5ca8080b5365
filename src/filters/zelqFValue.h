#pragma once

#include "filters/zelqFilter.h"

// Filters by a value of the records that is a number or like one.

class zelqFTime : public zelqFilter {
public:
    explicit zelqFTime(const zelqFilterContext& context);
};

class zelqFDate : public zelqFilter {
public:
    explicit zelqFDate(const zelqFilterContext& context);
};

class zelqFPid : public zelqFilter {
public:
    explicit zelqFPid(const zelqFilterContext& context);
};

class zelqFTid : public zelqFilter {
public:
    explicit zelqFTid(const zelqFilterContext& context);
};

class zelqFMaj : public zelqFilter {
public:
    explicit zelqFMaj(const zelqFilterContext& context);
};

class zelqFMin : public zelqFilter {
public:
    explicit zelqFMin(const zelqFilterContext& context);
};

class zelqFDet : public zelqFilter {
public:
    explicit zelqFDet(const zelqFilterContext& context);
};
