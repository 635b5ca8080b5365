#include "cli/zelqArguments.h"

#include <charconv>
#include <string>

#include <CLI/CLI.hpp>

CLI::Validator zelqArguments::number(std::uint64_t least, std::uint64_t most) {
    return {[least, most](const std::string& text) -> std::string {
                std::uint64_t value = 0;
                const char* const end = text.data() + text.size();
                const auto result = std::from_chars(text.data(), end, value);
                if (result.ec != std::errc{} || result.ptr != end ||
                    (text.front() == '0' && text.size() > 1)) {
                    return "'" + text + "' is not a plain decimal number of 64 bits";
                }
                return value < least  ? text + " is less than " + std::to_string(least)
                       : value > most ? text + " is more than " + std::to_string(most)
                                      : std::string{};
            },
            ""};
}
