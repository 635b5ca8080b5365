#include "log/zelqTextTable.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <utility>

namespace {

constexpr std::size_t kFirstChunk = std::size_t{4} << 10;
constexpr std::size_t kLargestChunk = std::size_t{1} << 20;

}  // namespace

zelqTextTable::Place zelqTextTable::findOrKeep(std::string_view text, std::size_t position) {
    if (sets_ == nullptr) {
        // Cleared memory of this size is not touched until it is used: a log of few texts uses
        // little of it.
        // NOLINTNEXTLINE(clang-analyzer-unix.MallocSizeof): the sets lie in these bytes
        sets_.reset(static_cast<std::byte*>(std::calloc(kSetCount, sizeof(Set))));
        if (sets_ == nullptr) {
            throw std::bad_alloc();
        }
    }
    const std::uint64_t hash = zelqKeyedHash::ofText(text);
    auto& known = reinterpret_cast<Set*>(sets_.get())[hash % kSetCount].known;
    for (const Set::Known& candidate : known) {
        if (candidate.place != nullptr && candidate.hash == hash &&
            textAt(candidate.place) == text) {
            return candidate.place;
        }
    }
    const Place place = keep(text, position);
    std::move_backward(known.begin(), known.end() - 1, known.end());
    known.front() = {.place = place, .hash = hash};
    return place;
}

zelqTextTable::Place zelqTextTable::keep(std::string_view text, std::size_t position) {
    if (text.size() <= kMostOwnBytes) {
        return store(text, {});
    }
    const std::size_t shared = sharedSize(text, position);
    const std::size_t own = text.size() - shared;
    if (own > kMostOwnBytes) {
        const Place place = store(text, {});
        shared_ = textAt(place).start;
        sharedPosition_ = position;
        return place;
    }
    // Its own bytes are not empty, so that each text has a key of its own.
    const std::size_t kept = std::max<std::size_t>(own, 1);
    const std::string_view end = shared_.substr(position + kept - sharedPosition_);
    return store(text.substr(0, kept), end.substr(0, text.size() - kept));
}

/// How many bytes at the end of the text the shared text has at the same positions.
std::size_t zelqTextTable::sharedSize(std::string_view text, std::size_t position) const noexcept {
    const std::size_t end = position + text.size();
    if (end <= sharedPosition_ || end > sharedPosition_ + shared_.size()) {
        return 0;
    }
    const std::string_view shared = shared_.substr(0, end - sharedPosition_);
    const auto differing =
        std::mismatch(text.rbegin(), text.rend(), shared.rbegin(), shared.rend());
    return static_cast<std::size_t>(differing.first - text.rbegin());
}

zelqTextTable::Place zelqTextTable::store(std::string_view own, std::string_view shared) {
    const char* const sharedPlace = shared.data();
    const std::size_t placeSize = shared.empty() ? 0 : sizeof(sharedPlace);
    char* const place = allocate(2 + placeSize + own.size());
    place[0] = static_cast<char>(own.size());
    place[1] = static_cast<char>(shared.size());
    std::memcpy(place + 2, &sharedPlace, placeSize);
    own.copy(place + 2 + placeSize, own.size());
    return place;
}

char* zelqTextTable::allocate(std::size_t size) {
    if (size > freeBytes_) {
        const std::size_t chunkSize = std::clamp(chunkBytes_, kFirstChunk, kLargestChunk);
        zelqMemory chunk(static_cast<std::byte*>(std::malloc(chunkSize)));
        if (chunk == nullptr) {
            throw std::bad_alloc();
        }
        chunks_.push_back(std::move(chunk));
        chunkBytes_ += chunkSize;
        free_ = reinterpret_cast<char*>(chunks_.back().get());
        freeBytes_ = chunkSize;
    }
    freeBytes_ -= size;
    return std::exchange(free_, free_ + size);
}

void zelqTextTable::forget() noexcept {
    sets_.reset();
}

void zelqTextTable::clear() noexcept {
    forget();
    last_ = nullptr;
    shared_ = {};
    sharedPosition_ = 0;
    chunks_.clear();
    chunkBytes_ = 0;
    free_ = nullptr;
    freeBytes_ = 0;
}
