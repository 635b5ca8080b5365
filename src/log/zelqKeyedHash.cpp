#include "log/zelqKeyedHash.h"

#include <array>
#include <chrono>
#include <cstring>

#include <sys/random.h>

#define XXH_INLINE_ALL  // a function of the header only: nothing to link
#include <xxhash.h>

namespace {

struct Key {
    std::array<std::byte, XXH3_SECRET_DEFAULT_SIZE> secret;
    std::uint64_t multiplier = 0;

    Key() noexcept {
        // At most 256 bytes are given at once and whole.
        if (::getrandom(secret.data(), secret.size(), 0) != static_cast<ssize_t>(secret.size())) {
            // A kernel that refuses leaves nothing better than the clock and an address.
            const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
            XXH3_generateSecret_fromSeed(secret.data(), static_cast<std::uint64_t>(now) ^
                                                            reinterpret_cast<std::uintptr_t>(this));
        }
        std::memcpy(&multiplier, secret.data(), sizeof(multiplier));
        multiplier |= 1;
    }
};

const Key& key() noexcept {
    static const Key random;
    return random;
}

}  // namespace

std::uint64_t zelqKeyedHash::randomMultiplier() noexcept {
    return key().multiplier;
}

std::uint64_t zelqKeyedHash::ofText(std::string_view text) noexcept {
    const auto& secret = key().secret;
    return XXH3_64bits_withSecret(text.data(), text.size(), secret.data(), secret.size());
}
