#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <tsl/robin_map.h>

#include "log/zelqKeyedHash.h"

/// Counts how often values occur, in memory that has a bound whatever the values are. Counts are
/// exact as long as there are no more than kMostValues different ones. With more, all counts are
/// lowered together until half of the values are gone, and missing() says by how much: the values
/// that are frequent stay, in time that is linear in what was counted.
///
/// `Value`: std::uint32_t or std::string.
template <typename Value>
class zelqFrequencies {
public:
    static constexpr std::size_t kMostValues = 30'000;

    struct Count {
        Value value;
        std::uint64_t entries;
    };

    /// A text can be given as a std::string_view.
    template <typename Key>
    void add(const Key& value, std::uint64_t entries = 1) {
        const auto found = counts_.find(value);
        if (found != counts_.end()) {
            found.value() += entries;
            return;
        }
        counts_.emplace(Value(value), entries);
        if (counts_.size() > kMostValues) {
            lower();
        }
    }

    void merge(const zelqFrequencies& other) {
        missing_ += other.missing_;
        for (const auto& [value, entries] : other.counts_) {
            add(value, entries);
        }
    }

    /// The values that occur most often, at most `most` of them, the most frequent first; of
    /// equally frequent ones the smaller first.
    [[nodiscard]] std::vector<Count> top(std::size_t most) const {
        std::vector<Count> values;
        values.reserve(counts_.size());
        for (const auto& [value, entries] : counts_) {
            values.push_back({value, entries});
        }
        const auto middle =
            values.begin() + static_cast<std::ptrdiff_t>(std::min(most, values.size()));
        std::partial_sort(values.begin(), middle, values.end(),
                          [](const Count& left, const Count& right) {
                              return left.entries != right.entries ? left.entries > right.entries
                                                                   : left.value < right.value;
                          });
        values.erase(middle, values.end());
        return values;
    }

    /// How many different values there are; if something is missing, there are more.
    [[nodiscard]] std::size_t different() const noexcept { return counts_.size(); }
    /// What each count lacks at most, and what a value that is not kept has at most. 0 if all is
    /// exact.
    [[nodiscard]] std::uint64_t missing() const noexcept { return missing_; }

private:
    struct Hash {
        using is_transparent = void;

        std::size_t operator()(std::uint32_t value) const noexcept { return keyed(value); }
        std::size_t operator()(std::string_view text) const noexcept {
            return zelqKeyedHash::ofText(text);
        }

        zelqKeyedHash keyed{};
    };
    using Counts = tsl::robin_map<Value, std::uint64_t, Hash, std::equal_to<>>;

    void lower() {
        std::vector<std::uint64_t> sizes;
        sizes.reserve(counts_.size());
        for (const auto& count : counts_) {
            sizes.push_back(count.second);
        }
        const auto middle = sizes.begin() + kMostValues / 2;
        std::nth_element(sizes.begin(), middle, sizes.end(), std::greater<>());
        const std::uint64_t less = *middle;
        Counts left;
        for (const auto& [value, entries] : counts_) {
            if (entries > less) {
                left.emplace(value, entries - less);
            }
        }
        counts_ = std::move(left);
        missing_ += less;
    }

    Counts counts_;
    std::uint64_t missing_ = 0;
};
