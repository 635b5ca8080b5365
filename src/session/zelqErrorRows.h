#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <stop_token>
#include <vector>

#include "log/zelqBCnrObject.h"

/// Which rows are of error entries, as the table's icons tell them: a bit a row. Making it looks at
/// every record, which at ten million takes tenths of a second; counting afterwards looks at none.
class zelqErrorRows {
public:
    using Rows = std::span<zelqBCnrObject* const>;

    zelqErrorRows() = default;
    /// Ends early if it is asked to stop. Can run on any thread while the rows stay as they are and
    /// their log is loaded. Throws std::bad_alloc.
    zelqErrorRows(Rows rows, const std::stop_token& stop);

    /// Of the rows from `first` to before `end`, which must exist.
    [[nodiscard]] std::size_t count(std::size_t first, std::size_t end) const noexcept;
    /// The first error among these rows; `end` if there is none.
    [[nodiscard]] std::size_t find(std::size_t first, std::size_t end) const noexcept;

    [[nodiscard]] static bool isError(const zelqBCnrObject& record) noexcept {
        return record.icon() == zelqRecordIcon::Error;
    }
    /// The share of errors among rows, 0 to 1, judged by no more than `most` of them.
    [[nodiscard]] static double sampledShare(Rows rows, std::size_t most) noexcept;

private:
    using Word = std::uint64_t;
    static constexpr std::size_t kBits = 64;

    [[nodiscard]] Word word(std::size_t index, std::size_t first, std::size_t end) const noexcept;

    std::vector<Word> words_;
};
