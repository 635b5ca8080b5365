#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "cli/zelqCommandOutput.h"
#include "cli/zelqCommands.h"
#include "cli/zelqLogReport.h"
#include "cli/zelqProgress.h"
#include "cli/zelqTextOutput.h"
#include "output/zelqTerminalText.h"

namespace {

std::string counted(std::uint64_t count, const char* one, const char* several) {
    return std::to_string(count) + ' ' + (count == 1 ? one : several);
}

std::string counts(std::uint64_t entries, std::uint64_t findings) {
    return counted(entries, "entry", "entries") + ", " + counted(findings, "finding", "findings");
}

int check(const std::vector<std::string>& logs, bool all) {
    std::ostringstream findings;
    zelqLogReport report(logs, findings, all ? zelqFindingLines::kAll : zelqFindingLines::kMost);
    zelqCommandOutput output("-", report.identities());
    const bool isTerminal = output.open().isTerminal();
    zelqTextOutput text(output);
    const auto take = [&](const std::string& line) {
        text.text() += findings.view();
        text.text() += line;
        findings.str({});
        if (isTerminal) {
            text.flush();
        }
    };
    std::size_t logsRead = 0;
    zelqInputOutcome sum;
    zelqEntryRequest request = text.request(report);
    request.finding = [&, reported = request.finding](std::size_t log, const zelqFinding& finding) {
        reported(log, finding);
        take({});
    };
    request.ended = [&, reported = request.ended](std::size_t log,
                                                  const zelqInputOutcome& outcome) {
        reported(log, outcome);
        take({});
        if (outcome.status.ok()) {
            take(zelqTerminalText::escaped(logs[log]) + ": " +
                 counts(outcome.entries, outcome.findings) + '\n');
            ++logsRead;
            sum.entries += outcome.entries;
            sum.findings += outcome.findings;
        }
    };
    zelqProgress progress(logs, {});
    zelqEntryReader::readInFileOrder(request, [&](const zelqEntry& entry) {
        progress.passed(entry);
        return text.flushIfLarge();
    });
    if (logs.size() > 1) {
        take(std::to_string(logsRead) + " of " + std::to_string(logs.size()) +
             " logs read: " + counts(sum.entries, sum.findings) + '\n');
    }
    text.complete();
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
