#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

/// The values that a filter dialog offers, and those that the user accepts; both ascending, each
/// value once.
template <typename Value>
struct zelqValueChoice {
    std::vector<Value> offered;
    std::vector<Value> accepted;

    /// What a dialog starts with: all of the loaded records' values are accepted or, if a filter of
    /// the kind is installed, what that one accepts. What it offered stays on offer, even if no
    /// record has the value any more.
    zelqValueChoice(std::vector<Value> loaded, const zelqValueChoice* installed) {
        if (installed == nullptr) {
            offered = std::move(loaded);
            accepted = offered;
            return;
        }
        accepted = installed->accepted;
        std::set_union(loaded.begin(), loaded.end(), installed->offered.begin(),
                       installed->offered.end(), std::back_inserter(offered));
    }

    [[nodiscard]] bool accepts(std::size_t item) const {
        return std::binary_search(accepted.begin(), accepted.end(), offered[item]);
    }
    /// Accepts the offered values whose item is selected, and no others.
    void accept(const std::vector<bool>& selectedItems) {
        accepted.clear();
        for (std::size_t item = 0; item < offered.size(); ++item) {
            if (selectedItems[item]) {
                accepted.push_back(offered[item]);
            }
        }
    }
};
