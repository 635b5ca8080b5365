#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "log/zelqFinding.h"

/// What was wrong with the file of a log.
struct zelqLogFindings {
    /// A file of random bytes has millions of findings; past these they are only counted.
    static constexpr std::size_t kMostKept = 10000;

    std::vector<zelqFinding> kept;  ///< the first ones, or fewer where memory is short
    std::uint64_t count = 0;        ///< of all findings
    std::string problem;            ///< why the file was not read to its end; empty if it was

    void add(const zelqFinding& finding) noexcept;
    [[nodiscard]] std::uint64_t total() const noexcept { return count + (problem.empty() ? 0 : 1); }
    /// How many of the total are in none of the lists.
    [[nodiscard]] std::uint64_t notKept() const noexcept { return count - kept.size(); }
};
