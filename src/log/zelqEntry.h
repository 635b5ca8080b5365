#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>

#include "log/zelqBCnrObject.h"
#include "log/zelqEntryHeader.h"
#include "log/zelqEntryPlace.h"

/// One entry as it passes by: what a reader that keeps nothing knows of it. All that it refers to
/// is valid until the next entry is read. One thread at a time.
class zelqEntry {
public:
    std::size_t input = 0;  ///< which of the logs that are read it is from, counted from 0
    zelqEntryPlace place{};
    zelqEntryHeader header{};   ///< the whole buffer as it stood for this entry
    std::size_t headerEnd = 0;  ///< where the entry's own bytes of the header end, from its start
    zelqBCnrObject::Origin origin{};
    std::span<std::byte> bytes{};  ///< of the entry, as many as place.length says

    zelqEntry() = default;
    zelqEntry(const zelqEntry&) = delete;
    zelqEntry& operator=(const zelqEntry&) = delete;

    /// Its data, as many of the bytes as the record says.
    [[nodiscard]] std::span<const std::byte> data() const noexcept {
        return {origin.data.address(), origin.expansionLength};
    }
    /// The entry as a record, made when it is asked for the first time. Its texts have no key.
    [[nodiscard]] const zelqBCnrObject& record() const;
    /// Its time, without making a record.
    [[nodiscard]] zelqTimestamp timestamp() const noexcept {
        return zelqBCnrObject::timestampOf(header.buffer);
    }
    /// True if the record shows something that the entries before left in the header buffer, or
    /// that follows the entry in the file: alone, its bytes would read differently.
    [[nodiscard]] bool inherits() const noexcept {
        return headerEnd < zelqBCnrObject::headerEnd(header.buffer);
    }
    /// To be called when another entry takes this one's place.
    void forgetRecord() noexcept { record_.reset(); }

private:
    mutable std::optional<zelqBCnrObject> record_;
    mutable zelqPassingText text_;
};

/// Takes entries one by one; false ends the reading.
using zelqEntryVisit = std::function<bool(const zelqEntry&)>;
