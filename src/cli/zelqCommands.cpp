#include "cli/zelqCommands.h"

#include <iostream>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "cli/zelqCommandOutput.h"
#include "log/zelqLogInput.h"
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

bool zelqCommands::messagesGoTo(const std::string& logName) {
    struct stat file {};
    const int flags = ::fcntl(STDERR_FILENO, F_GETFL);
    return flags >= 0 && (flags & O_ACCMODE) != O_RDONLY && ::fstat(STDERR_FILENO, &file) == 0 &&
           S_ISREG(file.st_mode) &&
           zelqLogInput::identityOf(logName) ==
               zelqFileIdentity{.device = file.st_dev, .inode = file.st_ino};
}

void zelqCommands::endMessages() {
    const int nothing = ::open("/dev/null", O_RDONLY | O_CLOEXEC);  // writing to it fails
    if (nothing < 0 || ::dup2(nothing, STDERR_FILENO) < 0) {
        ::close(STDERR_FILENO);
    }
    ::close(nothing);
}
