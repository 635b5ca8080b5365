#include <array>
#include <exception>
#include <iostream>
#include <sstream>

#include <CLI/CLI.hpp>

#include "cli/zelqCommands.h"
#include "output/zelqOutputFile.h"

#include "version/zelqVersion.h"

namespace {

constexpr std::array kCommands{
    zelqCommands::addCheck,
    zelqCommands::addList,
    zelqCommands::addSample,
};

int run(int argc, char** argv) {
    int exitStatus = 0;
    CLI::App program("Works on RAS logs from the shell.", "raslog");
    program.set_version_flag("--version", "raslog " + zelqVersion::text());
    program.require_subcommand(1);
    for (const auto addCommand : kCommands) {
        addCommand(program, exitStatus);
    }
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        std::ostringstream message;
        const int status = program.exit(error, std::cout, message);
        zelqCommands::writeMessage(message.str(), true);
        return status == 0 ? 0 : zelqCommands::kCannotDo;
    }
    return exitStatus;
}

}  // namespace

int main(int argc, char** argv) {
    zelqOutputFile::removeOnSignals();
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        zelqCommands::writeMessage(std::string("raslog: ") + error.what());
        return zelqCommands::kCannotDo;
    }
}
