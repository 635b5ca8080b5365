#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "cli/zelqCommands.h"
#include "cli/zelqFindingLines.h"
#include "log/zelqLogReader.h"
#include "output/zelqTerminalText.h"

namespace {

std::string counted(std::uint64_t count, const char* one, const char* several) {
    return std::to_string(count) + ' ' + (count == 1 ? one : several);
}

std::string counts(std::uint64_t entries, std::uint64_t findings) {
    return counted(entries, "entry", "entries") + ", " + counted(findings, "finding", "findings");
}

int check(const std::vector<std::string>& logs, bool all) {
    int status = 0;
    std::size_t logsRead = 0;
    std::uint64_t allEntries = 0;
    std::uint64_t allFindings = 0;
    for (const std::string& name : logs) {
        zelqFindingLines lines(std::cout, name,
                               all ? zelqFindingLines::kAll : zelqFindingLines::kMost);
        const zelqReadResult result =
            zelqLogReader::read({.fileName = name, .findings = lines.sink()});
        const std::uint64_t findings = lines.finish();
        if (!result.status.ok()) {
            zelqCommands::writeMessage("raslog: " + name + ": " + result.status.text);
            status = zelqCommands::kCannotDo;
            continue;
        }
        std::cout << zelqTerminalText::escaped(name) << ": " << counts(result.log->size(), findings)
                  << '\n';
        status = std::max(status, findings == 0 ? 0 : zelqCommands::kDamaged);
        ++logsRead;
        allEntries += result.log->size();
        allFindings += findings;
    }
    if (logs.size() > 1) {
        std::cout << logsRead << " of " << logs.size()
                  << " logs read: " << counts(allEntries, allFindings) << '\n';
    }
    if (!std::cout.flush()) {
        throw std::runtime_error("standard output cannot be written");
    }
    return status;
}

}  // namespace

void zelqCommands::addCheck(CLI::App& program, int& exitStatus) {
    const auto logs = std::make_shared<std::vector<std::string>>();
    CLI::App* const command = program.add_subcommand(
        "check",
        "Print what is damaged in logs, where, and how it is read. The exit status is 0 if nothing "
        "is, 1 if something is, 2 if a log cannot be read.");
    command->add_option("logs", *logs, "The logs")->required()->type_name("LOG");
    const auto all = std::make_shared<bool>(false);
    command->add_flag("--all", *all, "Print all findings of a log, not the first 1000 only");
    command->callback([logs, all, &exitStatus] { exitStatus = check(*logs, *all); });
}
