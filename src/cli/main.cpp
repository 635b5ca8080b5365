#include <array>
#include <exception>
#include <iostream>
#include <new>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include <CLI/CLI.hpp>

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
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        std::ostringstream message;
        const int status = program.exit(error, std::cout, message);
        const std::string suggestion = status == 0 ? "" : zelqSuggestion::of(program);
        zelqCommands::writeMessage(suggestion.empty() ? message.str() : suggestion, true);
        if (status == 0 && !std::cout.flush()) {
            throw std::runtime_error("standard output cannot be written");
        }
        return status == 0 ? 0 : zelqCommands::kCannotDo;
    }
    return exitStatus;
}

}  // namespace

int main(int argc, char** argv) {
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
