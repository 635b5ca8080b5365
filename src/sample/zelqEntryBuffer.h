#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "log/zelqByteOrder.h"
#include "log/zelqLogFormat.h"

/// The bytes of one entry, put one after another. The caller keeps the entry within its limit.
class zelqEntryBuffer {
public:
    void clear() noexcept { size_ = 0; }
    [[nodiscard]] std::size_t size() const noexcept { return size_; }
    [[nodiscard]] std::span<const std::byte> bytes() const noexcept {
        return std::span(bytes_).first(size_);
    }

    void put8(std::uint32_t value) noexcept { *grow(1) = static_cast<std::byte>(value & 0xFF); }
    void put16(std::size_t value) noexcept {
        zelqByteOrder::storeBig16(grow(2), static_cast<std::uint16_t>(value));
    }
    void put32(std::uint32_t value) noexcept { zelqByteOrder::storeBig32(grow(4), value); }
    void putLittle16(std::uint16_t value) noexcept { zelqByteOrder::storeLittle16(grow(2), value); }
    void putLittle32(std::uint32_t value) noexcept { zelqByteOrder::storeLittle32(grow(4), value); }
    void putBytes(std::span<const std::byte> bytes) noexcept {
        std::memcpy(grow(bytes.size()), bytes.data(), bytes.size());
    }

    /// Changes a number that was put before.
    void set16(std::size_t offset, std::size_t value) noexcept {
        zelqByteOrder::storeBig16(bytes_.data() + offset, static_cast<std::uint16_t>(value));
    }

private:
    std::byte* grow(std::size_t size) noexcept {
        std::byte* const end = bytes_.data() + size_;
        size_ += size;
        return end;
    }

    std::array<std::byte, zelqFormat::kLongestEntry> bytes_;
    std::size_t size_ = 0;
};
