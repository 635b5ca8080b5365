#include "log/zelqLatin1.h"

#include "log/zelqUtf8.h"

zelqLatin1::Text zelqLatin1::fromUtf8(std::string_view utf8) {
    Text text;
    for (std::size_t number = 0; !utf8.empty(); ++number) {
        const auto [code, size] = zelqUtf8::firstOf(utf8);
        if (size == 0) {
            text.bytes += utf8.front();
        } else if (code <= 0xFF) {
            text.bytes += static_cast<char>(code);
        } else if (!text.unknown) {
            text.unknown = number;
        }
        utf8.remove_prefix(size == 0 ? 1 : size);
    }
    return text;
}

std::string zelqLatin1::toUtf8(std::string_view latin1) {
    std::string utf8;
    zelqUtf8::appendLatin1(latin1, utf8);
    return utf8;
}
