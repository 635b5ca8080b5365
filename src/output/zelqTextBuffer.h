#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

/// Text that is made piece by piece in memory that is used again and again: clearing the pages of
/// fresh memory takes longer than rendering, and so does clearing bytes that are written next.
class zelqTextBuffer {
public:
    [[nodiscard]] std::string_view text() const noexcept { return {bytes_.get(), size_}; }
    void clear() noexcept { size_ = 0; }

    /// Room for this many bytes after the text, valid until the next call. Throws std::bad_alloc.
    [[nodiscard]] char* room(std::size_t size) {
        if (capacity_ - size_ < size) {
            grow(size);
        }
        return bytes_.get() + size_;
    }
    /// Adds bytes that were written into the room to the text.
    void add(std::size_t size) noexcept { size_ += size; }
    void append(std::string_view text) {
        std::memcpy(room(text.size()), text.data(), text.size());
        add(text.size());
    }

private:
    void grow(std::size_t size) {
        const std::size_t capacity = std::max(size_ + size, 2 * capacity_);
        // NOLINTNEXTLINE(modernize-avoid-c-arrays): a vector would be cleared
        auto bytes = std::make_unique_for_overwrite<char[]>(capacity);
        std::copy_n(bytes_.get(), size_, bytes.get());
        bytes_ = std::move(bytes);
        capacity_ = capacity;
    }

    std::unique_ptr<char[]> bytes_;  // NOLINT(modernize-avoid-c-arrays)
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};
