#pragma once

#include <string>
#include <string_view>

/// Makes text harmless that comes out of a log or is a file's name and goes to a terminal, where
/// its bytes could be commands, or make what stands beside it read differently.
class zelqTerminalText {
public:
    /// A name or one line of a message, in UTF-8. Control characters and bytes that are no UTF-8
    /// become "\x1B", byte by byte; characters that turn the direction of writing or end a line
    /// become "\u{202E}".
    [[nodiscard]] static std::string escaped(std::string_view bytes);
    /// The same for several lines: "\n" stays.
    [[nodiscard]] static std::string escapedLines(std::string_view bytes);
    /// A listing, whose character set is the log's: all but "\n" and the printable characters of
    /// ASCII become "\x1B".
    [[nodiscard]] static std::string escapedListing(std::string_view bytes);

private:
    static void appendByte(std::string& text, char byte);
};
