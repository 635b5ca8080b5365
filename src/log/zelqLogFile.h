#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "log/zelqDescriptor.h"
#include "log/zelqFileIdentity.h"
#include "log/zelqMemory.h"
#include "log/zelqStatus.h"

/// The bytes of one log file, read piece by piece into the heap. The file is not mapped: a log that
/// is cut short while it is mapped would end the program.
///
/// Memory is set aside as the file is read, in segments, because reading may end long before the
/// file does. The bytes at the end of a segment are copied to the start of the next one, so that
/// every entry lies in one segment as a whole.
class zelqLogFile {
public:
    /// Opens the file. Of a file that has a size, what is appended later is not read; one of size
    /// 0 is read until it ends, because the system gives this size to files that it makes up. Only
    /// regular files are read: anything else could block or never end.
    explicit zelqLogFile(const std::string& name);
    zelqLogFile(const zelqLogFile&) = delete;
    zelqLogFile& operator=(const zelqLogFile&) = delete;

    /// Whether the file could be opened and, so far, read.
    [[nodiscard]] const zelqStatus& status() const noexcept { return status_; }
    /// Which file it is; none if it could not be opened.
    [[nodiscard]] const std::optional<zelqFileIdentity>& identity() const noexcept {
        return identity_;
    }

    /// Reads at most `size` bytes more, and at least one. False at the end of the file or after a
    /// failure. Throws std::bad_alloc only if there is no memory for the text of a failure.
    bool readMore(std::size_t size);

    /// The number of bytes read so far. One thread may ask while another reads on.
    [[nodiscard]] std::size_t bytesRead() const noexcept {
        return read_.load(std::memory_order_acquire);
    }
    /// The bytes read so far from `offset` on: all of them, or more than zelqFormat::kEntryReach if
    /// the segment ends before. `offset`: 0 to bytesRead(). The bytes keep their place until
    /// clear(). One thread may ask while another reads on.
    [[nodiscard]] std::span<std::byte> bytesFrom(std::size_t offset) const noexcept;

    /// The bytes of the file that are still to be read; 0 where its size is not known.
    [[nodiscard]] std::size_t bytesToCome() const noexcept {
        return size_ - std::min(size_, bytesRead());
    }

    /// Where a byte of the file that bytesFrom() has given stands in the file; nothing for any
    /// other address.
    [[nodiscard]] std::optional<std::size_t> offsetOf(const std::byte* byte) const noexcept;

    /// The file's size when it was opened.
    [[nodiscard]] std::size_t size() const noexcept { return size_; }

    /// Closes the file; the bytes stay.
    void close() noexcept { file_ = zelqDescriptor(); }
    /// Closes the file and frees the bytes.
    void clear() noexcept;
    /// Frees the bytes and gives the open file away, for somebody else to read.
    [[nodiscard]] zelqDescriptor release() noexcept;
    /// How the reading went that somebody else did.
    void setStatus(zelqStatus status) noexcept { status_ = std::move(status); }

private:
    struct Segment {
        zelqMemory bytes{};
        std::size_t start = 0;  ///< offset in the file
        std::size_t size = 0;

        [[nodiscard]] std::size_t end() const noexcept { return start + size; }
    };

    bool addSegment();
    void failForMemory();

    zelqDescriptor file_;
    std::size_t size_ = 0;
    std::optional<zelqFileIdentity> identity_;
    std::atomic<std::size_t> read_ = 0;
    /// Each is twice as long as the one before. What reads along looks at a segment only when more
    /// bytes are read than end before it.
    std::array<Segment, 32> segments_;
    std::size_t segmentCount_ = 0;
    zelqStatus status_;
};
