#include <algorithm>
#include <cstdint>
#include <iostream>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "cli/zelqCommands.h"
#include "cli/zelqEntryQuery.h"
#include "cli/zelqTextOutput.h"
#include "log/zelqEntryCopy.h"

namespace {

struct ExtractArguments {
    zelqEntryQuery query;
    std::string output;
};

/// Writes the selected entries as a log. Without any, no file is made.
int extract(const ExtractArguments& arguments) {
    zelqLogReport report(arguments.query.logs(), std::cerr);
    zelqCommandOutput output(arguments.output, report.identities());
    zelqTextOutput log(output);
    std::uint64_t count = 0;
    int status = 0;
    arguments.query.read(
        log.request(report), {.output = arguments.output}, [&](const zelqEntry& entry, bool) {
            if (zelqEntryCopy::append(entry, log.text()) == zelqEntryCopy::Form::TooLong) {
                zelqCommands::writeMessage(
                    "raslog: " + report.names()[entry.input] + ": entry " +
                    std::to_string(entry.place.number) +
                    " is too long to be written with the whole of its header; it is as it stands");
                status = zelqCommands::kDamaged;
            }
            return ++count < arguments.query.first() && log.flushIfLarge();
        });
    if (count > 0) {
        log.complete();
    }
    return std::max(status, arguments.query.exitStatus(report, count));
}

}  // namespace

void zelqCommands::addExtract(CLI::App& program, int& exitStatus) {
    const auto arguments = std::make_shared<ExtractArguments>();
    CLI::App* const command = program.add_subcommand(
        "extract", "Write entries as a new log, byte for byte, in the order of time.");
    zelqCommandOutput::addOption(*command, arguments->output);
    arguments->query.addOrder(*command);
    arguments->query.addTo(*command);
    command->footer(
        "Examples:\n"
        "  raslog extract -o errors.log --type error host1.log host2.log\n"
        "  raslog extract -o - --from 2026-11-21T14:00 --to 2026-11-21T14:10 *.log | raslog rows "
        "-");
    command->callback([arguments, &exitStatus] { exitStatus = extract(*arguments); });
}
