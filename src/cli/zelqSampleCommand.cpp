#include <charconv>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>

#include <CLI/CLI.hpp>

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
    std::string output;
};

/// Stricter than the parser's own reading of numbers, which takes 010 for 8 and -1 for a huge one.
std::string checkNumber(const std::string& text) {
    std::uint64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    const bool decimal =
        result.ec == std::errc{} && result.ptr == end && (text.front() != '0' || text.size() == 1);
    return decimal ? std::string{} : "'" + text + "' is not a plain decimal number of 64 bits";
}

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
        zelqSampleLog log(arguments.seed, i, start);
        zelqCommands::writeOutput(
            arguments.logs > 1 ? numberedName(arguments.output, i + 1, arguments.logs)
                               : arguments.output,
            {}, [&](zelqOutputFile& output) { return log.write(output, arguments.count); });
    }
}

}  // namespace

void zelqCommands::addSample(CLI::App& program, int& /*exitStatus*/) {
    const auto arguments = std::make_shared<SampleArguments>();
    const CLI::Validator number(checkNumber, "");
    CLI::App* const command = program.add_subcommand(
        "sample", "Write made-up logs for trying out and measuring; equal arguments, equal bytes.");
    command->add_option("-n,--entries", arguments->count, "Entries of each log")
        ->required()
        ->check(number)
        ->check(CLI::Range(std::uint64_t{0}, kMostEntries));
    command->add_option("--seed", arguments->seed, "Which of the possible logs")
        ->check(number)
        ->capture_default_str();
    command->add_option("--start", arguments->start, "Date, or date and time, of the first entry")
        ->check(CLI::Validator(checkStart, "TIME"))
        ->capture_default_str();
    command->add_option("--logs", arguments->logs, "Number of logs; FILE gets -1, -2 ... if over 1")
        ->check(number)
        ->check(CLI::Range(1U, kMostLogs))
        ->capture_default_str();
    command->add_option("-o,--output", arguments->output, "File to write, - for standard output")
        ->required()
        ->type_name("FILE");
    command->callback([arguments] { writeSamples(*arguments); });
}
