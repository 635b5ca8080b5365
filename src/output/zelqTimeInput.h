#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "log/zelqTimestamp.h"
#include "output/zelqLocaleText.h"

/// Reads a time as a user types it, in the form that the columns of the table have or a simpler
/// one.
class zelqTimeInput {
public:
    struct Moment {
        std::optional<zelqDate> date{};
        zelqTime time{};
    };

    explicit zelqTimeInput(const zelqLocaleText& locale);

    /// "14:05", "14:05:30" or a time as the locale writes it, alone or with a date before or after
    /// it: three numbers in the locale's order, or year, month and day. `text`: in UTF-8. Nothing
    /// if it is none of these.
    [[nodiscard]] std::optional<Moment> read(std::string_view text) const;

private:
    /// The order of the numbers of a date.
    enum class Part { Year, Month, Day };

    [[nodiscard]] std::optional<zelqDate> dateOf(
        const std::vector<std::string_view>& numbers) const;
    [[nodiscard]] bool isMorning(std::string_view word) const;
    [[nodiscard]] bool isAfternoon(std::string_view word) const;

    std::array<Part, 3> order_{};
    // How the locale marks the halves of the day; empty if it does not.
    std::string morning_;
    std::string afternoon_;
    std::string units_;  ///< what else it writes in a time, such as signs for hours and minutes
};
