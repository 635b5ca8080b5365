#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// A text of a log, in two pieces of the log's memory: texts of successive entries may share their
/// end, which is then kept once. Valid as long as the log.
struct zelqText {
    std::string_view start;
    std::string_view end{};  ///< mostly empty

    [[nodiscard]] std::size_t size() const noexcept { return start.size() + end.size(); }
    [[nodiscard]] std::string string() const {
        std::string whole;
        appendTo(whole);
        return whole;
    }
    void appendTo(std::string& text) const { text.append(start).append(end); }

    /// Two texts of one log with the same key are equal. Most equal ones have the same key, but
    /// not all. Null for a text that is not kept: nothing can be remembered by its place.
    [[nodiscard]] const char* key() const noexcept {
        return start.empty() && !end.empty() ? nullptr : start.data();
    }

    [[nodiscard]] bool operator==(std::string_view text) const noexcept {
        return text.size() == size() && text.starts_with(start) && text.ends_with(end);
    }
};
