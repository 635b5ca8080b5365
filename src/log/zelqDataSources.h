#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "log/zelqPieceCache.h"

/// The files of those logs whose bytes are not kept, by the logs' slots. A copy stays as it is
/// whatever becomes of the logs. One thread at a time, each copy.
class zelqDataSources {
public:
    static constexpr std::size_t kSlots = 100;

    /// Of no logs at all.
    zelqDataSources() = default;
    explicit zelqDataSources(std::shared_ptr<zelqPieceCache> cache) noexcept
        : cache_(std::move(cache)) {}

    /// `pieces`: null for a log whose bytes are kept.
    void set(std::size_t slot, std::shared_ptr<const zelqLogPieces> pieces) noexcept {
        if (logs_[slot] != nullptr && cache_ != nullptr) {
            cache_->forget(*logs_[slot]);
        }
        logs_[slot] = std::move(pieces);
        version_ = nextVersion();
    }

    /// Null for a log whose bytes are kept, and for a slot without a log.
    [[nodiscard]] const std::shared_ptr<const zelqLogPieces>& of(std::size_t slot) const noexcept {
        return logs_[slot];
    }
    /// Null if no data can be read.
    [[nodiscard]] const std::shared_ptr<zelqPieceCache>& cache() const noexcept { return cache_; }
    /// Two objects of the same version hold the same.
    [[nodiscard]] std::uint64_t version() const noexcept { return version_; }

private:
    static std::uint64_t nextVersion() noexcept {
        static std::atomic<std::uint64_t> last = 0;
        return ++last;
    }

    std::array<std::shared_ptr<const zelqLogPieces>, kSlots> logs_;
    std::shared_ptr<zelqPieceCache> cache_;
    std::uint64_t version_ = 0;
};
