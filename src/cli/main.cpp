#include <algorithm>
#include <array>
#include <csignal>
#include <exception>
#include <new>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>
#include <fcntl.h>
#include <unistd.h>

#include "cli/zelqCommands.h"
#include "cli/zelqSuggestion.h"
#include "output/zelqOutputFile.h"

#include "version/zelqVersion.h"

namespace {

constexpr std::array kCommands{
    zelqCommands::addSummary, zelqCommands::addRows,       zelqCommands::addExport,
    zelqCommands::addExtract, zelqCommands::addList,       zelqCommands::addCheck,
    zelqCommands::addSample,  zelqCommands::addCompletion,
};

constexpr std::string_view kFooter =
    "raslog COMMAND --help describes a command, with examples.\n"
    "\n"
    "Exit status:\n"
    "  0  all was done\n"
    "  1  all was done, but a log is damaged or no entry is as asked for\n"
    "  2  something could not be done; a message on standard error says what";

/// The command line, the last argument first. The parser would take what follows "--match=" for the
/// value; it knows empty values as arguments of their own only.
std::vector<std::string> argumentsOf(int argc, char** argv) {
    std::vector<std::string> arguments;
    bool areLogs = false;
    for (int i = 1; i < argc; ++i) {
        std::string argument = argv[i];
        areLogs = areLogs || argument == "--";
        const bool isEmptyValue =
            !areLogs && argument.starts_with("--") && argument.find('=') == argument.size() - 1;
        if (isEmptyValue) {
            argument.pop_back();
        }
        arguments.push_back(std::move(argument));
        if (isEmptyValue) {
            arguments.emplace_back();
        }
    }
    std::ranges::reverse(arguments);
    return arguments;
}

/// Opens standard streams that are closed, in a way in which using them fails. A log or an output
/// would be opened in their place, and messages written into it.
void keepStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) < 0) {
            static_cast<void>(::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY));
        }
    }
}

int run(int argc, char** argv) {
    int exitStatus = 0;
    CLI::App program("Works on RAS logs from the shell.", "raslog");
    program.set_version_flag("--version", "raslog " + zelqVersion::text());
    program.require_subcommand(1);
    program.footer(std::string(kFooter));
    for (const auto addCommand : kCommands) {
        addCommand(program, exitStatus);
    }
    try {
        program.parse(argumentsOf(argc, argv));
    } catch (const CLI::ParseError& error) {
        std::ostringstream help;
        std::ostringstream message;
        if (program.exit(error, help, message) == 0) {
            zelqCommands::writeOutput(
                "-", {}, [&help](zelqOutputFile& output) { return output.write(help.str()); });
            return 0;
        }
        if (std::any_of(argv + 1, argv + argc, zelqCommands::messagesGoTo)) {
            zelqCommands::endMessages();
        }
        const std::string suggestion = zelqSuggestion::of(program);
        zelqCommands::writeMessage(suggestion.empty() ? message.str() : suggestion, true);
        return zelqCommands::kCannotDo;
    }
    return exitStatus;
}

}  // namespace

int main(int argc, char** argv) {
    keepStandardStreams();
    std::signal(SIGPIPE, SIG_IGN);  // NOLINT: a closed pipe is then an error of the write
    zelqOutputFile::removeOnSignals();
    try {
        return run(argc, argv);
    } catch (const std::bad_alloc&) {
        zelqCommands::writeMessage("raslog: not enough memory");
        return zelqCommands::kCannotDo;
    } catch (const std::exception& error) {
        zelqCommands::writeMessage(std::string("raslog: ") + error.what());
        return zelqCommands::kCannotDo;
    }
}
