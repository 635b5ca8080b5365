#pragma once

#include <cstdlib>

/// Locales that are built for the tests, since a machine need not have any: de_DE.ISO-8859-1
/// (day-month-year) and ja_JP.EUC-JP (year-month-day; its times hold letters outside ASCII).
struct TestLocales {
    /// Makes this process and those that it starts find them, and no others.
    static void use() { ::setenv("LOCPATH", TEST_LOCALES, 1); }  // NOLINT(concurrency-mt-unsafe)
};
