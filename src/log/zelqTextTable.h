#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "log/zelqKeyedHash.h"
#include "log/zelqMemory.h"
#include "log/zelqText.h"

/// Keeps the texts of one log, most of them once each. Texts stay where they are until the table is
/// destroyed or cleared.
///
/// No text costs more than a constant, whatever the texts are: recent texts are looked up in sets
/// of fixed size, so that texts whose hashes collide, or more texts than there are places, are
/// kept again instead of searched for. And a text that differs from an earlier one in a few bytes
/// at its start only is kept as these bytes: a hostile log gives each entry of ten bytes a new text
/// of 226, by changing the start of what the header buffer holds.
class zelqTextTable {
public:
    /// Where a text is kept.
    using Place = const char*;

    /// Keeps a text of at most 255 bytes. `position` is where it stands in its entry: texts share
    /// what they have in common at equal positions. Throws std::bad_alloc.
    Place intern(std::string_view text, std::size_t position) {
        if (text.empty()) {
            return kEmpty.data();
        }
        if (last_ == nullptr || !(textAt(last_) == text)) {
            last_ = findOrKeep(text, position);
        }
        return last_;
    }

    [[nodiscard]] static zelqText textAt(Place place) noexcept;

    /// Keeps a text of at most 255 bytes outside of any table, where `to` has room for kMostPut
    /// bytes. That is then its place. Returns how many bytes it takes.
    static std::size_t put(std::string_view text, char* to) noexcept {
        to[0] = static_cast<char>(text.size());
        to[1] = 0;
        return 2 + text.copy(to + 2, text.size());
    }
    static constexpr std::size_t kMostPut = 2 + 255;

    /// Frees what serves to find texts again. Texts that are interned later are found anew.
    void forget() noexcept;
    /// Frees all texts.
    void clear() noexcept;

    /// Memory that the texts take, in bytes.
    [[nodiscard]] std::size_t memoryUse() const noexcept { return chunkBytes_; }

private:
    // A text is kept as the sizes of its own and its shared bytes, a byte each, the address of the
    // shared ones, if there are any, and its own bytes.
    static constexpr std::array<char, 2> kEmpty{};

    /// Texts up to this size are kept whole. So is a longer one if it has more bytes of its own
    /// than this; it then becomes the one whose end others share. An entry that brings so many
    /// bytes of a text is itself longer than they are.
    static constexpr std::size_t kMostOwnBytes = 40;

    static constexpr std::size_t kSetCount = std::size_t{1} << 14;
    struct Set {
        struct Known {
            Place place;
            std::uint64_t hash;
        };
        std::array<Known, 4> known;  ///< the most recent one first
    };

    Place findOrKeep(std::string_view text, std::size_t position);
    Place keep(std::string_view text, std::size_t position);
    Place store(std::string_view own, std::string_view shared);
    [[nodiscard]] std::size_t sharedSize(std::string_view text,
                                         std::size_t position) const noexcept;
    char* allocate(std::size_t size);

    Place last_ = nullptr;
    zelqMemory sets_;          ///< kSetCount of them, while texts are interned
    std::string_view shared_;  ///< the kept text whose end others share
    std::size_t sharedPosition_ = 0;
    std::vector<zelqMemory> chunks_;
    std::size_t chunkBytes_ = 0;
    char* free_ = nullptr;  ///< of the last chunk
    std::size_t freeBytes_ = 0;
};

/// The place of one text that no table keeps. The text has no key.
class zelqPassingText {
public:
    /// A text of at most 255 bytes, which must stay where it is for as long as the place is used.
    zelqTextTable::Place set(std::string_view text) noexcept {
        const char* const bytes = text.data();
        place_[0] = 0;
        place_[1] = static_cast<char>(text.size());
        std::memcpy(place_.data() + 2, &bytes, sizeof(bytes));
        return place_.data();
    }

private:
    std::array<char, 2 + sizeof(const char*)> place_{};
};

inline zelqText zelqTextTable::textAt(Place place) noexcept {
    const auto ownSize = static_cast<unsigned char>(place[0]);
    const auto sharedSize = static_cast<unsigned char>(place[1]);
    if (sharedSize == 0) {
        return {.start = {place + 2, ownSize}};
    }
    Place shared = nullptr;
    std::memcpy(&shared, place + 2, sizeof(shared));
    return {.start = {place + 2 + sizeof(shared), ownSize}, .end = {shared, sharedSize}};
}
