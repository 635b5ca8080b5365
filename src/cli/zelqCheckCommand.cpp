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
#include "log/zelqLogReader.h"

namespace {

std::string counted(std::uint64_t count, const char* one, const char* several) {
    return std::to_string(count) + ' ' + (count == 1 ? one : several);
}

std::string counts(std::uint64_t entries, std::uint64_t findings) {
    return counted(entries, "entry", "entries") + ", " + counted(findings, "finding", "findings");
}

int check(const std::vector<std::string>& logs) {
    int status = 0;
    std::size_t logsRead = 0;
    std::uint64_t allEntries = 0;
    std::uint64_t allFindings = 0;
    for (const std::string& name : logs) {
        std::uint64_t findings = 0;
        const zelqReadResult result = zelqLogReader::read(
            {.fileName = name, .findings = writeFindings(std::cout, name, findings)});
        if (!result.status.ok()) {
            std::cerr << "raslog: " << name << ": " << result.status.text << '\n';
            status = kCannotDo;
            continue;
        }
        std::cout << name << ": " << counts(result.log->size(), findings) << '\n';
        status = std::max(status, findings == 0 ? 0 : kDamaged);
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

zelqFindingSink writeFindings(std::ostream& stream, const std::string& logName,
                              std::uint64_t& count) {
    return [&stream, &logName, &count](const zelqFinding& finding) {
        ++count;
        stream << logName << ": " << finding.text() << '\n';
    };
}

void addCheckCommand(CLI::App& program, int& exitStatus) {
    const auto logs = std::make_shared<std::vector<std::string>>();
    CLI::App* const command = program.add_subcommand(
        "check",
        "Print what is damaged in logs, where, and how it is read. The exit status is 0 if nothing "
        "is, 1 if something is, 2 if a log cannot be read.");
    command->add_option("logs", *logs, "The logs")->required()->type_name("LOG");
    command->callback([logs, &exitStatus] { exitStatus = check(*logs); });
}
