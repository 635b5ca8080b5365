#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "output/zelqLogSummary.h"

/// What is shown of the summary of one log, or of several logs together.
struct zelqShownSummary {
    template <typename Value>
    struct List {
        List(const zelqFrequencies<Value>& values, std::size_t most)
            : top(values.top(most)), different(values.different()), missing(values.missing()) {}

        std::vector<typename zelqFrequencies<Value>::Count> top;
        std::size_t different;
        std::uint64_t missing;  ///< see zelqFrequencies
    };

    static constexpr std::size_t kBars = 12;

    /// `name`: of the log, as given; for several logs it is not shown. `most`: values of each list.
    zelqShownSummary(std::string name, const zelqLogSummary& summary, std::size_t most);

    std::string log;
    std::uint64_t entries;
    std::uint64_t bytes;
    std::uint64_t findings;
    std::uint64_t withoutDate;  ///< entries whose date no calendar has
    std::array<std::uint64_t, zelqLogSummary::kTypes.size()> types{};  ///< in the order of kTypes

    bool hasTimes;  ///< without, the following are empty
    std::int64_t first = 0;
    std::int64_t last = 0;
    zelqTimeProfile::Gap gap{};
    zelqTimeProfile::Minute minute{};
    std::vector<zelqTimeProfile::Bar> bars{};

    List<std::string> functions;
    List<std::uint32_t> pids;
    List<std::uint32_t> majorErrors;
    List<std::uint32_t> minorErrors;
};
