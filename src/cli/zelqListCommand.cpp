#include <cstdint>
#include <iostream>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "cli/zelqCommandOutput.h"
#include "cli/zelqCommands.h"
#include "cli/zelqEntryQuery.h"
#include "output/zelqListingWriter.h"

namespace {

struct ListArguments {
    zelqEntryQuery query;
    std::string output = "-";
};

int list(const ListArguments& arguments) {
    zelqLogReport report(arguments.query.logs(), std::cerr);
    zelqCommandOutput output(arguments.output, report.identities());
    std::unique_ptr<zelqListingWriter> writer;
    std::uint64_t count = 0;
    zelqEntryRequest request = report.request();
    request.waiting = [&writer] {
        if (writer != nullptr) {
            writer->flush();
        }
    };
    arguments.query.read(request, {.output = arguments.output}, [&](const zelqEntry& entry, bool) {
        if (writer == nullptr) {
            writer = std::make_unique<zelqListingWriter>(arguments.query.locale(), output.open());
        }
        ++count;
        return writer->add(entry);
    });
    if (writer != nullptr) {
        output.complete(writer->flush());
    }
    return arguments.query.exitStatus(report, count);
}

}  // namespace

void zelqCommands::addList(CLI::App& program, int& exitStatus) {
    const auto arguments = std::make_shared<ListArguments>();
    CLI::App* const command = program.add_subcommand(
        "list", "Write logs as text, as \"Write log to disk\" writes them when they are merged.");
    zelqCommandOutput::addOption(*command, arguments->output);
    arguments->query.addTo(*command);
    command->footer(
        "Examples:\n"
        "  raslog list -o text.txt host1.log host2.log\n"
        "  raslog list --type error --from 14:00 --to 14:10 host1.log | less");
    command->callback([arguments, &exitStatus] { exitStatus = list(*arguments); });
}
