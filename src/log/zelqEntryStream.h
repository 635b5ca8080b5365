#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <utility>

#include "log/zelqEntry.h"
#include "log/zelqFinding.h"
#include "log/zelqLogDecoder.h"
#include "log/zelqLogInput.h"
#include "log/zelqMemory.h"

/// Reads the entries of one log one after another and keeps none of them: memory is that of the
/// buffer, whatever the log's size and content. Time is linear in the bytes.
class zelqEntryStream {
public:
    /// A piece of this size stays in the processor's cache between being read and being decoded.
    static constexpr std::size_t kBuffer = std::size_t{512} << 10;
    static constexpr std::size_t kSmallestBuffer = std::size_t{144} << 10;
    static_assert(kSmallestBuffer > 2 * zelqFormat::kEntryReach);

    /// Reads what comes next and returns its size: 0 at the end, none after a failure.
    using Read = std::function<std::optional<std::size_t>(std::span<std::byte> to)>;

    explicit zelqEntryStream(Read read, std::size_t number = 0, zelqFindingSink findings = {},
                             std::size_t bufferSize = kBuffer);
    /// `input` must outlive the stream; its status says whether the log was read to its end.
    /// `number`: the log's, for zelqEntry::input. `findings` may be empty. Throws std::bad_alloc.
    explicit zelqEntryStream(zelqLogInput& input, std::size_t number = 0,
                             zelqFindingSink findings = {}, std::size_t bufferSize = kBuffer)
        : zelqEntryStream(
              [&input](std::span<std::byte> to) { return sizeOf(input.read(to), input); }, number,
              std::move(findings), bufferSize) {}

    /// What a source has read, as Read returns it.
    template <typename Source>
    [[nodiscard]] static std::optional<std::size_t> sizeOf(std::size_t read, const Source& source) {
        return read != 0 || source.status().ok() ? std::optional(read) : std::nullopt;
    }

    /// Goes to the next entry, the first one at first. False if there is none. Waits for bytes of a
    /// pipe only as long as an entry is not complete.
    bool next();
    /// The current entry.
    [[nodiscard]] const zelqEntry& entry() const noexcept { return decoder_.entry(); }
    /// Where the next entry begins in the log.
    [[nodiscard]] std::uint64_t position() const noexcept { return decoder_.position(); }
    /// The number of entries so far.
    [[nodiscard]] std::uint64_t count() const noexcept { return decoder_.count(); }

private:
    [[nodiscard]] std::span<std::byte> rest() noexcept;
    void fill();

    Read read_;
    zelqMemory buffer_;
    std::size_t size_;                ///< of the buffer
    std::size_t end_ = 0;             ///< of the bytes in the buffer
    std::uint64_t bufferOffset_ = 0;  ///< of the buffer's first byte in the log
    bool complete_ = false;           ///< nothing can be read after these bytes
    zelqLogDecoder decoder_;
};
