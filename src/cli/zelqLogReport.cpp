#include "cli/zelqLogReport.h"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <utility>

#include "cli/zelqCommands.h"
#include "log/zelqLogInput.h"

zelqLogReport::zelqLogReport(std::vector<std::string> names, std::ostream& findings,
                             std::uint64_t mostFindings)
    : names_(std::move(names)),
      findings_(&findings),
      mostFindings_(mostFindings),
      lines_(names_.size()) {
    refuseStandardError();
}

zelqLogReport::zelqLogReport(std::vector<std::string> names) : names_(std::move(names)) {
    refuseStandardError();
}

void zelqLogReport::refuseStandardError() const {
    if (std::ranges::any_of(names_, zelqCommands::messagesGoTo)) {
        zelqCommands::endMessages();
        throw std::runtime_error("standard error is one of the logs that are read");
    }
}

std::vector<std::string> zelqLogReport::distinct(const std::vector<std::string>& names) {
    std::set<std::string> known;
    std::vector<std::string> distinct;
    std::ranges::copy_if(names, std::back_inserter(distinct),
                         [&known](const std::string& name) { return known.insert(name).second; });
    return distinct;
}

std::vector<zelqFileIdentity> zelqLogReport::identities() const {
    std::vector<zelqFileIdentity> identities;
    for (const std::string& name : names_) {
        if (const auto identity = zelqLogInput::identityOf(name)) {
            identities.push_back(*identity);
        }
    }
    return identities;
}

zelqEntryRequest zelqLogReport::request() {
    return {
        .names = names_,
        .finding = [this](std::size_t input, const zelqFinding& finding) { add(input, finding); },
        .ended = [this](std::size_t input,
                        const zelqInputOutcome& outcome) { end(input, outcome); }};
}

void zelqLogReport::add(std::size_t input, const zelqFinding& finding) {
    if (findings_ == nullptr) {
        return;
    }
    if (lines_[input] == nullptr) {
        lines_[input] =
            std::make_unique<zelqFindingLines>(*findings_, names_[input], mostFindings_);
    }
    lines_[input]->add(finding);
}

void zelqLogReport::end(std::size_t input, const zelqInputOutcome& outcome) {
    if (findings_ != nullptr && lines_[input] != nullptr) {
        lines_[input]->finish();
    }
    if (outcome.findings != 0) {
        exitStatus_ = std::max(exitStatus_, zelqCommands::kDamaged);
    }
    if (!outcome.status.ok()) {
        zelqCommands::writeMessage("raslog: " + names_[input] + ": " + outcome.status.text);
        exitStatus_ = zelqCommands::kCannotDo;
    }
}
