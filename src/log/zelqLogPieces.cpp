#include "log/zelqLogPieces.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <new>
#include <string_view>

#include <fcntl.h>

#include "log/zelqEntry.h"
#include "log/zelqKeyedHash.h"

namespace {

/// Offsets of pieces are multiples of their size, which leaves room for the state below them.
constexpr std::uint64_t kNoChange = std::numeric_limits<std::uint64_t>::max();

std::uint64_t nextId() {
    static std::atomic<std::uint64_t> last = 0;
    return ++last;
}

zelqMemory allocate(std::size_t size) {
    zelqMemory memory(static_cast<std::byte*>(std::malloc(size)));
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

std::uint64_t hashOf(const zelqMemory& bytes, std::size_t size) {
    return zelqKeyedHash::ofText({reinterpret_cast<const char*>(bytes.get()), size});
}

}  // namespace

zelqLogPieces::zelqLogPieces(zelqDescriptor file, std::uint64_t size)
    : file_(std::move(file)),
      size_(size),
      id_(nextId()),
      change_(kNoChange),
      piece_(allocate(kSize)) {
    if (size > zelqDataPlace::kMostOffset) {
        status_ = zelqStatus::failure(std::errc::file_too_large, "is too large");
    }
    ::posix_fadvise(file_.get(), 0, 0, POSIX_FADV_SEQUENTIAL);
}

std::size_t zelqLogPieces::sizeOf(std::uint64_t number) const noexcept {
    return static_cast<std::size_t>(std::min<std::uint64_t>(kSize, size_ - number * kSize));
}

/// Reads the next piece to decode. A file that has become shorter ends where it ends now.
bool zelqLogPieces::readPiece() {
    const std::uint64_t offset = hashes_.size() * kSize;
    if (!status_.ok() || offset >= size_) {
        return false;
    }
    const std::size_t wanted = sizeOf(hashes_.size());
    const std::ptrdiff_t got = file_.readAt(offset, {piece_.get(), wanted});
    if (got < 0) {
        status_ = zelqStatus::systemFailure("cannot be read past offset " + std::to_string(offset),
                                            errno);
    }
    pieceSize_ = got < 0 ? 0 : static_cast<std::size_t>(got);
    given_ = 0;
    if (pieceSize_ < wanted) {
        size_ = offset + pieceSize_;
    }
    if (pieceSize_ != 0) {
        hashes_.push_back(hashOf(piece_, pieceSize_));
    }
    return pieceSize_ != 0;
}

std::size_t zelqLogPieces::readNext(std::span<std::byte> to) {
    if (given_ == pieceSize_ && !readPiece()) {
        return 0;
    }
    const std::size_t size = std::min(to.size(), pieceSize_ - given_);
    std::memcpy(to.data(), piece_.get() + given_, size);
    given_ += size;
    return size;
}

zelqDataPlace zelqLogPieces::placeOf(const zelqEntry& entry) {
    const std::span<const std::byte> data = entry.data();
    const auto lines = zelqDumpLines::of(data, entry.origin.blockCount);
    const std::uint64_t end = entry.place.offset + entry.place.length;
    const zelqDataPlace place(end - data.size(), lines);
    if (!place.lines().has_value()) {
        longDumps_.emplace_back(place.offset(), lines);
    }
    return place;
}

void zelqLogPieces::finish() {
    piece_.reset();
    hashes_.shrink_to_fit();
    ::posix_fadvise(file_.get(), 0, 0, POSIX_FADV_NORMAL);
}

std::shared_ptr<const zelqLogPieces::Piece> zelqLogPieces::read(std::uint64_t number,
                                                                bool waits) const {
    const std::uint64_t offset = number * kSize;
    if (number >= hashes_.size()) {
        return std::make_shared<Piece>(Piece{.state = zelqDataState::Unreadable});
    }
    const auto piece = std::make_shared<Piece>();
    piece->size = sizeOf(number);
    piece->bytes = allocate(piece->size);
    const std::span<std::byte> to(piece->bytes.get(), piece->size);
    const std::ptrdiff_t got = waits ? file_.readAt(offset, to) : file_.readCachedAt(offset, to);
    if (got != static_cast<std::ptrdiff_t>(to.size()) && !waits) {
        return nullptr;
    }
    if (got < 0) {
        piece->state = zelqDataState::Unreadable;
    } else if (static_cast<std::size_t>(got) != to.size() ||
               hashOf(piece->bytes, piece->size) != hashes_[number]) {
        piece->state = zelqDataState::Changed;
    }
    if (piece->state != zelqDataState::Here) {
        piece->bytes.reset();
        piece->size = 0;
        std::uint64_t none = kNoChange;
        change_.compare_exchange_strong(none, offset | static_cast<std::uint64_t>(piece->state));
    }
    return piece;
}

zelqDumpLines zelqLogPieces::linesAt(const zelqDataPlace& place) const noexcept {
    if (const auto lines = place.lines()) {
        return *lines;
    }
    const auto found = std::ranges::lower_bound(longDumps_, place.offset(), {},
                                                [](const auto& dump) { return dump.first; });
    return found != longDumps_.end() ? found->second : zelqDumpLines{};
}

std::optional<zelqLogPieces::Change> zelqLogPieces::change() const noexcept {
    const std::uint64_t change = change_.load();
    if (change == kNoChange) {
        return std::nullopt;
    }
    return Change{.offset = change / kSize * kSize,
                  .state = static_cast<zelqDataState>(change % kSize)};
}

std::size_t zelqLogPieces::memoryUse() const noexcept {
    return hashes_.capacity() * sizeof(hashes_[0]) + longDumps_.capacity() * sizeof(longDumps_[0]);
}
