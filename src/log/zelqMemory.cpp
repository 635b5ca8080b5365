#include "log/zelqMemory.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <new>
#include <string_view>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include "log/zelqMemoryLimit.h"

zelqMemory zelqHeap::allocate(std::size_t size) noexcept {
    if (size < kHugePageSize) {
        return zelqMemory(static_cast<std::byte*>(std::malloc(size)));
    }
    const std::size_t rounded = (size + kHugePageSize - 1) / kHugePageSize * kHugePageSize;
    void* const memory = std::aligned_alloc(kHugePageSize, rounded);
    if (memory != nullptr) {
        // Works without huge pages as well, so a failure does not matter.
        ::madvise(memory, rounded, MADV_HUGEPAGE);
    }
    return zelqMemory(static_cast<std::byte*>(memory));
}

namespace {

/// What is left for windows, texts and other processes, in bytes.
constexpr std::size_t kReserve = std::size_t{64} << 20;
/// Asking takes as long as clearing a hundred kilobytes.
constexpr std::size_t kSmall = std::size_t{8} << 20;

std::size_t systemAvailable() noexcept {
    constexpr std::string_view kName = "MemAvailable:";
    std::size_t kibibytes = std::numeric_limits<std::size_t>::max() / 1024;
    const int descriptor = ::open("/proc/meminfo", O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        return kibibytes * 1024;
    }
    std::array<char, 1024> buffer{};
    const ssize_t got = ::read(descriptor, buffer.data(), buffer.size());
    ::close(descriptor);
    const std::string_view text(buffer.data(), got < 0 ? 0 : static_cast<std::size_t>(got));
    const std::size_t line = text.find(kName);
    if (line != std::string_view::npos) {
        const std::string_view value = text.substr(line + kName.size());
        const std::size_t digits = value.find_first_not_of(' ');
        if (digits != std::string_view::npos) {
            std::from_chars(value.data() + digits, value.data() + value.size(), kibibytes);
        }
    }
    return kibibytes * 1024;
}

struct Left {
    /// Of the system and the control groups. A process that takes more is ended.
    std::size_t ofSystem;
    /// Of the process's own limits. Taking more fails.
    std::size_t ofProcess;
};

Left left() noexcept {
    try {
        return {.ofSystem = std::min(systemAvailable(), zelqMemoryLimit::left()),
                .ofProcess = zelqMemoryLimit::leftOfProcess()};
    } catch (const std::bad_alloc&) {
        return {.ofSystem = 0, .ofProcess = 0};
    }
}

}  // namespace

std::size_t zelqHeap::available() noexcept {
    const Left now = left();
    return std::min(now.ofSystem, now.ofProcess);
}

bool zelqHeap::has(std::size_t size) noexcept {
    if (size < kSmall) {
        return true;
    }
    const Left now = left();
    return now.ofSystem >= kReserve && now.ofSystem - kReserve >= size && now.ofProcess >= size;
}

void zelqHeap::require(std::size_t size) {
    if (!has(size)) {
        throw std::bad_alloc();
    }
}
