#include <cstddef>
#include <cstdint>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "cli/zelqCommands.h"
#include "cli/zelqLogReport.h"
#include "cli/zelqProgress.h"
#include "output/zelqOutputFile.h"
#include "output/zelqTerminalText.h"

namespace {

std::string counted(std::uint64_t count, const char* one, const char* several) {
    return std::to_string(count) + ' ' + (count == 1 ? one : several);
}

std::string counts(std::uint64_t entries, std::uint64_t findings) {
    return counted(entries, "entry", "entries") + ", " + counted(findings, "finding", "findings");
}

int check(const std::vector<std::string>& logs, bool all) {
    zelqLogReport report(logs, std::cout, all ? zelqFindingLines::kAll : zelqFindingLines::kMost);
    if (const zelqStatus output = zelqOutputFile::standardOutput(report.identities()).status();
        !output.ok()) {
        throw std::runtime_error("standard output: " + output.text);
    }
    std::size_t logsRead = 0;
    zelqInputOutcome sum;
    zelqEntryRequest request = report.request();
    request.waiting = [] { std::cout.flush(); };
    request.ended = [&, reported = request.ended](std::size_t log,
                                                  const zelqInputOutcome& outcome) {
        reported(log, outcome);
        if (outcome.status.ok()) {
            std::cout << zelqTerminalText::escaped(logs[log]) << ": "
                      << counts(outcome.entries, outcome.findings) << '\n';
            ++logsRead;
            sum.entries += outcome.entries;
            sum.findings += outcome.findings;
        }
    };
    zelqProgress progress(logs, {});
    zelqEntryReader::readInFileOrder(request, [&progress](const zelqEntry& entry) {
        progress.passed(entry);
        return true;
    });
    if (logs.size() > 1) {
        std::cout << logsRead << " of " << logs.size()
                  << " logs read: " << counts(sum.entries, sum.findings) << '\n';
    }
    if (!std::cout.flush()) {
        throw std::runtime_error("standard output cannot be written");
    }
    return report.exitStatus();
}

}  // namespace

void zelqCommands::addCheck(CLI::App& program, int& exitStatus) {
    const auto logs = std::make_shared<std::vector<std::string>>();
    CLI::App* const command = program.add_subcommand(
        "check",
        "Print what is damaged in logs, where, and how it is read. The exit status is 0 if nothing "
        "is, 1 if something is, 2 if a log cannot be read.");
    command->add_option("logs", *logs, "The logs, - for standard input")
        ->required()
        ->type_name("LOG");
    const auto all = std::make_shared<bool>(false);
    command->add_flag("--all", *all, "Print all findings of a log, not the first 1000 only");
    command->footer(
        "Examples:\n"
        "  raslog check host1.log host2.log\n"
        "  raslog check --all host1.log > findings.txt");
    command->callback([logs, all, &exitStatus] { exitStatus = check(*logs, *all); });
}
