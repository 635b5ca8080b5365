#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "log/zelqDataPlace.h"
#include "log/zelqEntryHeader.h"
#include "log/zelqLogFormat.h"
#include "log/zelqTextTable.h"
#include "log/zelqTimestamp.h"

/// The mark of the expandability column. `Blank` is what expanding or collapsing leaves on a record
/// that has no expansion data.
enum class zelqExpandMark : std::uint8_t { None, Collapsed, Expanded, Blank };

/// The icon of an entry type; the values are the icons' names in the icon module.
enum class zelqRecordIcon : std::uint8_t { Message = 1, Error = 2, Trace = 3, Unknown = 6 };

/// One log entry, shown as one row. Records live in the slabs of their log and never move. They
/// know where their data are; zelqDataReader gives the bytes. They are made on a worker thread.
/// Afterwards only the GUI thread changes them, except by nextAddressForm().
class zelqBCnrObject {
public:
    /// Where an entry came from and what the reader found after its header.
    struct Origin {
        std::uint16_t logSlot;
        std::uint16_t
            entryNumber;  ///< starts again at 0 after 65535; set anew when the record is shown
        std::uint16_t blockCount;
        /// Where the expansion data begin; of an entry that ends inside its header, where the entry
        /// ends. The entry ends after expansionLength bytes from here in both cases.
        zelqDataPlace data;
        std::uint16_t expansionLength;
        bool hasExpansion = true;  ///< false if the entry ends inside its header
    };

    /// The lists that a record can be in, as bits; `Marked` is for the course of one operation,
    /// `Bookmarked` says that the user has set a mark on it.
    enum Membership : std::uint8_t {
        InContainer = 1,
        InHiddenContainer = 2,
        Marked = 4,
        Bookmarked = 8
    };

    /// The text that an entry's record keeps of its header.
    struct HeaderText {
        std::string_view text;     ///< in the buffer
        std::size_t position = 0;  ///< offset in the entry
    };
    [[nodiscard]] static HeaderText textOf(const zelqHeaderBuffer& header) noexcept;
    [[nodiscard]] static zelqTimestamp timestampOf(const zelqHeaderBuffer& header) noexcept;
    /// The offset in the entry at which all that a record shows of its header has ended.
    [[nodiscard]] static std::size_t headerEnd(const zelqHeaderBuffer& header) noexcept;

    /// `text`: where textOf(header) is kept.
    zelqBCnrObject(const zelqHeaderBuffer& header, const Origin& origin, zelqTextTable::Place text);

    [[nodiscard]] std::uint16_t entryType() const noexcept { return entryType_; }
    /// "Error", "Trace", "Message" or "Unknown".
    [[nodiscard]] std::string_view iconText() const noexcept;
    [[nodiscard]] zelqRecordIcon icon() const noexcept;

    [[nodiscard]] zelqTimestamp timestamp() const noexcept { return timestamp_; }
    [[nodiscard]] zelqDate date() const noexcept { return timestamp_.date(); }
    [[nodiscard]] zelqTime time() const noexcept { return timestamp_.time(); }
    [[nodiscard]] std::uint32_t pid() const noexcept { return pid_; }
    [[nodiscard]] std::uint32_t tid() const noexcept { return tid_; }
    [[nodiscard]] std::uint32_t majorError() const noexcept { return majorError_; }
    [[nodiscard]] std::uint32_t minorError() const noexcept { return minorError_; }
    [[nodiscard]] std::uint32_t detectPoint() const noexcept {
        return entryType_ == zelqFormat::kMessageWithName ? 0 : detectPoint_;
    }
    /// "Entry", "Exit", "API Call", "DEBUG" or empty.
    [[nodiscard]] std::string_view detectPointType() const noexcept;
    /// The function's name, bytes as the log has them; empty for all but Error and Trace.
    [[nodiscard]] zelqText function() const noexcept {
        return entryType_ == zelqFormat::kMessageWithName ? zelqText{} : summaryFunction();
    }

    /// What the summary lines print as detect point and function. For an entry of type 0x2002 these
    /// are bytes out of the middle of its name, which no column shows.
    [[nodiscard]] std::uint32_t summaryDetectPoint() const noexcept { return detectPoint_; }
    [[nodiscard]] zelqText summaryFunction() const noexcept { return zelqTextTable::textAt(text_); }

    /// The log's slot, 0 to 99.
    [[nodiscard]] int logIndex() const noexcept { return logIndex_; }
    /// The entry's number: in its file at first, in what is shown later.
    [[nodiscard]] std::int32_t entryIndex() const noexcept {
        return __atomic_load_n(&entryIndex_, __ATOMIC_RELAXED);
    }
    void setEntryIndex(std::int32_t index) noexcept {
        __atomic_store_n(&entryIndex_, index, __ATOMIC_RELAXED);
    }

    /// True also with no data at all: only a record whose entry ends inside its header has false.
    [[nodiscard]] bool hasExpansion() const noexcept {
        return (detectPointCode_ & kEndsInHeader) == 0;
    }
    /// Where the expansion data are, and how many bytes. The entry ends with them.
    [[nodiscard]] const zelqDataPlace& dataPlace() const noexcept { return data_; }
    [[nodiscard]] std::size_t dataSize() const noexcept { return expansionLength_; }
    [[nodiscard]] std::uint16_t blockCount() const noexcept { return blockCount_; }

    /// One thread may ask while another sets it: records are expanded while they are searched.
    [[nodiscard]] zelqExpandMark expandMark() const noexcept {
        return static_cast<zelqExpandMark>(__atomic_load_n(&expandMark_, __ATOMIC_RELAXED));
    }
    void setExpandMark(zelqExpandMark mark) noexcept {
        __atomic_store_n(&expandMark_, static_cast<std::uint8_t>(mark), __ATOMIC_RELAXED);
    }
    [[nodiscard]] bool expanded() const noexcept {
        return expandMark() == zelqExpandMark::Expanded;
    }
    /// True if opening its row expands it.
    [[nodiscard]] bool opensToExpand() const noexcept { return hasExpansion() && !expanded(); }
    /// The mark as text: "+" collapsed, "-" expanded, " " or empty.
    [[nodiscard]] std::string_view expandMarkText() const noexcept;

    /// The form of the next dump. While a listing is written only its threads may ask, for they
    /// change it.
    [[nodiscard]] zelqAddressForm addressForm() const noexcept {
        return expansionSwapped_ ? zelqAddressForm::True : zelqAddressForm::Reversed;
    }
    /// The same, and the dump counts as made.
    zelqAddressForm nextAddressForm() noexcept {
        const zelqAddressForm form = addressForm();
        expansionSwapped_ = true;
        return form;
    }

    /// Where the record is in the tree of expanded records, which alone sets and reads this.
    [[nodiscard]] std::uint32_t expansionNode() const noexcept { return expansionNode_; }
    void setExpansionNode(std::uint32_t node) noexcept { expansionNode_ = node; }

    [[nodiscard]] bool isIn(Membership list) const noexcept { return (memberships() & list) != 0; }
    /// One thread at a time.
    void setIn(Membership list, bool in) noexcept {
        const int changed = in ? memberships() | list : memberships() & ~list;
        __atomic_store_n(&membership_, static_cast<std::uint8_t>(changed), __ATOMIC_RELAXED);
    }

    [[nodiscard]] bool selected() const noexcept { return selected_; }
    void setSelected(bool selected) noexcept { selected_ = selected; }

private:
    static constexpr std::uint8_t kEndsInHeader = 0x80;

    [[nodiscard]] std::uint8_t memberships() const noexcept {
        return __atomic_load_n(&membership_, __ATOMIC_RELAXED);
    }

    zelqTimestamp timestamp_;
    zelqDataPlace data_;
    zelqTextTable::Place text_;  ///< the function's name, or what the summary shows instead
    std::uint32_t pid_;
    std::uint32_t tid_;
    std::uint32_t majorError_ = 0;
    std::uint32_t minorError_ = 0;
    std::uint32_t detectPoint_ = 0;
    std::int32_t entryIndex_;
    std::uint32_t expansionNode_ = 0;
    std::uint16_t entryType_;
    std::uint16_t expansionLength_;
    std::uint16_t blockCount_;
    std::uint8_t logIndex_;
    /// 1 to 4, 0 for every code without a text; and kEndsInHeader.
    std::uint8_t detectPointCode_ = 0;
    std::uint8_t expandMark_;  ///< a zelqExpandMark; a number, for clang's atomic operations
    std::uint8_t membership_ = 0;
    bool selected_ = false;
    bool expansionSwapped_ = false;  ///< the record was dumped, to whatever place
};

static_assert(sizeof(zelqBCnrObject) <= 64, "millions of records: keep one within a cache line");
