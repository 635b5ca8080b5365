#include "session/zelqLogCollection.h"

#include <algorithm>
#include <utility>

namespace {

bool isSlot(int slot) {
    return slot >= 0 && slot < zelqLogCollection::kSlots;
}

}  // namespace

const std::string& zelqLogCollection::logName(int slot) const noexcept {
    static const std::string kNone;
    return isSlot(slot) ? logNames_[static_cast<std::size_t>(slot)] : kNone;
}

bool zelqLogCollection::isNotLoaded(std::string_view name) const noexcept {
    return name.empty() || std::find(logNames_.begin(), logNames_.end(), name) == logNames_.end();
}

int zelqLogCollection::slotFor(std::string_view name) const noexcept {
    if (name.empty() || !isNotLoaded(name)) {
        return kNoSlot;
    }
    const auto free = std::find(logNames_.begin(), logNames_.end(), std::string_view{});
    return free == logNames_.end() ? kNoSlot : static_cast<int>(free - logNames_.begin());
}

int zelqLogCollection::assignLogSlot(std::string name) {
    const int slot = slotFor(name);
    if (slot != kNoSlot) {
        logNames_[static_cast<std::size_t>(slot)] = std::move(name);
    }
    return slot;
}

bool zelqLogCollection::clearLogSlot(int slot) {
    if (slot == kAllLogs) {
        logNames_.fill({});
        return true;
    }
    if (!isSlot(slot)) {
        return false;
    }
    logNames_[static_cast<std::size_t>(slot)].clear();
    return true;
}

void zelqLogCollection::append(std::shared_ptr<zelqLog> log, std::string name, int slot) {
    size_ += log->size();
    dataSources_.set(static_cast<std::size_t>(slot), log->pieces());
    logNames_[static_cast<std::size_t>(slot)] = std::move(name);
    logs_.push_back({slot, std::move(log)});
}

void zelqLogCollection::remove(int slot) noexcept {
    std::erase_if(logs_, [this, slot](const Entry& entry) {
        const bool goes = slot == kAllLogs || entry.slot == slot;
        if (goes) {
            size_ -= entry.log->size();
            dataSources_.set(static_cast<std::size_t>(entry.slot), nullptr);
        }
        return goes;
    });
    clearLogSlot(slot);
}

std::size_t zelqLogCollection::bytesKept() const noexcept {
    std::size_t bytes = 0;
    for (const Entry& entry : logs_) {
        bytes += entry.log->pieces() == nullptr ? entry.log->file().bytesRead() : 0;
    }
    return bytes;
}

zelqColumnExtremes zelqLogCollection::extremes() const noexcept {
    zelqColumnExtremes extremes;
    for (const Entry& entry : logs_) {
        extremes.merge(entry.log->extremes());
    }
    return extremes;
}

int zelqLogCollection::logCount() const noexcept {
    return static_cast<int>(std::count_if(logNames_.begin(), logNames_.end(),
                                          [](const std::string& name) { return !name.empty(); }));
}
