#pragma once

#include <algorithm>
#include <random>
#include <string>

#include "support/LogImage.h"

/// Entries of all types, nearly in order, some with a time that is none; `damage`: with headers of
/// any length, and bytes changed.
inline std::string randomImage(unsigned seed, std::size_t size, bool damage) {
    std::mt19937 random(seed);
    const auto below = [&random](auto end) { return static_cast<std::uint32_t>(random() % end); };
    std::string image;
    for (std::uint32_t i = 0; image.size() < size; ++i) {
        const std::uint32_t second = i / 3 - (below(20U) == 0 ? std::min(below(9U), i / 3) : 0);
        TestEntry entry{
            .type = below(30U) == 0 ? std::uint16_t{1} : zelqFormat::kEntryLayouts[below(14U)].type,
            .hour = static_cast<std::uint8_t>(second / 3600),
            .minute = static_cast<std::uint8_t>(second / 60 % 60),
            .second = static_cast<std::uint8_t>(second % 60),
            .pid = below(99U),
            .name = std::string(below(40U), 'a').append("(int)")};
        if (zelqFormat::entryLayout(entry.type).nameOffset == 0 && below(4U) != 0) {
            entry.numbers = {second << 16,     second,           below(99U),
                             below(1U << 31U), below(1U << 31U), 1};
        }
        if (damage) {
            entry.headerLength = static_cast<std::uint16_t>(below(4U) == 0 ? 0 : below(260U));
            entry.data = std::string(below(5U), '\1');
        }
        if (below(3U) != 0) {
            entry.blocks = {{below(1U << 31U), std::string(below(damage ? 9000U : 200U), 'x')}};
        }
        appendEntry(image, entry);
    }
    for (unsigned flips = damage ? 30 : 0; flips > 0; --flips) {
        image[size / 2 + random() % (size / 2)] = static_cast<char>(random());
    }
    return image;
}

/// Entries of 1 KiB, each with its own number as data.
inline std::string numbered(std::size_t count) {
    std::vector<TestEntry> entries;
    for (std::size_t i = 0; i < count; ++i) {
        std::string data = std::to_string(i);
        data.resize(1024 - 40, 'x');
        entries.push_back({.headerLength = 28, .blocks = {{0, data}}});
    }
    return logImage(entries);
}
