#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include <CLI/CLI.hpp>

#include "cli/zelqArguments.h"
#include "cli/zelqCommandOutput.h"
#include "cli/zelqCommands.h"
#include "sample/zelqSampleLog.h"
#include "sample/zelqSampleTime.h"

namespace {

constexpr std::uint64_t kMostEntries = 1'000'000'000;
constexpr unsigned kMostLogs = 100;

struct SampleArguments {
    std::uint64_t count = 0;
    std::uint64_t seed = 1;
    std::string start = "2026-11-21T08:00:00";
    unsigned logs = 1;
    std::optional<std::size_t> data{};
    std::string output;
};

std::string checkStart(const std::string& text) {
    return zelqSampleTime::parse(text) ? std::string{}
                                       : "'" + text +
                                             "' is no date (2026-11-21) and no date and time "
                                             "(2026-11-21T08:00:00)";
}

/// "x.log" as "x-07.log", with as many digits as the last number has.
std::string numberedName(const std::string& name, unsigned number, unsigned last) {
    std::string digits = std::to_string(number);
    digits.insert(0, std::to_string(last).size() - digits.size(), '0');
    std::filesystem::path path(name);
    const std::string extension = path.extension().string();
    path.replace_filename(path.stem().string() + "-" + digits + extension);
    return path.string();
}

void writeSamples(const SampleArguments& arguments) {
    if (arguments.output == "-" && arguments.logs > 1) {
        throw std::invalid_argument("standard output takes one log only");
    }
    const zelqSampleTime::Time start = zelqSampleTime::parse(arguments.start).value();
    for (unsigned i = 0; i < arguments.logs; ++i) {
        zelqSampleLog log(arguments.seed, i, start, arguments.data);
        zelqCommands::writeOutput(
            arguments.logs > 1 ? numberedName(arguments.output, i + 1, arguments.logs)
                               : arguments.output,
            {}, [&](zelqOutputFile& output) { return log.write(output, arguments.count); });
    }
}

}  // namespace

void zelqCommands::addSample(CLI::App& program, int& /*exitStatus*/) {
    const auto arguments = std::make_shared<SampleArguments>();
    CLI::App* const command = program.add_subcommand(
        "sample", "Write made-up logs for trying out and measuring; equal arguments, equal bytes.");
    command->add_option("-n,--entries", arguments->count, "Entries of each log")
        ->required()
        ->check(zelqArguments::number(0, kMostEntries));
    command->add_option("--seed", arguments->seed, "Which of the possible logs")
        ->check(zelqArguments::number(0))
        ->capture_default_str();
    command->add_option("--start", arguments->start, "Date, or date and time, of the first entry")
        ->check(CLI::Validator(checkStart, "TIME"))
        ->capture_default_str();
    command->add_option("--data", arguments->data, "Bytes of data in each entry, 0 to 64000")
        ->check(zelqArguments::number(0, zelqSampleLog::kMostData))
        ->type_name("SIZE");
    command->add_option("--logs", arguments->logs, "Number of logs; FILE gets -1, -2 ... if over 1")
        ->check(zelqArguments::number(1, kMostLogs))
        ->capture_default_str();
    zelqCommandOutput::addOption(*command, arguments->output);
    command->footer(
        "Examples:\n"
        "  raslog sample -n 100000 -o some.log\n"
        "  raslog sample -n 1000 --logs 3 --seed 7 --start 2026-11-21T08:00:00 -o host.log\n"
        "  raslog sample -n 100 --data 64000 -o large.log");
    command->callback([arguments] { writeSamples(*arguments); });
}
