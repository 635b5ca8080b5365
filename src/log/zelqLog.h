#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "log/zelqBCnrObject.h"
#include "log/zelqColumnExtremes.h"
#include "log/zelqEntry.h"
#include "log/zelqLogFile.h"
#include "log/zelqLogFindings.h"
#include "log/zelqLogPieces.h"
#include "log/zelqTextTable.h"

class zelqLogDecoder;

/// One log: its file, its records in file order and their texts. The bytes of the file are kept in
/// memory (zelqLogFile), or read again when they are needed (zelqLogPieces). Destroying the log
/// frees all of these at once, so nobody may use a record of it afterwards.
class zelqLog {
public:
    /// How much is decoded between two looks at a stop token: 4096 of the shortest entries.
    static constexpr std::uint64_t kStopInterval = std::uint64_t{32} << 10;

    explicit zelqLog(const std::string& fileName) : file_(fileName) {}

    [[nodiscard]] zelqLogFile& file() noexcept { return file_; }
    /// The number of its records.
    [[nodiscard]] std::size_t size() const noexcept { return size_; }

    /// From here on no bytes of the file are kept: it is read through the result, from its start,
    /// and the records know where in it their data are. Drops what was read before. Throws
    /// std::bad_alloc.
    zelqLogPieces& readOnDemand();
    /// The file if it is read on demand, else null.
    [[nodiscard]] const std::shared_ptr<zelqLogPieces>& pieces() const noexcept { return pieces_; }

    [[nodiscard]] zelqBCnrObject& operator[](std::size_t index) const noexcept {
        return *slot(index);
    }

    /// Where a record of this log stands in it; nothing for any other record. Looks at no record.
    [[nodiscard]] std::optional<std::size_t> indexOf(const zelqBCnrObject& record) const noexcept;

    /// Where the entry with this number begins in the file. Looks at one record.
    [[nodiscard]] std::optional<std::size_t> offsetOf(std::size_t index) const noexcept;

    /// What was wrong with the file, from when it is read; never null.
    [[nodiscard]] const std::shared_ptr<const zelqLogFindings>& findings() const noexcept {
        return findings_;
    }
    void setFindings(std::shared_ptr<const zelqLogFindings> findings) noexcept {
        findings_ = std::move(findings);
    }

    /// To be called now and then. When for the first time data of the log were found not to be what
    /// they were, this becomes one more finding, and is returned.
    std::optional<zelqFinding> noteChange();

    /// Adds a record for each entry that the decoder finds in `bytes`, which is for
    /// zelqLogDecoder::decode(), as is `complete`. The records point into the bytes. A request to
    /// stop is noticed within a few thousand entries, and leaves the rest for the next call. Throws
    /// std::bad_alloc.
    void append(zelqLogDecoder& decoder, std::span<std::byte> bytes, bool complete,
                const std::stop_token& stop = {});
    /// Adds a record for an entry. Throws std::bad_alloc.
    void append(const zelqEntry& entry);

    /// Calls `visit(zelqBCnrObject&)` for each record in file order.
    template <typename Visit>
    void forEach(Visit&& visit) const {
        for (std::size_t index = 0; index < size_; ++index) {
            visit(*slot(index));
        }
    }

    /// The few records that have no expansion data and therefore show it when they are collapsed.
    [[nodiscard]] const std::deque<zelqBCnrObject*>& unexpandable() const noexcept {
        return unexpandable_;
    }

    /// What the columns of its records need at most.
    [[nodiscard]] const zelqColumnExtremes& extremes() const noexcept { return extremes_; }

    /// Numbers the records in file order, from `first` on. Costs nothing when they have these
    /// numbers. True if their order by number was a different one before.
    bool number(std::int32_t first);
    /// To be called when some of the records get other numbers.
    void forgetNumbers() noexcept { numbered_ = false; }

    /// To be called when the last record is appended. Closes the file and frees what only reading
    /// needs.
    void finish() noexcept;
    /// Frees the records, the texts and the bytes.
    void clear() noexcept;
    /// Memory that the records and texts take, in bytes; the bytes of the file come on top. Memory
    /// that is set aside and not touched yet counts too: one slab and one piece of the texts.
    [[nodiscard]] std::size_t memoryUse() const noexcept {
        return slabs_.size() * kSlabSize * sizeof(zelqBCnrObject) + texts_.memoryUse() +
               unexpandable_.size() * sizeof(void*) +
               (pieces_ != nullptr ? pieces_->memoryUse() : 0);
    }

private:
    /// The number of records in a slab: as many as a huge page holds.
    static constexpr std::size_t kSlabSize = kHugePageSize / sizeof(zelqBCnrObject);
    static_assert(std::is_trivially_destructible_v<zelqBCnrObject>);

    /// Throws std::bad_alloc.
    void addSlab();

    [[nodiscard]] zelqBCnrObject* slot(std::size_t index) const noexcept {
        return reinterpret_cast<zelqBCnrObject*>(slabs_[index / kSlabSize].get()) +
               index % kSlabSize;
    }

    zelqLogFile file_;
    std::shared_ptr<zelqLogPieces> pieces_;
    zelqTextTable texts_;
    std::shared_ptr<const zelqLogFindings> findings_ = std::make_shared<zelqLogFindings>();
    std::vector<zelqMemory> slabs_;  ///< raw memory, touched only as far as it is used
    /// A vector would take up to three times the memory while it grows.
    std::deque<zelqBCnrObject*> unexpandable_;
    std::size_t size_ = 0;
    zelqColumnExtremes extremes_;
    bool hasNotedChange_ = false;
    bool numbered_ = false;  ///< by number(), from firstNumber_ on
    std::int32_t firstNumber_ = 0;
};
