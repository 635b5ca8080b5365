#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "cli/zelqCommandOutput.h"
#include "cli/zelqCommands.h"
#include "cli/zelqLogReport.h"
#include "output/zelqListingWriter.h"

namespace {

struct ListArguments {
    std::vector<std::string> logs;
    std::string output = "-";
};

int list(const ListArguments& arguments) {
    zelqLogReport report(zelqLogReport::distinct(arguments.logs), std::cerr);
    zelqCommandOutput output(arguments.output, report.identities());
    const zelqLocaleText locale;
    std::unique_ptr<zelqListingWriter> writer;
    zelqEntryRequest request = report.request();
    request.waiting = [&writer] {
        if (writer != nullptr) {
            writer->flush();
        }
    };
    zelqEntryReader::readInFileOrder(request, [&](const zelqEntry& entry) {
        if (writer == nullptr) {
            writer = std::make_unique<zelqListingWriter>(locale, output.open());
        }
        return writer->add(entry);
    });
    if (writer != nullptr) {
        output.complete(writer->flush());
    }
    return report.exitStatus();
}

}  // namespace

void zelqCommands::addList(CLI::App& program, int& exitStatus) {
    const auto arguments = std::make_shared<ListArguments>();
    CLI::App* const command = program.add_subcommand(
        "list", "Write logs as text, as \"Write log to disk\" writes them when they are merged.");
    command->add_option("-o,--output", arguments->output, "File to write, - for standard output")
        ->capture_default_str()
        ->type_name("FILE");
    command->add_option("logs", arguments->logs, "The logs, - for standard input")
        ->required()
        ->type_name("LOG");
    command->callback([arguments, &exitStatus] { exitStatus = list(*arguments); });
}
