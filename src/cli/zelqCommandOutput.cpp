#include "cli/zelqCommandOutput.h"

#include <stdexcept>
#include <utility>

#include <CLI/CLI.hpp>

void zelqCommandOutput::addOption(CLI::App& command, std::string& name) {
    CLI::Option* const option =
        command.add_option("-o,--output", name, "File to write, - for standard output");
    option->type_name("FILE");
    name.empty() ? option->required() : option->capture_default_str();
}

zelqCommandOutput::zelqCommandOutput(std::string name, std::vector<zelqFileIdentity> inputs)
    : name_(std::move(name)), inputs_(std::move(inputs)) {}

zelqOutputFile& zelqCommandOutput::open() {
    if (file_ == nullptr) {
        // Not by std::make_unique: standard output's is made in its place.
        file_.reset(name_ == "-" ? new zelqOutputFile(zelqOutputFile::standardOutput(inputs_))
                                 : new zelqOutputFile(name_, {.inputs = inputs_}));
        check(file_->status());
    }
    return *file_;
}

void zelqCommandOutput::complete(const zelqStatus& status) {
    if (file_ != nullptr) {
        check(status.ok() ? file_->complete() : status);
    }
}

void zelqCommandOutput::check(const zelqStatus& status) const {
    if (!status.ok() && !status.is(std::errc::broken_pipe)) {
        throw std::runtime_error((name_ == "-" ? "standard output" : name_) + ": " + status.text);
    }
}
