#pragma once

#include <cstdint>

/// Divides the entries of a log, as they come, into those that follow each other in time and the
/// strays, which stand elsewhere than their time asks for. Two sieves that see the same keys divide
/// them alike.
///
/// Logs are nearly in order: threads overtake each other by seconds. But a few entries have a time
/// that is none, often one in the far future. So an entry that seems to be days ahead is a stray,
/// unless many in a row are.
class zelqTimeSieve {
public:
    /// Whether the entry with this key of zelqTimestamp is one of those in order.
    bool isInOrder(std::uint64_t key) noexcept;
    /// A number by which to tell whether two sieves saw the same keys in the same order.
    [[nodiscard]] std::uint64_t digest() const noexcept { return digest_; }

private:
    std::uint64_t latest_ = 0;  ///< of those in order
    unsigned aheadInRow_ = 0;
    std::uint64_t digest_ = 0;
};
