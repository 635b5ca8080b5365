#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the program where something does not hold that always has to. Checked in debug builds only:
/// a check may look at all records.
namespace zelqInvariant {

#ifdef ZELQ_CHECK_INVARIANTS
inline constexpr bool kChecked = true;
#else
inline constexpr bool kChecked = false;
#endif

inline void require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "This does not hold: %s\n", what);
        std::abort();
    }
}

}  // namespace zelqInvariant
