#include <cstdint>
#include <iostream>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "cli/zelqCommands.h"
#include "cli/zelqEntryQuery.h"
#include "cli/zelqTextOutput.h"
#include "output/zelqCsv.h"
#include "output/zelqJsonLines.h"

namespace {

struct ExportArguments {
    zelqEntryQuery query;
    std::string format;
    std::string output = "-";
    bool data = false;
    bool csvSafe = false;
};

std::unique_ptr<zelqEntryWriter> writerOf(const ExportArguments& arguments, bool isTerminal) {
    if (arguments.format == "jsonl") {
        return std::make_unique<zelqJsonLines>(
            zelqJsonLines::Options{.data = arguments.data, .ascii = isTerminal});
    }
    return std::make_unique<zelqCsv>(zelqCsv::Options{
        .data = arguments.data, .safe = arguments.csvSafe, .forTerminal = isTerminal});
}

int exportEntries(const ExportArguments& arguments) {
    zelqLogReport report(arguments.query.logs(), std::cerr);
    zelqCommandOutput output(arguments.output, report.identities());
    zelqTextOutput text(output);
    const auto writer = writerOf(arguments, output.open().isTerminal());
    writer->appendHeader(text.text());
    std::uint64_t count = 0;
    arguments.query.read(text.request(report), {.output = arguments.output},
                         [&](const zelqEntry& entry, bool) {
                             writer->append({.record = entry.record(),
                                             .data = entry.data(),
                                             .place = entry.place,
                                             .log = report.names()[entry.input]},
                                            text.text());
                             return ++count < arguments.query.first() && text.flushIfLarge();
                         });
    text.complete();
    return arguments.query.exitStatus(report, count);
}

}  // namespace

void zelqCommands::addExport(CLI::App& program, int& exitStatus) {
    const auto arguments = std::make_shared<ExportArguments>();
    CLI::App* const command =
        program.add_subcommand("export", "Write entries for other programs, as JSON Lines or CSV.");
    command->add_option("-f,--format", arguments->format, "jsonl: an object a line; csv: RFC 4180")
        ->required()
        ->check(CLI::IsMember({"jsonl", "csv"}));
    zelqCommandOutput::addOption(*command, arguments->output);
    command->add_flag("--data", arguments->data,
                      "With the blocks of expansion data: their addresses and bytes");
    command->add_flag("--csv-safe", arguments->csvSafe,
                      "In CSV, put ' before a text that a spreadsheet would take for a formula");
    arguments->query.addOrder(*command);
    arguments->query.addTo(*command);
    command->footer(
        "Examples:\n"
        "  raslog export --format jsonl host1.log | jq -r '[.time, .function] | @tsv'\n"
        "  raslog export --format csv --csv-safe --type error -o errors.csv *.log\n"
        "  raslog export --format jsonl --data --pid 4711 --from 14:00 --to 14:10 host1.log");
    command->callback([arguments, &exitStatus] { exitStatus = exportEntries(*arguments); });
}
