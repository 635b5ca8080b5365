#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "log/zelqStatus.h"
#include "session/zelqByteSearch.h"

namespace re2 {
class RE2;
}

/// What a search looks for, made ready for looking. Can be used from several threads.
///
/// - Text is looked for in texts, and in the data of a block as the dump shows it as ASCII and as
///   EBCDIC: a "." stands for itself and for all bytes that have no character. A blank stands for
///   a blank of EBCDIC, too, which the dump shows as ".".
/// - Bytes are looked for in the data of a block, and nowhere else.
/// - A regular expression, of RE2's syntax, is looked for where text is, except that a blank of
///   EBCDIC is a blank only.
///
/// The data of a block are one text, whatever lines the dump has; nothing is found across two
/// blocks. All searches take time that is linear in the text.
class zelqSearchPattern {
public:
    enum class Kind : std::uint8_t { Text, Bytes, RegularExpression };

    struct Query {
        Kind kind = Kind::Text;
        /// In UTF-8; a byte that is none is taken for Latin-1. Bytes are pairs of hexadecimal
        /// digits, with or without blanks between them: "C1 40 7E".
        std::string text{};
        /// Letters are found in the other case, too, unless this is set. Bytes are bytes.
        bool matchCase = false;

        friend bool operator==(const Query&, const Query&) = default;
    };

    /// A longer query is refused; counted in characters or bytes that are looked for.
    static constexpr std::size_t kMostCharacters = 1000;

    /// One that cannot be used has a status that names what is wrong with it, and where; it
    /// matches nothing.
    explicit zelqSearchPattern(const Query& query);

    [[nodiscard]] const zelqStatus& status() const noexcept { return status_; }

    /// False if it is in no text, but at most in data.
    [[nodiscard]] bool isForTexts() const noexcept {
        return expression_ != nullptr || utf8_.isPossible();
    }
    /// Whether it is anywhere in a text of Latin-1 bytes.
    [[nodiscard]] bool isInText(std::string_view latin1) const;
    /// Whether it is anywhere in a text in UTF-8. Only letters of ASCII have two cases here.
    [[nodiscard]] bool isInUtf8(std::string_view utf8) const;
    /// Whether it is anywhere in the data of a block.
    [[nodiscard]] bool isInData(std::span<const std::byte> data) const;
    /// False if it cannot be in any text made of these characters.
    [[nodiscard]] bool canBeMadeOf(std::string_view characters) const;
    /// The same for texts in UTF-8 whose bytes are all among these.
    [[nodiscard]] bool canBeMadeOfUtf8(std::string_view bytes) const;

    /// Where it is in a text; `size` is not 0.
    struct Place {
        std::size_t offset;
        std::size_t size;
    };
    /// As what data are seen: the columns of the dump.
    enum class Column : std::uint8_t { Hexadecimal, Ascii, Ebcdic };

    /// All places that do not overlap, from the first one on.
    [[nodiscard]] std::vector<Place> placesInText(std::string_view latin1) const;
    [[nodiscard]] std::vector<Place> placesInData(std::span<const std::byte> data,
                                                  Column column) const;

private:
    void compileText(const Query& query);
    void compileBytes(std::string_view digits);
    void compileExpression(const Query& query);
    void fail(std::string text);
    [[nodiscard]] const zelqByteSearch& searchOf(Column column) const noexcept {
        return columns_[static_cast<std::size_t>(column)];
    }

    zelqStatus status_;
    // What the kind of the pattern does not need finds nothing.
    zelqByteSearch latin1_;
    zelqByteSearch utf8_;
    std::array<zelqByteSearch, 3> columns_;
    zelqByteSearch anyColumn_;
    std::shared_ptr<const re2::RE2> expression_;
};
