#include "log/zelqDataReader.h"

#include <algorithm>

/// Null if it is pending.
const zelqLogPieces::Piece* zelqDataReader::hold(const zelqPieceCache::Log& log,
                                                 std::uint64_t number) {
    if (piece_ == nullptr || log_ != log->id() || number_ != number) {
        piece_ = sources_.cache()->get(log, number, waits_ == Waits::Yes);
        log_ = log->id();
        number_ = number;
    }
    return piece_.get();
}

zelqRecordData zelqDataReader::fetch(const zelqBCnrObject& record) {
    constexpr std::size_t kPiece = zelqLogPieces::kSize;
    const zelqPieceCache::Log& log = sources_.of(static_cast<std::size_t>(record.logIndex()));
    if (log == nullptr || sources_.cache() == nullptr) {
        return {.state = zelqDataState::Unreadable};
    }
    const std::uint64_t offset = record.dataPlace().offset();
    const std::size_t size = record.dataSize();
    if (size == 0) {
        return {};
    }
    if (joinedLog_ == log->id() && joinedOffset_ == offset) {
        return {.bytes = joined_};
    }
    const std::size_t start = offset % kPiece;
    const std::size_t inFirst = std::min(size, kPiece - start);
    const auto stateOf = [](const zelqLogPieces::Piece* piece, std::size_t end) {
        return piece == nullptr                      ? zelqDataState::Pending
               : piece->state != zelqDataState::Here ? piece->state
               : end > piece->size                   ? zelqDataState::Unreadable
                                                     : zelqDataState::Here;
    };
    const zelqLogPieces::Piece* piece = hold(log, offset / kPiece);
    if (const auto state = stateOf(piece, start + inFirst); state != zelqDataState::Here) {
        return {.state = state};
    }
    const std::span<const std::byte> first(piece->bytes.get() + start, inFirst);
    if (inFirst == size) {
        return {.bytes = first};
    }
    joinedLog_ = 0;
    joined_.assign(first.begin(), first.end());
    piece = hold(log, offset / kPiece + 1);
    if (const auto state = stateOf(piece, size - inFirst); state != zelqDataState::Here) {
        return {.state = state};
    }
    joined_.insert(joined_.end(), piece->bytes.get(), piece->bytes.get() + (size - inFirst));
    joinedLog_ = log->id();
    joinedOffset_ = offset;
    return {.bytes = joined_};
}
