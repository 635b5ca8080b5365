#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

/// Owns an open file of the system, or none.
class zelqDescriptor {
public:
    explicit zelqDescriptor(int descriptor = -1) noexcept : descriptor_(descriptor) {}
    zelqDescriptor(zelqDescriptor&& other) noexcept
        : descriptor_(std::exchange(other.descriptor_, -1)) {}
    zelqDescriptor& operator=(zelqDescriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~zelqDescriptor();

    [[nodiscard]] int get() const noexcept { return descriptor_; }
    [[nodiscard]] bool isOpen() const noexcept { return descriptor_ >= 0; }

    /// Reads bytes from an offset on. Returns their number, which is less than asked for only where
    /// the file ends, or -1 with the error in errno.
    [[nodiscard]] std::ptrdiff_t readAt(std::uint64_t offset, std::span<std::byte> to) const;
    /// The same of bytes that the system has in memory: fewer, or -1, where it would have to wait.
    [[nodiscard]] std::ptrdiff_t readCachedAt(std::uint64_t offset, std::span<std::byte> to) const;
    /// Reads what comes next: at least one byte, waiting for it if need be; 0 at the end, -1 with
    /// the error in errno.
    [[nodiscard]] std::ptrdiff_t readNext(std::span<std::byte> to) const;
    /// Whether readNext() would not wait.
    [[nodiscard]] bool isReady() const;

private:
    int descriptor_;
};
