#pragma once

#include <string>
#include <string_view>

/// Texts as JSON has them.
namespace zelqJsonText {

/// Appends a text, which must be well-formed UTF-8, with its quotation marks and escapes. `ascii`:
/// escape all characters beyond ASCII, so that none can command a terminal.
void append(std::string_view utf8, bool ascii, std::string& text);

/// Appends JSON that the library escaped to ASCII. It takes DEL for a character like any other.
void appendWithoutDel(std::string_view json, std::string& text);

}  // namespace zelqJsonText
