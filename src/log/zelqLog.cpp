#include "log/zelqLog.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <new>

#include "log/zelqLogDecoder.h"

namespace {

/// The number of slabs after which the system is asked whether it has memory for as many again.
constexpr std::size_t kSlabsBetweenLooks = 8;

}  // namespace

void zelqLog::append(zelqLogDecoder& decoder, std::span<std::byte> bytes, bool complete,
                     const std::stop_token& stop) {
    const std::uint64_t start = decoder.position();
    std::uint64_t nextLook = start;  // at the stop token
    for (std::uint64_t done = 0; done < bytes.size(); done = decoder.position() - start) {
        if (start + done >= nextLook) {
            if (stop.stop_requested()) {
                return;
            }
            nextLook = start + done + kStopInterval;
        }
        if (!decoder.decode(bytes.subspan(done), complete)) {
            return;
        }
        append(decoder.entry());
    }
}

void zelqLog::append(const zelqEntry& entry) {
    if (size_ == slabs_.size() * kSlabSize) {
        addSlab();
    }
    const auto [text, position] = zelqBCnrObject::textOf(entry.header.buffer);
    zelqBCnrObject::Origin origin = entry.origin;
    if (pieces_ != nullptr) {
        origin.data = pieces_->placeOf(entry);
    }
    zelqBCnrObject* const record =
        std::construct_at(slot(size_), entry.header.buffer, origin, texts_.intern(text, position));
    ++size_;
    extremes_.note(*record);
    if (!record->hasExpansion()) {
        unexpandable_.push_back(record);
    }
}

zelqLogPieces& zelqLog::readOnDemand() {
    zelqDescriptor file = file_.release();
    file_.setStatus({});
    clear();
    pieces_ = std::make_shared<zelqLogPieces>(std::move(file), file_.size());
    return *pieces_;
}

void zelqLog::addSlab() {
    constexpr std::size_t kSlabBytes = kSlabSize * sizeof(zelqBCnrObject);
    if (slabs_.size() % kSlabsBetweenLooks == kSlabsBetweenLooks - 1) {
        const std::size_t ofFile = pieces_ == nullptr ? file_.bytesToCome() : 0;
        zelqHeap::require(ofFile + kSlabsBetweenLooks * kSlabBytes);
    }
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
    if (pieces_ != nullptr) {
        pieces_->finish();
        file_.setStatus(pieces_->status());
    }
    texts_.forget();
}

void zelqLog::clear() noexcept {
    slabs_.clear();
    texts_.clear();
    extremes_ = {};
    unexpandable_.clear();
    size_ = 0;
    file_.clear();
    pieces_.reset();
}

std::optional<zelqFinding> zelqLog::noteChange() {
    const auto change = pieces_ != nullptr ? pieces_->change() : std::nullopt;
    if (!change.has_value() || hasNotedChange_) {
        return {};
    }
    // The first record whose data end after the change.
    std::size_t entry = 0;
    for (std::size_t left = size_; left != 0;) {
        const std::size_t half = left / 2;
        const zelqBCnrObject& record = *slot(entry + half);
        const bool isBefore = record.dataPlace().offset() + record.dataSize() <= change->offset;
        entry += isBefore ? half + 1 : 0;
        left = isBefore ? left - half - 1 : half;
    }
    const zelqFinding finding{.kind = change->state == zelqDataState::Changed
                                          ? zelqFinding::Kind::LogChanged
                                          : zelqFinding::Kind::LogUnreadable,
                              .entry = entry,
                              .offset = change->offset};
    auto findings = std::make_shared<zelqLogFindings>(*findings_);
    findings->add(finding);
    findings_ = std::move(findings);
    hasNotedChange_ = true;
    return finding;
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
    // An entry begins where the one before it ends.
    const zelqDataPlace& data = slot(index - 1)->dataPlace();
    const std::size_t size = slot(index - 1)->dataSize();
    if (data.isInFile()) {
        return data.offset() + size;
    }
    // The address after the last byte of a segment could be that of another one, so the last byte
    // is looked up.
    const std::optional<std::size_t> last = file_.offsetOf(data.address() + size - 1);
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
