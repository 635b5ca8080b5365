#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "cli/zelqCommands.h"
#include "cli/zelqCompletion.h"
#include "output/zelqOutputFile.h"

namespace {

void writeCompletion(const CLI::App& program, const std::string& shell) {
    zelqCommands::writeOutput("-", {}, [&](zelqOutputFile& output) {
        return output.write(shell == "bash"  ? zelqCompletion::forBash(program)
                            : shell == "zsh" ? zelqCompletion::forZsh(program)
                                             : zelqCompletion::forFish(program));
    });
}

}  // namespace

void zelqCommands::addCompletion(CLI::App& program, int& /*exitStatus*/) {
    const auto shell = std::make_shared<std::string>();
    CLI::App* const command =
        program.add_subcommand("completion", "Print a script that completes raslog in a shell.");
    command->add_option("shell", *shell, "The shell")
        ->required()
        ->check(CLI::IsMember({"bash", "zsh", "fish"}));
    command->footer(
        "Examples:\n"
        "  source <(raslog completion bash)\n"
        "  raslog completion zsh > ~/.zfunc/_raslog\n"
        "  raslog completion fish > ~/.config/fish/completions/raslog.fish");
    command->callback([shell, &program] { writeCompletion(program, *shell); });
}
