#include "cli/zelqCommands.h"

#include <iostream>

#include "cli/zelqCommandOutput.h"
#include "output/zelqTerminalText.h"

void zelqCommands::writeOutput(const std::string& name, std::span<const zelqFileIdentity> inputs,
                               const std::function<zelqStatus(zelqOutputFile&)>& write) {
    zelqCommandOutput output(name, {inputs.begin(), inputs.end()});
    zelqOutputFile& file = output.open();
    output.complete(write(file));
}

void zelqCommands::writeMessage(const std::string& message, bool lines) {
    std::cerr << (lines ? zelqTerminalText::escapedLines(message)
                        : zelqTerminalText::escaped(message) + '\n');
}
