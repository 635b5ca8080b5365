#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "cli/zelqArguments.h"
#include "cli/zelqCommands.h"
#include "cli/zelqEntryQuery.h"
#include "cli/zelqTextOutput.h"
#include "output/zelqLogSummary.h"
#include "output/zelqSummaryJson.h"
#include "output/zelqSummaryText.h"

namespace {

constexpr std::uint64_t kMostValues = 1000;

struct SummaryArguments {
    zelqEntryQuery query;
    std::size_t top = 5;
    bool json = false;
};

/// Sums up the logs one by one, so that only one log's counts and those of all are in memory.
class Summaries {
public:
    explicit Summaries(const SummaryArguments& arguments) : arguments_(arguments) {}

    void read(zelqLogReport& report) {
        zelqEntryRequest request = report.request();
        request.ended = [this, reported = request.ended, &names = report.names()](
                            std::size_t input, const zelqInputOutcome& outcome) {
            reported(input, outcome);
            end(names[input], outcome);
        };
        arguments_.query.read(request, {}, [this](const zelqEntry& entry, bool) {
            current_->add(entry.record(), entry.place.length);
            return true;
        });
    }

    [[nodiscard]] std::uint64_t entries() const noexcept { return all_.entries(); }

    [[nodiscard]] std::string text(bool isTerminal) const {
        const zelqShownSummary all({}, all_, arguments_.top);
        if (arguments_.json) {
            return zelqSummaryJson::of(logs_, all, isTerminal);
        }
        return logs_.size() == 1 ? zelqSummaryText::of(logs_[0]) : zelqSummaryText::of(logs_, all);
    }

private:
    void end(const std::string& name, const zelqInputOutcome& outcome) {
        current_->addFindings(outcome.findings);
        if (outcome.status.ok() || outcome.entries > 0) {
            logs_.emplace_back(name, *current_, arguments_.top);
            all_.merge(*current_);
        }
        current_ = std::make_unique<zelqLogSummary>();
    }

    const SummaryArguments& arguments_;
    std::unique_ptr<zelqLogSummary> current_ = std::make_unique<zelqLogSummary>();
    zelqLogSummary all_;
    std::vector<zelqShownSummary> logs_;
};

int summarise(const SummaryArguments& arguments) {
    zelqLogReport report(arguments.query.logs());
    Summaries summaries(arguments);
    summaries.read(report);
    zelqCommandOutput output("-", report.identities());
    zelqTextOutput text(output);
    text.text() = summaries.text(output.open().isTerminal());
    text.complete();
    return arguments.query.exitStatus(report, summaries.entries());
}

}  // namespace

void zelqCommands::addSummary(CLI::App& program, int& exitStatus) {
    const auto arguments = std::make_shared<SummaryArguments>();
    CLI::App* const command = program.add_subcommand(
        "summary", "Print what is in logs: times, types, damage, and the most frequent values.");
    command->add_flag("--json", arguments->json, "As JSON, for programs");
    command->add_option("--top", arguments->top, "How many of the most frequent values: --top 20")
        ->check(zelqArguments::number(1, kMostValues))
        ->capture_default_str()
        ->type_name("NUMBER");
    arguments->query.addTo(*command);
    command->footer(
        "Examples:\n"
        "  raslog summary host1.log\n"
        "  raslog summary --type error --top 10 host*.log\n"
        "  raslog summary --json host1.log | jq .all.types.Error");
    command->callback([arguments, &exitStatus] { exitStatus = summarise(*arguments); });
}
