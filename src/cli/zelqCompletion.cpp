#include "cli/zelqCompletion.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

namespace {

struct Option {
    std::vector<std::string> names;  ///< with their hyphens
    std::string description;
    bool takesValue;
    bool takesFile;
    bool isList;          ///< values with commas between them
    std::string choices;  ///< separated by blanks; empty if the value is free
};

struct Command {
    std::string name;
    std::string description;
    std::vector<Option> options;
    std::string choices;  ///< of its argument; empty if that is files
};

std::string choicesOf(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    const std::size_t start = type.find('{');
    std::string choices;
    if (start != std::string::npos) {
        choices = type.substr(start + 1, type.find('}') - start - 1);
        std::ranges::replace(choices, ',', ' ');
    }
    return choices;
}

/// The first sentence of a text.
std::string startOf(const std::string& text) {
    return text.substr(0, text.find(". "));
}

Command commandOf(const CLI::App& app) {
    Command command{app.get_name(), startOf(app.get_description()), {}, {}};
    for (const CLI::Option* const option : app.get_options()) {
        std::vector<std::string> names;
        for (const std::string& name : option->get_snames()) {
            names.push_back("-" + name);
        }
        for (const std::string& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
        if (names.empty()) {
            command.choices = choicesOf(*option);
            continue;
        }
        command.options.push_back({std::move(names), startOf(option->get_description()),
                                   option->get_items_expected_max() > 0,
                                   option->get_type_name() == "FILE",
                                   option->get_delimiter() == ',', choicesOf(*option)});
    }
    return command;
}

std::vector<Command> commandsOf(const CLI::App& program) {
    std::vector<Command> commands;
    for (const CLI::App* const app : program.get_subcommands({})) {
        commands.push_back(commandOf(*app));
    }
    return commands;
}

/// `text` with `before` put before each of `characters`.
std::string escaped(std::string_view text, std::string_view characters, std::string_view before) {
    std::string result;
    for (const char character : text) {
        if (characters.find(character) != characters.npos) {
            result += before;
        }
        result += character;
    }
    return result;
}

/// For a shell that knows no escape in a text between apostrophes.
std::string inApostrophes(std::string_view text) {
    std::string result = "'";
    for (const char character : text) {
        result += character == '\'' ? std::string("'\\''") : std::string(1, character);
    }
    return result + "'";
}

std::string names(const std::vector<Command>& commands, std::string_view separator) {
    std::string text;
    for (const Command& command : commands) {
        text += (text.empty() ? "" : std::string(separator)) + command.name;
    }
    return text;
}

/// The beginning of the script for bash; the names of the commands follow.
constexpr const char* kBashWords =
    "# Completes raslog in bash; made by raslog completion bash.\n"
    "_raslog() {\n"
    "    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}\n"
    "    local command= files= word words=\n"
    "    for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n"
    "        case $word in\n"
    "            ";

/// What follows them; the patterns of options that take a value come next.
constexpr const char* kBashValues =
    "        esac\n"
    "    done\n"
    "    # Bash takes the = of --option=value for a word.\n"
    "    [[ $previous == = ]] && previous=${COMP_WORDS[COMP_CWORD - 2]}\n"
    "    [[ $current == = ]] && current=\n"
    "    # The last of values with commas between them is completed.\n"
    "    local last=${current##*,}\n"
    "    local before=${current%\"$last\"}\n"
    "    COMPREPLY=()\n"
    "    case $command:$previous in\n";

}  // namespace

std::string zelqCompletion::forBash(const CLI::App& program) {
    const std::vector<Command> commands = commandsOf(program);
    std::string text = std::string(kBashWords) + names(commands, "|") +
                       ") command=$word; break ;;\n" + kBashValues;
    std::string options = "        '') words='" + names(commands, " ") + " --help --version' ;;\n";
    for (const Command& command : commands) {
        std::string words;
        std::string typed;  // options whose value the user has to know
        for (const Option& option : command.options) {
            for (const std::string& name : option.names) {
                words += words.empty() ? name : " " + name;
                std::string pattern = command.name;
                pattern += ':' + name;
                if (!option.choices.empty()) {
                    text += "        " + pattern + ") COMPREPLY=($(compgen -W '" + option.choices;
                    text += option.isList ? R"(' -P "$before" -- "$last")); compopt -o nospace)"
                                          : R"(' -- "$current")))";
                    text += "; return ;;\n";
                } else if (option.takesFile) {
                    text += "        " + pattern + ") return ;;\n";
                } else if (option.takesValue) {
                    typed += (typed.empty() ? "" : "|") + pattern;
                }
            }
        }
        if (!typed.empty()) {
            text += "        " + typed + ") compopt +o default; return ;;\n";
        }
        options += "        " + command.name + ") words='" + words +
                   (command.choices.empty() ? "' files=1 ;;\n" : " " + command.choices + "' ;;\n");
    }
    return text +
           "    esac\n"
           "    case $command in\n" +
           options +
           "    esac\n"
           "    COMPREPLY=($(compgen -W \"$words\" -- \"$current\"))\n"
           "    [[ -n $files && $current != -* ]] && COMPREPLY=()\n"
           "    [[ -z $files ]] && compopt +o default\n"
           "}\n"
           "complete -o default -F _raslog raslog\n";
}

std::string zelqCompletion::forZsh(const CLI::App& program) {
    const auto described = [](const std::string& text) { return escaped(text, "[]:\\", "\\"); };
    const std::vector<Command> commands = commandsOf(program);
    std::string text =
        "#compdef raslog\n"
        "# Completes raslog in zsh; made by raslog completion zsh.\n"
        "_raslog() {\n"
        "    local curcontext=$curcontext state line\n"
        "    local -a commands\n"
        "    commands=(\n";
    std::string cases;
    for (const Command& command : commands) {
        text += "        " + inApostrophes(command.name + ":" + command.description) + "\n";
        cases += "                " + command.name + ") _arguments";
        for (const Option& option : command.options) {
            for (const std::string& name : option.names) {
                std::string argument = "*" + name;
                argument += option.takesValue && name.starts_with("--") ? "=[" : "[";
                argument += described(option.description) + "]";
                if (option.takesValue) {
                    argument += option.takesFile         ? ":file:_files"
                                : option.choices.empty() ? ":value: "
                                : option.isList ? ":values:_values -s , value " + option.choices
                                                : ":value:(" + option.choices + ")";
                }
                cases += " \\\n                    " + inApostrophes(argument);
            }
        }
        cases += " \\\n                    " +
                 (command.choices.empty() ? inApostrophes("*:log:_files")
                                          : inApostrophes("1:argument:(" + command.choices + ")")) +
                 " ;;\n";
    }
    return text +
           "    )\n"
           "    _arguments -C '--help[Print help]' '--version[Print the version]' \\\n"
           "        '1:command:->command' '*::argument:->argument'\n"
           "    case $state in\n"
           "        command) _describe command commands ;;\n"
           "        argument)\n"
           "            case $words[1] in\n" +
           cases +
           "            esac ;;\n"
           "    esac\n"
           "}\n"
           "if [[ $funcstack[1] == _raslog ]]; then\n"
           "    _raslog \"$@\"\n"
           "else\n"
           "    compdef _raslog raslog\n"
           "fi\n";
}

std::string zelqCompletion::forFish(const CLI::App& program) {
    const auto quotedForFish = [](const std::string& text) {
        return "'" + escaped(text, "'\\", "\\") + "'";
    };
    std::string text = "# Completes raslog in fish; made by raslog completion fish.\n";
    for (const Command& command : commandsOf(program)) {
        text += "complete -c raslog -n __fish_use_subcommand -f -a " + command.name + " -d " +
                quotedForFish(command.description) + "\n";
        const std::string start =
            "complete -c raslog -n '__fish_seen_subcommand_from " + command.name + "'";
        for (const Option& option : command.options) {
            text += start;
            for (const std::string& name : option.names) {
                text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
            }
            if (option.takesValue) {
                text += option.takesFile         ? " -r -F"
                        : option.choices.empty() ? " -x"
                        : option.isList ? " -x -a '(__fish_append , " + option.choices + ")'"
                                        : " -x -a " + quotedForFish(option.choices);
            }
            text += " -d " + quotedForFish(option.description) + "\n";
        }
        if (!command.choices.empty()) {
            text += start + " -f -a " + quotedForFish(command.choices) + "\n";
        }
    }
    return text;
}
