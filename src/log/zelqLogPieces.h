#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "log/zelqDataPlace.h"
#include "log/zelqDataState.h"
#include "log/zelqDescriptor.h"
#include "log/zelqMemory.h"
#include "log/zelqStatus.h"

class zelqEntry;

/// The file of a log whose bytes are not kept: it stays open and is read again in pieces. Each
/// piece was hashed when it was decoded and is hashed when it is read again, so that bytes that are
/// not what they were are never given out. A file that was replaced or deleted is still the one
/// that is open.
///
/// One thread decodes; afterwards any thread may ask.
class zelqLogPieces {
public:
    /// Small enough to be read and hashed between two frames when the system has it in memory, and
    /// so that little is lost around bytes that have changed.
    static constexpr std::size_t kSize = std::size_t{256} << 10;

    struct Piece {
        zelqMemory bytes{};
        std::size_t size = 0;
        zelqDataState state = zelqDataState::Here;  ///< if it is another one, there are no bytes
    };
    /// The first piece that was found not to be what it was.
    struct Change {
        std::uint64_t offset;
        zelqDataState state;
    };

    /// `size`: how much of the file is read, at most zelqDataPlace::kMostOffset.
    zelqLogPieces(zelqDescriptor file, std::uint64_t size);

    // While the log is decoded:

    /// Reads what comes next and returns its size: 0 at the end and after a failure.
    [[nodiscard]] std::size_t readNext(std::span<std::byte> to);
    /// Whether the file could be read so far.
    [[nodiscard]] const zelqStatus& status() const noexcept { return status_; }
    /// Where the data of an entry of this log are, which was decoded just now.
    [[nodiscard]] zelqDataPlace placeOf(const zelqEntry& entry);
    /// Frees what only reading needs.
    void finish();

    // Afterwards:

    /// Differs from that of every other object, also those that are gone.
    [[nodiscard]] std::uint64_t id() const noexcept { return id_; }
    /// Reads the piece at number * kSize. Without `waits` the result is null if that is not sure to
    /// be done at once. Throws std::bad_alloc.
    [[nodiscard]] std::shared_ptr<const Piece> read(std::uint64_t number, bool waits) const;
    /// The lines of a dump whose data are at a place of this log.
    [[nodiscard]] zelqDumpLines linesAt(const zelqDataPlace& place) const noexcept;
    /// What read() has found; nothing as long as all was what it was.
    [[nodiscard]] std::optional<Change> change() const noexcept;
    [[nodiscard]] std::size_t memoryUse() const noexcept;

private:
    [[nodiscard]] std::size_t sizeOf(std::uint64_t number) const noexcept;
    bool readPiece();

    zelqDescriptor file_;
    std::uint64_t size_;
    std::uint64_t id_;
    std::vector<std::uint64_t> hashes_;  ///< of the pieces
    /// Of the few dumps that are too long for a zelqDataPlace, in the order of their offsets.
    std::vector<std::pair<std::uint64_t, zelqDumpLines>> longDumps_;
    mutable std::atomic<std::uint64_t> change_;

    // While decoding:
    zelqMemory piece_;
    std::size_t pieceSize_ = 0;
    std::size_t given_ = 0;  ///< of the piece
    zelqStatus status_;
};
