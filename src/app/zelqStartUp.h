#pragma once

#include <functional>
#include <memory>
#include <string>

class zelqBrowser;

/// What the program does before its main window is there.
class zelqStartUp {
public:
    /// What the user answers to the start-up message box; the values are the message box's replies.
    enum class Reply { Cancel = 2, Retry = 4 };

    /// Calls `create` until it succeeds. When it throws, `ask` is shown the reason: Retry calls
    /// `create` again, anything else gives up, with null. Exceptions other than std::exception pass
    /// through.
    static std::unique_ptr<zelqBrowser> createBrowser(
        const std::function<std::unique_ptr<zelqBrowser>()>& create,
        const std::function<Reply(const std::string& reason)>& ask);

    /// Has the C library give back what is free at the ends of its heaps. Each of several threads
    /// that read or write has one of its own, and up to 64 MiB of it would be kept. To be called
    /// before there are other threads.
    static void giveFreeMemoryBack();

    /// The program: runs until the main window is closed and returns the exit status. `argv[1]`, if
    /// there is one, is a log to load, whatever it begins with; further arguments are ignored.
    /// Before that Qt takes out its own arguments, such as "-style". "--help" or "--version" as the
    /// only argument is answered on standard output, without a display.
    static int run(int argc, char** argv);
};
