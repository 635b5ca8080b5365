#include "log/zelqLog.h"

#include <cstdlib>
#include <functional>
#include <new>

void zelqLog::addSlab() {
    constexpr std::size_t kSlabBytes = kSlabSize * sizeof(zelqBCnrObject);
    // A small log leaves most of its slab untouched, which a huge page would not.
    slabs_.push_back(slabs_.empty() ? zelqMemory(static_cast<std::byte*>(std::malloc(kSlabBytes)))
                                    : zelqHeap::allocate(kHugePageSize));
    if (slabs_.back() == nullptr) {
        slabs_.pop_back();
        throw std::bad_alloc();
    }
}

void zelqLog::finish() noexcept {
    file_.close();
    texts_.forget();
}

void zelqLog::clear() noexcept {
    slabs_.clear();
    texts_.clear();
    extremes_ = {};
    unexpandable_.clear();
    size_ = 0;
    file_.clear();
}

std::optional<std::size_t> zelqLog::indexOf(const zelqBCnrObject& record) const noexcept {
    for (std::size_t first = 0; first < size_; first += kSlabSize) {
        const zelqBCnrObject* const start = slot(first);
        // std::less orders pointers into different slabs, too.
        if (!std::less<>()(&record, start) && std::less<>()(&record, start + kSlabSize)) {
            return first + static_cast<std::size_t>(&record - start);
        }
    }
    return {};
}

std::optional<std::size_t> zelqLog::offsetOf(std::size_t index) const noexcept {
    if (index == 0) {
        return 0;
    }
    // An entry begins where the one before it ends. The address after the last byte of a segment
    // could be that of another one, so the last byte is looked up.
    const std::optional<std::size_t> last = file_.offsetOf(slot(index - 1)->entryEnd() - 1);
    return last.has_value() ? std::optional(*last + 1) : std::nullopt;
}

bool zelqLog::number(std::int32_t first) {
    if (numbered_ && first == firstNumber_) {
        return false;
    }
    std::int32_t next = first;
    forEach([&next](zelqBCnrObject& record) { record.setEntryIndex(next++); });
    firstNumber_ = first;
    return !std::exchange(numbered_, true);
}
