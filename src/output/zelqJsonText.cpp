#include "output/zelqJsonText.h"

#include <algorithm>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace {

bool isPlain(char character) {
    return character >= ' ' && character <= '~' && character != '"' && character != '\\';
}

template <typename Encoding>
std::string escaped(std::string_view utf8) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer, rapidjson::UTF8<>, Encoding> writer(buffer);
    writer.String(utf8.data(), static_cast<rapidjson::SizeType>(utf8.size()));
    return {buffer.GetString(), buffer.GetSize()};
}

}  // namespace

void zelqJsonText::append(std::string_view utf8, bool ascii, std::string& text) {
    // Nearly all texts are plain, and the library takes its time to see it.
    if (std::ranges::all_of(utf8, isPlain)) {
        text += '"';
        text += utf8;
        text += '"';
    } else if (!ascii) {
        text += escaped<rapidjson::UTF8<>>(utf8);
    } else {
        appendWithoutDel(escaped<rapidjson::ASCII<>>(utf8), text);
    }
}

void zelqJsonText::appendWithoutDel(std::string_view json, std::string& text) {
    for (const char character : json) {
        if (character == '\x7F') {
            text += "\\u007F";
        } else {
            text += character;
        }
    }
}
