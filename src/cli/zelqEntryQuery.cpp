#include "cli/zelqEntryQuery.h"

#include <algorithm>
#include <utility>

#include <CLI/CLI.hpp>

#include "cli/zelqArguments.h"
#include "cli/zelqCommands.h"
#include "cli/zelqProgress.h"

void zelqEntryQuery::addTo(CLI::App& command) {
    command.add_option("logs", logs_, "The logs, - for standard input")
        ->required()
        ->type_name("LOG");
    options_.addTo(command);
}

void zelqEntryQuery::addOrder(CLI::App& command) {
    order_ = "time";
    command
        .add_option("--order", order_,
                    "Order of the entries: by time, all logs as one; or as they stand in the "
                    "files, one log after another, which needs only one reading: --order file")
        ->check(CLI::IsMember({"time", "file"}))
        ->capture_default_str();
    command.add_option("-n,--first", first_, "Only the first of those that are selected: -n 10")
        ->check(zelqArguments::number(1))
        ->type_name("NUMBER");
}

void zelqEntryQuery::read(zelqEntryRequest request, const Reading& reading,
                          const Visit& visit) const {
    zelqSelection selection = options_.selection(locale_);
    const bool isEverything = selection.isEverything();
    const bool isByTime = order_ == "time";
    zelqProgress progress(request.names, reading.output, isByTime);
    request.surveying = [&progress](std::size_t log, std::uint64_t offset) {
        progress.at(log, offset);
    };
    const auto visitEntry = [&](const zelqEntry& entry) {
        progress.passed(entry);
        const bool isSelected = isEverything || selection.accepts(entry.record());
        return (!isSelected && !reading.all) || visit(entry, isSelected);
    };
    if (isByTime) {
        zelqEntryReader::readInTimeOrder(request, visitEntry);
    } else {
        zelqEntryReader::readInFileOrder(request, visitEntry);
    }
}

int zelqEntryQuery::exitStatus(const zelqLogReport& report, std::uint64_t count) const {
    const bool isNothing = count == 0 && !options_.selection(locale_).isEverything();
    return std::max(report.exitStatus(), isNothing ? zelqCommands::kNothing : 0);
}
