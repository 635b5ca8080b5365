#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "cli/zelqArguments.h"
#include "cli/zelqCommands.h"
#include "cli/zelqEntryQuery.h"
#include "cli/zelqRowOutput.h"
#include "log/zelqUtf8.h"
#include "output/zelqTerminalText.h"

namespace {

/// Rows that are kept back are kept in memory.
constexpr std::uint64_t kMostTail = 100'000;
constexpr std::uint64_t kMostAround = 10'000;

struct RowsArguments {
    zelqEntryQuery query;
    std::vector<std::string> columns;
    std::string output = "-";
    std::string color = "auto";
    zelqRowOutput::Options rows{};
    bool noHeader = false;
    bool withLog = false;
    bool count = false;
};

/// As https://no-color.org asks for it; a terminal without a name or a dumb one knows no colours.
bool wantsColor(const std::string& option, bool isTerminal) {
    const auto variable = [](const char* name) {
        const char* const value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): no threads
        return std::string_view(value != nullptr ? value : "");
    };
    return option == "always" || (option == "auto" && isTerminal && variable("NO_COLOR").empty() &&
                                  !variable("TERM").empty() && variable("TERM") != "dumb");
}

zelqRowWriter::Options writerOptions(const RowsArguments& arguments, const zelqLogReport& report,
                                     bool isTerminal) {
    zelqRowWriter::Options options{.withPlace = arguments.withLog,
                                   .color = wantsColor(arguments.color, isTerminal)};
    if (!arguments.columns.empty()) {
        options.columns.clear();
        for (const std::string& name : arguments.columns) {
            options.columns.push_back(zelqRecordCells::named(name).value());
        }
    }
    for (const std::string& name : report.names()) {
        options.logWidth =
            std::max(options.logWidth, zelqUtf8::length(zelqTerminalText::escaped(name)));
    }
    return options;
}

int countRows(const RowsArguments& arguments, zelqLogReport& report, zelqTextOutput& text) {
    std::uint64_t count = 0;
    arguments.query.read(report.request(), {},
                         [&](const zelqEntry&, bool) { return ++count < arguments.query.first(); });
    text.text() = std::to_string(count) + '\n';
    text.complete();
    return arguments.query.exitStatus(report, count);
}

int writeRows(const RowsArguments& arguments) {
    zelqLogReport report(arguments.query.logs(), std::cerr);
    zelqCommandOutput output(arguments.output, report.identities());
    zelqTextOutput text(output);
    if (arguments.count) {
        return countRows(arguments, report, text);
    }
    zelqRowWriter writer(arguments.query.locale(),
                         writerOptions(arguments, report, output.open().isTerminal()));
    zelqRowOutput::Options options = arguments.rows;
    options.header = !arguments.noHeader;
    options.first = arguments.query.first();
    zelqRowOutput rows(writer, text, options);
    arguments.query.read(text.request(report),
                         {.output = arguments.output, .all = options.around > 0},
                         [&](const zelqEntry& entry, bool isSelected) {
                             return rows.take({.record = entry.record(),
                                               .data = entry.data(),
                                               .place = entry.place,
                                               .log = report.names()[entry.input]},
                                              isSelected);
                         });
    rows.finish();
    text.complete();
    return arguments.query.exitStatus(report, rows.count());
}

std::vector<std::string> columnNames() {
    std::vector<std::string> names;
    names.reserve(zelqRecordCells::kColumns.size());
    for (const zelqColumn column : zelqRecordCells::kColumns) {
        names.emplace_back(zelqRecordCells::name(column));
    }
    return names;
}

void addRowOptions(CLI::App& command, RowsArguments& arguments) {
    command
        .add_option("--columns", arguments.columns,
                    "Which columns, in this order: --columns time,pid,function")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(CLI::IsMember(columnNames()))
        ->type_name("COLUMN,...");
    command.add_flag("--no-header", arguments.noHeader, "Without the line of headings");
    command.add_flag("--with-log", arguments.withLog,
                     "With the log, the number of the entry in it and its offset in bytes");
    command
        .add_option("--color", arguments.color,
                    "Types in colours: auto is on a terminal, unless NO_COLOR is set")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->capture_default_str();
    CLI::Option* const count =
        command.add_flag("--count", arguments.count, "Print only how many entries there are");
    CLI::Option* const tail =
        command.add_option("--tail", arguments.rows.tail, "Only the last of them: --tail 10")
            ->check(zelqArguments::number(1, kMostTail))
            ->type_name("NUMBER");
    command
        .add_option("--context", arguments.rows.around,
                    "So many rows before and after each one, which is marked by >: --context 3")
        ->check(zelqArguments::number(1, kMostAround))
        ->type_name("NUMBER")
        ->excludes(count)
        ->excludes(tail);
    tail->excludes(count);
    tail->excludes(command.get_option("--first"));
}

}  // namespace

void zelqCommands::addRows(CLI::App& program, int& exitStatus) {
    const auto arguments = std::make_shared<RowsArguments>();
    CLI::App* const command =
        program.add_subcommand("rows", "Print entries as the window shows them, one a line.");
    zelqCommandOutput::addOption(*command, arguments->output);
    arguments->query.addOrder(*command);
    addRowOptions(*command, *arguments);
    arguments->query.addTo(*command);
    command->footer(
        "Examples:\n"
        "  raslog rows host1.log | less -S\n"
        "  raslog rows --type error --columns date,time,pid,major,function host1.log\n"
        "  raslog rows --with-log --from 14:00 --to 14:10 host*.log\n"
        "  raslog rows --match timeout -i --context 3 host1.log\n"
        "  raslog rows --color always --tail 100 host1.log | less -R\n"
        "  raslog rows --no-header --columns pid --type error host1.log | sort | uniq -c\n"
        "  raslog rows --count --function 'Open*' --invert host1.log");
    command->callback([arguments, &exitStatus] { exitStatus = writeRows(*arguments); });
}
