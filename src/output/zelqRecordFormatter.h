#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "log/zelqBCnrObject.h"
#include "log/zelqDataReader.h"
#include "output/zelqHexDump.h"
#include "output/zelqLocaleText.h"
#include "output/zelqTextBuffer.h"

/// Makes the text of records: two summary lines and the hex dump of the expansion data. Lines are
/// bytes; a function's name stands in them as the log has it. Only reads the records, so that
/// several threads, each with a formatter of its own, can work on the same ones.
class zelqRecordFormatter {
public:
    /// `locale` must outlive the formatter. `data`: what gives the data of the records.
    explicit zelqRecordFormatter(const zelqLocaleText& locale, zelqDataReader data = {})
        : locale_(locale), data_(std::move(data)) {}

    /// Appends the two summary lines, which are empty for entry types that have none, and an empty
    /// line, all with their "\n".
    void appendSummary(const zelqBCnrObject& record, zelqTextBuffer& text);

    /// Appends the record's text in a listing, every line with its "\n".
    void appendListing(const zelqBCnrObject& record, zelqAddressForm form, zelqTextBuffer& text);

    /// Appends the lines of the dump that a listing has, each with its "\n", and an empty line
    /// after each block. They are ASCII. In the place of data that are not here, a line that says
    /// so, and an empty one. Returns whether they were here.
    zelqDataState appendDump(const zelqBCnrObject& record, zelqAddressForm form,
                             zelqTextBuffer& text);
    /// The number of records that were appended without their data.
    [[nodiscard]] std::uint64_t countWithoutData() const noexcept { return withoutData_; }

    /// About as many bytes as appendListing() appends, and rather more.
    [[nodiscard]] static std::size_t mostListingText(const zelqBCnrObject& record) noexcept;

    /// Characters of a line of the dump. Of all lines only a first summary line can be longer, by a
    /// long name of a function or a long time.
    static constexpr std::size_t kDumpWidth = zelqDumpBlock::kLineSize;

    /// A line in the expanded-data window, without a line end. It is Latin-1, except for the time,
    /// which is in the locale's character set. The text belongs to the formatter and is valid until
    /// its next call.
    struct Line {
        std::string_view before;  ///< the whole line if it has no time
        std::string_view time;
        std::string_view after;
        /// If the line is made of data that are not here, why, and there is no text.
        zelqDataState state = zelqDataState::Here;
    };

    /// How many lines the record has in the expanded-data window. Reads no file. `sources`: those
    /// of the record's log, if its data are in a file.
    [[nodiscard]] static std::size_t lineCount(const zelqBCnrObject& record, zelqAddressForm form,
                                               const zelqDataSources& sources) noexcept;
    /// The blocks of a record, whose dump begins at line kDumpLine. They are valid until the next
    /// call; there are none of data that are not here.
    [[nodiscard]] zelqBlockChain blocksOf(const zelqBCnrObject& record, zelqAddressForm form);
    static constexpr std::size_t kDumpLine = 3;
    /// One of these lines, counted from 0 and below lineCount(). The formatter remembers the place,
    /// so that lines of one record in ascending order go through its blocks once; an earlier line
    /// goes through them from the first block on.
    [[nodiscard]] Line line(const zelqBCnrObject& record, zelqAddressForm form, std::size_t number);
    /// Drops the remembered place. To be called when records may have been freed or changed:
    /// another one at the same address would be taken for the record that was there.
    void forget() noexcept { place_.reset(); }
    /// What gives the data of the records.
    [[nodiscard]] zelqDataReader& data() noexcept { return data_; }

    /// No line of the record has more characters than this. The time is assumed to be as long as
    /// the locale's longest one. At least kDumpWidth.
    [[nodiscard]] std::size_t longestLine(const zelqBCnrObject& record);

private:
    struct Place {
        const zelqBCnrObject* record;
        const std::byte* data;
        zelqAddressForm form;
        zelqDumpCursor cursor;
    };

    // After prepareSummary(). Without line ends; the end of what they write is returned.
    [[nodiscard]] char* putTimeLine(const zelqBCnrObject& record, char* to) const;
    [[nodiscard]] char* putDateLine(const zelqBCnrObject& record, char* to) const;
    [[nodiscard]] char* putSummary(const zelqBCnrObject& record, char* to) const;
    [[nodiscard]] std::size_t prepareSummary(const zelqBCnrObject& record);
    zelqDumpCursor& cursorOf(const zelqBCnrObject& record, std::span<const std::byte> data,
                             zelqAddressForm form);
    [[nodiscard]] Line dumpLine(const zelqBCnrObject& record, zelqAddressForm form,
                                std::size_t number);
    [[nodiscard]] std::size_t longestTime();

    const zelqLocaleText& locale_;
    zelqDataReader data_;
    std::uint64_t withoutData_ = 0;
    // Entries that follow each other tend to share these.
    std::optional<zelqTime> time_;
    std::string timeText_;
    std::optional<zelqDate> date_;
    std::string dateText_;

    std::optional<Place> place_;
    std::string line_;             ///< the text of the last line that was asked for
    std::size_t longestTime_ = 0;  ///< 0 until it is needed
};
