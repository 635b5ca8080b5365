#include "output/zelqRecordFormatter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

#include "log/zelqLogFormat.h"

namespace {

constexpr std::string_view kTimeLabel = "Time: ";
constexpr std::string_view kPidLabel = "   Pid: ";
constexpr std::string_view kMajorErrorLabel = "   Major Error: ";
constexpr std::string_view kFunctionLabel = "   Function: ";
constexpr std::size_t kAsterisks = 93;
const std::string kListingEnd = '\n' + std::string(kAsterisks, '*') + "\n\n";
constexpr std::size_t kSummaryTextWidth = 14;
constexpr std::size_t kSummaryNumberWidth = 4;

/// Lines of the window around the dump: two of summary and a blank one before it; a blank one, one
/// of asterisks and a blank one after it. A blank line holds one blank.
constexpr std::size_t kLinesBefore = zelqRecordFormatter::kDumpLine;
constexpr std::size_t kLinesAfter = 3;
constexpr std::size_t kAsterisksAfter = 1;

bool hasSummary(const zelqBCnrObject& record) {
    const zelqFormat::EntryKind kind = zelqFormat::entryLayout(record.entryType()).kind;
    return kind == zelqFormat::EntryKind::Error || kind == zelqFormat::EntryKind::Trace ||
           record.entryType() == zelqFormat::kMessageWithName;
}

char* put(std::string_view text, char* to) {
    return to + text.copy(to, text.size());
}

char* putText(std::string_view label, std::string_view value, char* to) {
    to = put(value, put(label, to));
    const std::size_t blanks =
        value.size() < kSummaryTextWidth ? kSummaryTextWidth - value.size() : 0;
    std::memset(to, ' ', blanks);
    return to + blanks;
}

using Digits = std::array<char, 16>;

/// The numbers of an entry are unsigned; the summary has always shown them as signed.
std::string_view numberText(std::uint32_t value, Digits& digits) {
    const char* const end =
        std::to_chars(digits.begin(), digits.end(), static_cast<std::int32_t>(value)).ptr;
    return {digits.data(), static_cast<std::size_t>(end - digits.data())};
}

char* putNumber(std::string_view label, std::uint32_t value, char* to) {
    to = put(label, to);
    char* const end = std::to_chars(to, to + sizeof(Digits), static_cast<std::int32_t>(value)).ptr;
    const auto size = static_cast<std::size_t>(end - to);
    if (size >= kSummaryNumberWidth) {
        return end;
    }
    const std::size_t blanks = kSummaryNumberWidth - size;
    std::memmove(to + blanks, to, size);
    std::memset(to, ' ', blanks);
    return to + kSummaryNumberWidth;
}

std::size_t numberWidth(std::uint32_t value) {
    Digits digits;
    return std::max(kSummaryNumberWidth, numberText(value, digits).size());
}

void appendDumpLine(const zelqDumpBlock& block, std::size_t number, std::string& text) {
    std::array<char, zelqDumpBlock::kLineSize> line;
    block.writeLine(number, line);
    text.append(line.data(), line.size());
}

}  // namespace

zelqBlockChain zelqRecordFormatter::blocksOf(const zelqBCnrObject& record, zelqAddressForm form) {
    const zelqRecordData data = data_.dataOf(record);
    return {data.bytes, data.isHere() ? record.blockCount() : std::size_t{0}, form};
}

char* zelqRecordFormatter::putTimeLine(const zelqBCnrObject& record, char* to) const {
    to = putText(kTimeLabel, timeText_, to);
    to = putNumber(kPidLabel, record.pid(), to);
    to = putNumber(kMajorErrorLabel, record.majorError(), to);
    to = put(kFunctionLabel, to);
    const zelqText function = record.summaryFunction();
    return put(function.end, put(function.start, to));
}

char* zelqRecordFormatter::putDateLine(const zelqBCnrObject& record, char* to) const {
    to = putText("Date: ", dateText_, to);
    to = putNumber("   Tid: ", record.tid(), to);
    to = putNumber("   Minor Error: ", record.minorError(), to);
    return putNumber("   Detect Point: ", record.summaryDetectPoint(), to);
}

/// Makes the texts of the record's time and date, which entries that follow each other tend to
/// share, and returns a size that neither summary line exceeds.
std::size_t zelqRecordFormatter::prepareSummary(const zelqBCnrObject& record) {
    if (time_ != record.time()) {
        time_ = record.time();
        timeText_ = locale_.time(*time_);
    }
    if (date_ != record.date()) {
        date_ = record.date();
        zelqDate shown = *date_;
        if (shown.month < 2 || shown.month > 12) {
            shown.month = 1;  // here, and only here, a month that does not exist is January
        }
        dateText_ = locale_.shortDate(shown);
    }
    constexpr std::size_t kLabelsAndNumbers = 256;
    return kLabelsAndNumbers + timeText_.size() + dateText_.size() +
           record.summaryFunction().size();
}

char* zelqRecordFormatter::putSummary(const zelqBCnrObject& record, char* to) const {
    const bool shows = hasSummary(record);
    to = shows ? putTimeLine(record, to) : to;
    *to++ = '\n';
    to = shows ? putDateLine(record, to) : to;
    return put("\n\n", to);
}

void zelqRecordFormatter::appendSummary(const zelqBCnrObject& record, zelqTextBuffer& text) {
    char* const start = text.room(2 * prepareSummary(record));
    text.add(static_cast<std::size_t>(putSummary(record, start) - start));
}

void zelqRecordFormatter::appendListing(const zelqBCnrObject& record, zelqAddressForm form,
                                        zelqTextBuffer& text) {
    appendSummary(record, text);
    appendDump(record, form, text);
    text.append(kListingEnd);
}

zelqDataState zelqRecordFormatter::appendDump(const zelqBCnrObject& record, zelqAddressForm form,
                                              zelqTextBuffer& text) {
    const zelqRecordData data = data_.dataOf(record);
    if (!data.isHere()) {
        ++withoutData_;
        text.append(zelqDataStates::text(data.state));
        text.append("\n\n");
        return data.state;
    }
    for (zelqBlockChain chain(data.bytes, record.blockCount(), form); !chain.atEnd();) {
        const zelqDumpBlock block = chain.next();
        text.add(block.writeLines(text.room(block.linesSize())));
    }
    return data.state;
}

std::size_t zelqRecordFormatter::mostListingText(const zelqBCnrObject& record) noexcept {
    constexpr std::size_t kLine = zelqDumpBlock::kLineSize + 1;
    // A summary line is shorter than a line of the dump but for a function's name, which comes out
    // of the header.
    constexpr std::size_t kAroundDump =
        2 * kLine + std::tuple_size_v<zelqHeaderBuffer> + kAsterisks + 6;
    // A block has a part of a line at each of its ends, and an empty line.
    return kAroundDump + record.blockCount() * (2 * kLine + 1) +
           record.dataSize() / zelqDumpBlock::kBytesPerLine * kLine;
}

std::size_t zelqRecordFormatter::lineCount(const zelqBCnrObject& record, zelqAddressForm form,
                                           const zelqDataSources& sources) noexcept {
    constexpr std::size_t kAroundDump = kLinesBefore + kLinesAfter;
    const zelqDataPlace& place = record.dataPlace();
    if (!place.isInFile()) {
        return kAroundDump + zelqDumpLines::count({place.address(), record.dataSize()},
                                                  record.blockCount(), form);
    }
    if (const auto lines = place.lines()) {
        return kAroundDump + lines->in(form);
    }
    const auto& log = sources.of(static_cast<std::size_t>(record.logIndex()));
    return kAroundDump + (log != nullptr ? log->linesAt(place).in(form) : 0);
}

zelqDumpCursor& zelqRecordFormatter::cursorOf(const zelqBCnrObject& record,
                                              std::span<const std::byte> data,
                                              zelqAddressForm form) {
    if (!place_ || place_->record != &record || place_->data != data.data() ||
        place_->form != form) {
        place_ = Place{.record = &record,
                       .data = data.data(),
                       .form = form,
                       .cursor = zelqDumpCursor({data, record.blockCount(), form})};
    }
    return place_->cursor;
}

zelqRecordFormatter::Line zelqRecordFormatter::line(const zelqBCnrObject& record,
                                                    zelqAddressForm form, std::size_t number) {
    line_.clear();
    if (number <= 1) {
        if (!hasSummary(record)) {
            return {};
        }
        line_.resize(prepareSummary(record));
        const char* const end =
            number == 0 ? putTimeLine(record, line_.data()) : putDateLine(record, line_.data());
        line_.resize(static_cast<std::size_t>(end - line_.data()));
    }
    if (number == 0) {
        const std::string_view text = line_;
        return {.before = text.substr(0, kTimeLabel.size()),
                .time = text.substr(kTimeLabel.size(), timeText_.size()),
                .after = text.substr(kTimeLabel.size() + timeText_.size())};
    }
    if (number == 1) {
        return {.before = line_, .time = {}, .after = {}};
    }
    return dumpLine(record, form, number);
}

/// A line after the summary lines.
zelqRecordFormatter::Line zelqRecordFormatter::dumpLine(const zelqBCnrObject& record,
                                                        zelqAddressForm form, std::size_t number) {
    const zelqRecordData data = data_.dataOf(record);
    if (number < kLinesBefore) {  // NOLINT(bugprone-branch-clone): as the last line
        line_ += ' ';
    } else if (!data.isHere()) {
        return {.before = {}, .time = {}, .after = {}, .state = data.state};
    } else if (zelqDumpCursor& dump = cursorOf(record, data.bytes, form);
               dump.seek(number - kLinesBefore)) {
        if (dump.lineOfBlock() < dump.block().lineCount()) {
            appendDumpLine(dump.block(), dump.lineOfBlock(), line_);
        }
    } else if (number - kLinesBefore - dump.end() == kAsterisksAfter) {
        line_.assign(kAsterisks, '*');
    } else {
        line_ += ' ';
    }
    return {.before = line_, .time = {}, .after = {}};
}

std::size_t zelqRecordFormatter::longestTime() {
    if (longestTime_ == 0) {
        // Only the hour and the half of the day differ in length from one time to another.
        for (std::uint32_t hour = 0; hour < 24; ++hour) {
            longestTime_ = std::max(longestTime_, locale_.time({hour * 3600 + 3599}).size());
        }
    }
    return longestTime_;
}

std::size_t zelqRecordFormatter::longestLine(const zelqBCnrObject& record) {
    if (!hasSummary(record)) {
        return kDumpWidth;
    }
    // Counted, not rendered: "Expand all" asks it for each of millions of records.
    return std::max(kDumpWidth, kTimeLabel.size() + std::max(kSummaryTextWidth, longestTime()) +
                                    kPidLabel.size() + numberWidth(record.pid()) +
                                    kMajorErrorLabel.size() + numberWidth(record.majorError()) +
                                    kFunctionLabel.size() + record.summaryFunction().size());
}
