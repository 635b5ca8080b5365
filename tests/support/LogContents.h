#pragma once

#include <cstddef>
#include <tuple>
#include <vector>

#include "support/LogImage.h"

/// All that the reader says of each record; of its data, where they lie in the file.
inline auto contentsOf(const zelqLog& log, const std::byte* file) {
    std::vector<std::tuple<TestColumns, int, int, bool, std::ptrdiff_t, std::size_t>> contents;
    log.forEach([&](const zelqBCnrObject& record) {
        const auto data = record.expansionData();
        contents.emplace_back(columnsOf(record), record.entryIndex(), record.blockCount(),
                              record.hasExpansion(), data.empty() ? 0 : data.data() - file,
                              data.size());
    });
    return contents;
}
