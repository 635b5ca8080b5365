#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

/// Keeps each distinct text of one log once. Texts stay where they are until the table goes.
class zelqTextTable {
public:
    /// The table's own copy of the text. Entries tend to repeat the text of the entry before.
    const std::string* intern(std::string_view text) {
        if (last_ == nullptr || *last_ != text) {
            const auto found = texts_.find(text);
            last_ = found != texts_.end() ? &*found : &*texts_.emplace(text).first;
        }
        return last_;
    }

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const noexcept {
            return std::hash<std::string_view>{}(text);
        }
    };

    std::unordered_set<std::string, Hash, std::equal_to<>> texts_;
    const std::string* last_ = nullptr;
};
