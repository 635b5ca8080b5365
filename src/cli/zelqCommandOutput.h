#pragma once

#include <memory>
#include <string>
#include <vector>

#include "log/zelqFileIdentity.h"
#include "log/zelqStatus.h"
#include "output/zelqOutputFile.h"

namespace CLI {
class App;
}

/// What a command writes: a file, or standard output for "-". It is opened when there is something
/// to write, so that a command without a result leaves an old file as it is.
class zelqCommandOutput {
public:
    /// Adds the option that names it. It must be given where `name` is empty.
    static void addOption(CLI::App& command, std::string& name);

    /// `inputs`: files that must not be written.
    zelqCommandOutput(std::string name, std::vector<zelqFileIdentity> inputs);

    /// The file, opened by the first call. Throws if it cannot be.
    [[nodiscard]] zelqOutputFile& open();
    [[nodiscard]] bool isOpen() const noexcept { return file_ != nullptr; }
    /// Completes the file if `status`, that of writing it, is a success. Throws if it is not, or if
    /// the file cannot be completed; but a reader need not read the output to its end. Does nothing
    /// if the file was not opened.
    void complete(const zelqStatus& status = {});

private:
    void check(const zelqStatus& status) const;

    std::string name_;
    std::vector<zelqFileIdentity> inputs_;
    std::unique_ptr<zelqOutputFile> file_;
};
