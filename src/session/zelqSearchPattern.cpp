#include "session/zelqSearchPattern.h"

#include <algorithm>
#include <optional>
#include <utility>

#include <re2/re2.h>

#include "log/zelqDumpCharacters.h"
#include "log/zelqLatin1.h"

namespace {

using Accepted = zelqByteSearch::Accepted;

/// What the machine of a regular expression may take, in bytes.
constexpr std::int64_t kMostMemory = std::int64_t{16} << 20;

std::size_t valueOf(char character) {
    return static_cast<unsigned char>(character);
}

bool isBeyondAscii(char character) noexcept {
    return static_cast<unsigned char>(character) >= 0x80;
}

/// The letter in the other case; the character itself if it is none.
std::size_t otherCase(std::size_t character, bool asciiOnly) {
    const std::size_t lower = character | 0x20U;
    const bool ascii = lower >= 'a' && lower <= 'z';
    const bool latin1 = lower >= 0xE0 && lower <= 0xFE && lower != 0xF7;  // but for the signs
    return ascii || (latin1 && !asciiOnly && character >= 0xC0) ? character ^ 0x20U : character;
}

Accepted bothCases(char character, bool matchCase, bool asciiOnly = false) {
    Accepted accepted;
    accepted.set(valueOf(character));
    if (!matchCase) {
        accepted.set(otherCase(valueOf(character), asciiOnly));
    }
    return accepted;
}

/// The bytes for which a column of the dump shows one of these characters.
Accepted shownAs(const Accepted& characters, const zelqDumpCharacters::Table& column) {
    Accepted bytes;
    for (std::size_t byte = 0; byte < column.size(); ++byte) {
        bytes.set(byte, characters.test(valueOf(column[byte])));
    }
    return bytes;
}

std::string_view asText(std::span<const std::byte> data) {
    return {reinterpret_cast<const char*>(data.data()), data.size()};
}

/// The data as a column of the dump shows them, but with blanks of EBCDIC as blanks.
std::string translated(std::span<const std::byte> data, zelqSearchPattern::Column column) {
    static constexpr zelqDumpCharacters::Table kEbcdic = [] {
        zelqDumpCharacters::Table table = zelqDumpCharacters::kEbcdic;
        table[zelqDumpCharacters::kEbcdicBlank] = ' ';
        return table;
    }();
    const zelqDumpCharacters::Table& table =
        column == zelqSearchPattern::Column::Ascii ? zelqDumpCharacters::kAscii : kEbcdic;
    std::string text(data.size(), '\0');
    std::ranges::transform(data, text.begin(), [&table](std::byte byte) {
        return table[std::to_integer<std::size_t>(byte)];
    });
    return text;
}

std::optional<unsigned> digitOf(char character) {
    if (character >= '0' && character <= '9') {
        return static_cast<unsigned>(character - '0');
    }
    const auto lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? std::optional(static_cast<unsigned>(lower - 'a') + 10U)
                                        : std::nullopt;
}

/// Calls `find(from)` for one place after another.
template <typename Find>
std::vector<zelqSearchPattern::Place> allPlaces(const Find& find) {
    std::vector<zelqSearchPattern::Place> places;
    std::optional<zelqSearchPattern::Place> place = find(0);
    while (place) {
        if (place->size != 0) {
            places.push_back(*place);
        }
        place = find(place->offset + std::max<std::size_t>(place->size, 1));
    }
    return places;
}

std::vector<zelqSearchPattern::Place> placesOf(const zelqByteSearch& search,
                                               std::string_view text) {
    return allPlaces([&](std::size_t from) -> std::optional<zelqSearchPattern::Place> {
        const std::size_t at = search.find(text, from);
        return at != zelqByteSearch::kNone
                   ? std::optional(zelqSearchPattern::Place{.offset = at, .size = search.size()})
                   : std::nullopt;
    });
}

std::vector<zelqSearchPattern::Place> placesOf(const re2::RE2& expression, std::string_view text) {
    const re2::StringPiece whole(text.data(), text.size());
    return allPlaces([&](std::size_t from) -> std::optional<zelqSearchPattern::Place> {
        re2::StringPiece found;
        if (from > text.size() ||
            !expression.Match(whole, from, text.size(), re2::RE2::UNANCHORED, &found, 1)) {
            return std::nullopt;
        }
        return zelqSearchPattern::Place{
            .offset = static_cast<std::size_t>(found.data() - text.data()), .size = found.size()};
    });
}

bool matches(const re2::RE2& expression, std::string_view text) {
    return expression.Match({text.data(), text.size()}, 0, text.size(), re2::RE2::UNANCHORED,
                            nullptr, 0);
}

}  // namespace

zelqSearchPattern::zelqSearchPattern(const Query& query) {
    if (query.text.empty()) {
        fail("there is nothing to look for");
        return;
    }
    switch (query.kind) {
        case Kind::Text:
            compileText(query);
            break;
        case Kind::Bytes:
            compileBytes(query.text);
            break;
        case Kind::RegularExpression:
            compileExpression(query);
            break;
    }
}

void zelqSearchPattern::fail(std::string text) {
    status_ = zelqStatus::failure(std::errc::invalid_argument, std::move(text));
}

void zelqSearchPattern::compileText(const Query& query) {
    if (query.text.size() > kMostCharacters) {
        fail("the text has more than " + std::to_string(kMostCharacters) + " bytes");
        return;
    }
    std::vector<Accepted> utf8;
    for (const char byte : query.text) {
        utf8.push_back(bothCases(byte, query.matchCase, true));
    }
    utf8_ = zelqByteSearch(std::move(utf8));
    const zelqLatin1::Text text = zelqLatin1::fromUtf8(query.text);
    if (text.unknown) {
        return;  // no log holds such a character, but a time may
    }
    std::vector<Accepted> latin1;
    std::vector<Accepted> ascii;
    std::vector<Accepted> ebcdic;
    for (const char character : text.bytes) {
        const Accepted characters = bothCases(character, query.matchCase);
        latin1.push_back(characters);
        ascii.push_back(shownAs(characters, zelqDumpCharacters::kAscii));
        ebcdic.push_back(shownAs(characters, zelqDumpCharacters::kEbcdic));
        if (character == ' ') {
            ebcdic.back().set(zelqDumpCharacters::kEbcdicBlank);
        }
    }
    latin1_ = zelqByteSearch(std::move(latin1));
    columns_ = {zelqByteSearch(), zelqByteSearch(std::move(ascii)),
                zelqByteSearch(std::move(ebcdic))};
    anyColumn_ = zelqByteSearch::either(searchOf(Column::Ascii), searchOf(Column::Ebcdic));
}

void zelqSearchPattern::compileBytes(std::string_view digits) {
    std::vector<Accepted> bytes;
    const auto digitAt = [digits](std::size_t at) {
        return at < digits.size() ? digitOf(digits[at]) : std::nullopt;
    };
    for (std::size_t at = 0; at < digits.size(); ++at) {
        if (digits[at] == ' ') {
            continue;
        }
        const std::string where = "character " + std::to_string(at + 1) + ": ";
        const std::optional<unsigned> high = digitAt(at);
        const std::optional<unsigned> low = digitAt(++at);
        if (!high || !low) {
            fail(where + (high ? "a byte has two digits" : "this is no hexadecimal digit"));
            return;
        }
        bytes.emplace_back().set(std::size_t{*high} * 16 + *low);
        if (bytes.size() > kMostCharacters) {
            fail(where + "these are more than " + std::to_string(kMostCharacters) + " bytes");
            return;
        }
    }
    if (bytes.empty()) {
        fail("there is nothing to look for");
        return;
    }
    anyColumn_ = columns_.front() = zelqByteSearch(std::move(bytes));
}

void zelqSearchPattern::compileExpression(const Query& query) {
    const zelqLatin1::Text text = zelqLatin1::fromUtf8(query.text);
    if (text.unknown) {
        fail("character " + std::to_string(*text.unknown + 1) +
             ": logs hold no characters but those of Latin-1");
        return;
    }
    if (text.bytes.size() > kMostCharacters) {
        fail("the expression has more than " + std::to_string(kMostCharacters) + " characters");
        return;
    }
    re2::RE2::Options options;
    options.set_encoding(re2::RE2::Options::EncodingLatin1);
    options.set_log_errors(false);
    options.set_never_capture(true);
    options.set_case_sensitive(query.matchCase);
    options.set_max_mem(kMostMemory);
    auto expression = std::make_shared<const re2::RE2>(text.bytes, options);
    if (!expression->ok()) {
        fail(zelqLatin1::toUtf8(expression->error()));
        return;
    }
    expression_ = std::move(expression);
    // RE2 of 2024 knows both cases of ASCII letters only. A set of characters stays as it is.
    if (!query.matchCase && text.bytes.find_first_of("[\\") == std::string::npos) {
        std::string both;
        for (const char letter : text.bytes) {
            const auto other = static_cast<char>(otherCase(valueOf(letter), false));
            const bool hasTwo = isBeyondAscii(letter) && other != letter;
            both += hasTwo ? std::string{'[', letter, other, ']'} : std::string(1, letter);
        }
        expression = std::make_shared<const re2::RE2>(both, options);
        if (expression->ok()) {
            expression_ = std::move(expression);
        }
    }
}

bool zelqSearchPattern::isInText(std::string_view latin1) const {
    return expression_ ? matches(*expression_, latin1)
                       : latin1_.find(latin1) != zelqByteSearch::kNone;
}

bool zelqSearchPattern::isInUtf8(std::string_view utf8) const {
    return expression_ ? matches(*expression_, utf8) : utf8_.find(utf8) != zelqByteSearch::kNone;
}

bool zelqSearchPattern::isInData(std::span<const std::byte> data) const {
    if (expression_) {
        return matches(*expression_, translated(data, Column::Ascii)) ||
               matches(*expression_, translated(data, Column::Ebcdic));
    }
    const std::string_view text = asText(data);
    std::size_t at = anyColumn_.find(text);
    while (at != zelqByteSearch::kNone &&
           std::ranges::none_of(columns_, [text, at](const zelqByteSearch& column) {
               return column.isPossible() && column.isAt(text, at);
           })) {
        at = anyColumn_.find(text, at + 1);
    }
    return at != zelqByteSearch::kNone;
}

bool zelqSearchPattern::canBeMadeOf(std::string_view characters) const {
    return expression_ != nullptr || latin1_.canBeMadeOf(characters);
}

bool zelqSearchPattern::canBeMadeOfUtf8(std::string_view bytes) const {
    return expression_ != nullptr || utf8_.canBeMadeOf(bytes);
}

std::vector<zelqSearchPattern::Place> zelqSearchPattern::placesInText(
    std::string_view latin1) const {
    return expression_ ? placesOf(*expression_, latin1) : placesOf(latin1_, latin1);
}

std::vector<zelqSearchPattern::Place> zelqSearchPattern::placesInData(
    std::span<const std::byte> data, Column column) const {
    if (!expression_) {
        return placesOf(searchOf(column), asText(data));
    }
    return column == Column::Hexadecimal ? std::vector<Place>()
                                         : placesOf(*expression_, translated(data, column));
}
