#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "log/zelqBCnrObject.h"
#include "log/zelqLogFile.h"
#include "log/zelqTextTable.h"

/// One log: the bytes of its file, its records in file order and their texts. Destroying it frees
/// everything at once, so whoever knows a record of it must have let go of it before.
class zelqLog {
public:
    explicit zelqLog(const std::string& fileName) : file_(fileName) {}

    [[nodiscard]] zelqLogFile& file() noexcept { return file_; }
    [[nodiscard]] std::size_t size() const noexcept { return size_; }

    [[nodiscard]] zelqBCnrObject& operator[](std::size_t index) const noexcept {
        return *slot(index);
    }

    zelqBCnrObject& append(const zelqHeaderBuffer& header, const zelqBCnrObject::Origin& origin) {
        if (size_ == slabs_.size() * kSlabSize) {
            addSlab();
        }
        zelqBCnrObject* const record = std::construct_at(slot(size_), header, origin, texts_);
        ++size_;
        if (!record->hasExpansion()) {
            unexpandable_.push_back(record);
        }
        return *record;
    }

    /// Calls `visit(zelqBCnrObject&)` for each record in file order.
    template <typename Visit>
    void forEach(Visit&& visit) const {
        for (std::size_t index = 0; index < size_; ++index) {
            visit(*slot(index));
        }
    }

    /// The few records that have no expansion data and therefore show it when they are collapsed.
    [[nodiscard]] std::span<zelqBCnrObject* const> unexpandable() const noexcept {
        return unexpandable_;
    }

    /// Numbers the records in file order, from `first` on. Costs nothing when they have these
    /// numbers. True if their order by number was another one before.
    bool number(std::int32_t first);
    /// To be called when some of the records get other numbers.
    void forgetNumbers() noexcept { numbered_ = false; }

private:
    /// Records in a slab: as many as a huge page holds.
    static constexpr std::size_t kSlabSize = kHugePageSize / sizeof(zelqBCnrObject);
    static_assert(std::is_trivially_destructible_v<zelqBCnrObject>);

    /// Throws std::bad_alloc.
    void addSlab();

    [[nodiscard]] zelqBCnrObject* slot(std::size_t index) const noexcept {
        return reinterpret_cast<zelqBCnrObject*>(slabs_[index / kSlabSize].get()) +
               index % kSlabSize;
    }

    zelqLogFile file_;
    zelqTextTable texts_;
    std::vector<zelqMemory> slabs_;  ///< raw memory, touched only as far as it is used
    std::vector<zelqBCnrObject*> unexpandable_;
    std::size_t size_ = 0;
    bool numbered_ = false;  ///< by number(), from firstNumber_ on
    std::int32_t firstNumber_ = 0;
};
