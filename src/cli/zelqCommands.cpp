#include "cli/zelqCommands.h"

#include <csignal>
#include <iostream>
#include <stdexcept>

#include "output/zelqOutputFile.h"
#include "output/zelqTerminalText.h"

void zelqCommands::writeOutput(const std::string& name, std::span<const zelqFileIdentity> inputs,
                               const std::function<zelqStatus(zelqOutputFile&)>& write) {
    std::signal(SIGPIPE, SIG_IGN);  // NOLINT: a closed pipe is then an error of the write
    zelqOutputFile output = name == "-" ? zelqOutputFile::standardOutput(inputs)
                                        : zelqOutputFile(name, {.inputs = inputs});
    zelqStatus status = output.status();
    if (status.ok()) {
        status = write(output);
    }
    if (status.ok()) {
        status = output.complete();
    }
    if (!status.ok() && !status.is(std::errc::broken_pipe)) {
        throw std::runtime_error((name == "-" ? "standard output" : name) + ": " + status.text);
    }
}

void zelqCommands::writeMessage(const std::string& message, bool lines) {
    std::cerr << (lines ? zelqTerminalText::escapedLines(message)
                        : zelqTerminalText::escaped(message) + '\n');
}
