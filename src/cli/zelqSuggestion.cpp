#include "cli/zelqSuggestion.h"

#include <algorithm>
#include <numeric>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

namespace {

/// How many characters have to be changed, put in, left out or exchanged with their neighbour to
/// make one text of the other.
std::size_t distance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> before;
    std::vector<std::size_t> above(to.size() + 1);
    std::vector<std::size_t> current(to.size() + 1);
    std::iota(above.begin(), above.end(), std::size_t{0});
    for (std::size_t i = 1; i <= from.size(); ++i) {
        current[0] = i;
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const std::size_t change = from[i - 1] == to[j - 1] ? 0 : 1;
            current[j] = std::min({above[j] + 1, current[j - 1] + 1, above[j - 1] + change});
            if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1]) {
                current[j] = std::min(current[j], before[j - 2] + 1);
            }
        }
        before = above;
        std::swap(above, current);
    }
    return above[to.size()];
}

std::string nearest(std::string_view given, const std::vector<std::string>& known) {
    constexpr std::size_t kLongest = 64;  // of what anybody could have meant
    const auto nearer = [given](const std::string& left, const std::string& right) {
        return distance(given, left) < distance(given, right);
    };
    const auto found = std::min_element(known.begin(), known.end(), nearer);
    const bool isNear = found != known.end() && given.size() <= kLongest &&
                        (distance(given, *found) <= std::max<std::size_t>(2, given.size() / 3) ||
                         (given.size() > 2 && found->starts_with(given)));
    return isNear ? *found : std::string{};
}

std::vector<std::string> commandsOf(const CLI::App& program) {
    std::vector<std::string> names;
    for (const CLI::App* const command : program.get_subcommands({})) {
        names.push_back(command->get_name());
    }
    return names;
}

std::vector<std::string> optionsOf(const CLI::App& command) {
    std::vector<std::string> names;
    for (const CLI::Option* const option : command.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
        for (const std::string& name : option->get_snames()) {
            names.push_back("-" + name);
        }
    }
    return names;
}

}  // namespace

std::string zelqSuggestion::of(const CLI::App& program) {
    const std::vector<std::string> before = program.remaining();  // what no command follows yet
    const std::vector<std::string> unknown = program.remaining(true);
    if (unknown.empty()) {
        return {};
    }
    const std::string given = unknown[0].substr(0, unknown[0].find('='));
    const std::vector<CLI::App*> commands = program.get_subcommands();
    const bool isOption = given.starts_with('-') && given.size() > 1;
    if (!isOption && before.empty() && !commands.empty()) {
        return {};
    }
    const CLI::App& where = before.empty() && !commands.empty() ? *commands.back() : program;
    const std::string command = &where == &program ? "raslog" : "raslog " + where.get_name();
    std::string meant;
    if (isOption && !before.empty() && !commands.empty()) {
        meant = nearest(given, optionsOf(*commands.back()));
        meant.insert(0, meant.empty() ? "" : "raslog " + commands.back()->get_name() + ' ');
    }
    if (meant.empty()) {
        meant = nearest(given, isOption ? optionsOf(where) : commandsOf(program));
    }
    return command + " has no " + (isOption ? "option" : "command") + " '" + given + "'" +
           (meant.empty() ? "" : "; did you mean '" + meant + "'?") + "\nRun " + command +
           " --help for more information.\n";
}
