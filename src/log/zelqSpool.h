#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "log/zelqDescriptor.h"
#include "log/zelqStatus.h"

/// Bytes that are put aside on the disk and read again later: a file without a name in $TMPDIR, or
/// else /var/tmp, where large files belong, or /tmp. Nothing is left of it however the program
/// ends. There is no file before the first byte.
class zelqSpool {
public:
    /// Adds bytes at the end.
    const zelqStatus& append(std::span<const std::byte> bytes);
    /// Reads bytes that were added. Returns how many there are; 0 after a failure.
    [[nodiscard]] std::size_t readAt(std::uint64_t offset, std::span<std::byte> to);

    [[nodiscard]] std::uint64_t size() const noexcept { return size_; }
    /// Whether all could be written and read so far.
    [[nodiscard]] const zelqStatus& status() const noexcept { return status_; }

private:
    void open();
    bool flush();

    zelqDescriptor file_;
    std::vector<std::byte> pending_;  ///< the last bytes, not written yet
    std::uint64_t size_ = 0;
    zelqStatus status_;
};
