#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "log/zelqMemory.h"

/// The bytes of one log file, read piece by piece into one heap buffer. The file is not mapped: a
/// log that is cut short while it is mapped would end the program.
class zelqLogFile {
public:
    /// Opens the file and sets the memory aside for the size it has now; what is appended later is
    /// not read. Only regular files are read: anything else could block or never end.
    explicit zelqLogFile(const std::string& name);
    ~zelqLogFile();
    zelqLogFile(const zelqLogFile&) = delete;
    zelqLogFile& operator=(const zelqLogFile&) = delete;

    /// Empty, or why the file could not be opened or read to its end.
    [[nodiscard]] const std::string& problem() const noexcept { return problem_; }

    /// Reads at most `size` bytes more. False at the end of the file, which a problem brings too.
    bool readMore(std::size_t size);

    /// The bytes read so far; they keep their place for the life of this object. One thread may ask
    /// while another reads on.
    [[nodiscard]] std::span<std::byte> bytes() const noexcept {
        return {bytes_.get(), read_.load(std::memory_order_acquire)};
    }
    /// The file's size when it was opened.
    [[nodiscard]] std::size_t size() const noexcept { return size_; }

    /// Closes the file; the bytes stay.
    void close() noexcept;

private:
    int descriptor_ = -1;
    std::size_t size_ = 0;
    std::atomic<std::size_t> read_ = 0;
    zelqMemory bytes_;
    std::string problem_;
};
