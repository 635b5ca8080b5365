#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <utility>
#include <vector>

/// The values that a filter dialog offers, ascending, each once, and which of them are accepted.
template <typename Value>
class zelqValueChoice {
public:
    /// What a dialog starts with: all values of the loaded records are accepted or, if a filter of
    /// the kind is installed, those that it accepts. What that one offered stays on offer, even if
    /// no record has the value any more. `loaded`: ascending, each value once.
    zelqValueChoice(std::vector<Value> loaded, const zelqValueChoice* installed) {
        if (installed == nullptr) {
            offered_ = std::move(loaded);
            accepted_.assign(offered_.size(), true);
            return;
        }
        std::set_union(std::make_move_iterator(loaded.begin()),
                       std::make_move_iterator(loaded.end()), installed->offered_.begin(),
                       installed->offered_.end(), std::back_inserter(offered_));
        accepted_.resize(offered_.size());
        std::size_t item = 0;
        installed->forEachAccepted([this, &item](const Value& value) {
            while (offered_[item] < value) {
                ++item;
            }
            accepted_[item] = true;
        });
    }

    [[nodiscard]] const std::vector<Value>& offered() const noexcept { return offered_; }
    /// Whether each of the offered values is accepted.
    [[nodiscard]] const std::vector<bool>& accepted() const noexcept { return accepted_; }
    /// Accepts those of the offered values whose item is true. Items that are missing are false.
    void accept(std::vector<bool> items) {
        accepted_ = std::move(items);
        accepted_.resize(offered_.size());
    }

    /// Looks a value up, which may be one that is not offered.
    template <typename Key>
    [[nodiscard]] bool accepts(const Key& value) const {
        const auto found = std::lower_bound(offered_.begin(), offered_.end(), value, std::less<>());
        return found != offered_.end() && *found == value &&
               accepted_[static_cast<std::size_t>(found - offered_.begin())];
    }
    /// Calls `visit` for each accepted value, in ascending order.
    template <typename Visit>
    void forEachAccepted(const Visit& visit) const {
        for (std::size_t item = 0; item < offered_.size(); ++item) {
            if (accepted_[item]) {
                visit(offered_[item]);
            }
        }
    }

private:
    std::vector<Value> offered_;
    std::vector<bool> accepted_;  ///< one for each of the offered values
};
