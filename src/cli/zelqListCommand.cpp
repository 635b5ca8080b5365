#include <cstdint>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "cli/zelqCommands.h"
#include "cli/zelqFindingLines.h"
#include "log/zelqLogReader.h"
#include "output/zelqListing.h"

namespace {

struct ListArguments {
    std::vector<std::string> logs;
    std::string output = "-";
};

/// Reads a log into the next slot, as the window merges it: one that is there already stays as it
/// is. True if it was damaged.
bool merge(zelqLogCollection& records, const std::string& name) {
    if (!records.isNotLoaded(name)) {
        return false;
    }
    const int slot = records.slotFor(name);
    if (slot == zelqLogCollection::kNoSlot) {
        throw std::runtime_error(name + ": there is no slot for it");
    }
    zelqFindingLines findings(std::cerr, name);
    zelqReadResult result = zelqLogReader::read(
        {.fileName = name,
         .logSlot = static_cast<std::uint16_t>(slot),
         .findings = [&findings](const zelqFinding& finding) { findings.add(finding); }});
    findings.finish();
    if (!result.status.ok()) {
        throw std::runtime_error(name + ": " + result.status.text);
    }
    const bool isDamaged = result.findings != 0;
    records.append(std::move(result.log), name, slot);
    return isDamaged;
}

int list(const ListArguments& arguments) {
    zelqLogCollection records;
    std::vector<zelqFileIdentity> inputs;
    bool damaged = false;
    for (const std::string& name : arguments.logs) {
        if (const auto identity = zelqFileIdentity::of(name)) {
            inputs.push_back(*identity);
        }
        damaged |= merge(records, name);
    }
    const int status = damaged ? zelqCommands::kDamaged : 0;
    if (records.size() == 0) {
        return status;  // where there is nothing to write no file is made either
    }
    zelqCommands::writeOutput(arguments.output, inputs, [&records](zelqOutputFile& output) {
        return zelqListing::write(records, zelqLocaleText(), output);
    });
    return status;
}

}  // namespace

void zelqCommands::addList(CLI::App& program, int& exitStatus) {
    const auto arguments = std::make_shared<ListArguments>();
    CLI::App* const command = program.add_subcommand(
        "list", "Write logs as text, as \"Write log to disk\" writes them when they are merged.");
    command->add_option("-o,--output", arguments->output, "File to write, - for standard output")
        ->capture_default_str()
        ->type_name("FILE");
    command->add_option("logs", arguments->logs, "The logs")->required()->type_name("LOG");
    command->callback([arguments, &exitStatus] { exitStatus = list(*arguments); });
}
