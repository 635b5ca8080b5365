#pragma once

#include <string>

/// What both programs say about their version. Any thread.
struct zelqVersion {
    /// "1.0.0 (commit 0123456789ab)": the version, and the commit that the program was built from,
    /// with "+changes" where the sources were not as in that commit. Without the commit where the
    /// build could not learn it.
    [[nodiscard]] static std::string text();
};
