#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "log/zelqBCnrObject.h"
#include "log/zelqDataSources.h"
#include "log/zelqDataState.h"

/// The data of a record, or why they are not here.
struct zelqRecordData {
    std::span<const std::byte> bytes{};
    zelqDataState state = zelqDataState::Here;

    [[nodiscard]] bool isHere() const noexcept { return state == zelqDataState::Here; }
};

/// Gives the data of records, wherever they are. One object serves one thread; so does a copy.
class zelqDataReader {
public:
    enum class Waits { Yes, No };

    /// For records whose data are in memory.
    zelqDataReader() = default;
    /// `waits`: whether data may be waited for. Otherwise they are pending while they are read in
    /// the background; see zelqPieceCache::setNews().
    explicit zelqDataReader(zelqDataSources sources, Waits waits = Waits::Yes)
        : sources_(std::move(sources)), waits_(waits) {}

    /// The data of a record, valid until the next call. Throws std::bad_alloc.
    [[nodiscard]] zelqRecordData dataOf(const zelqBCnrObject& record) {
        const zelqDataPlace& place = record.dataPlace();
        return place.isInFile() ? fetch(record)
                                : zelqRecordData{.bytes = {place.address(), record.dataSize()}};
    }
    /// To be called when logs may have come or gone.
    void update(const zelqDataSources& sources) {
        if (sources.version() != sources_.version()) {
            *this = zelqDataReader(sources, waits_);
        }
    }

private:
    [[nodiscard]] zelqRecordData fetch(const zelqBCnrObject& record);
    [[nodiscard]] const zelqLogPieces::Piece* hold(const zelqPieceCache::Log& log,
                                                   std::uint64_t number);

    zelqDataSources sources_;
    Waits waits_ = Waits::Yes;
    // The piece that was asked for last.
    std::uint64_t log_ = 0;  ///< its id
    std::uint64_t number_ = 0;
    zelqPieceCache::Piece piece_;
    /// Data that lie in two pieces, and where.
    std::vector<std::byte> joined_;
    std::uint64_t joinedLog_ = 0;
    std::uint64_t joinedOffset_ = 0;
};
