#include "output/zelqRecordFormatter.h"

#include <array>
#include <charconv>
#include <string_view>

#include "log/zelqLogFormat.h"
#include "output/zelqHexDump.h"

namespace {

constexpr std::size_t kAsterisks = 93;
constexpr std::size_t kSummaryTextWidth = 14;
constexpr std::size_t kSummaryNumberWidth = 4;

/// In the window: two summary lines and one with a blank before the dump; one with a blank, one of
/// asterisks and one with a blank behind it.
constexpr std::size_t kLinesBefore = 3;
constexpr std::size_t kLinesBehind = 3;

bool hasSummary(const zelqBCnrObject& record) {
    const zelqFormat::EntryKind kind = zelqFormat::entryLayout(record.entryType()).kind;
    return kind == zelqFormat::EntryKind::Error || kind == zelqFormat::EntryKind::Trace ||
           record.entryType() == zelqFormat::kMessageWithName;
}

zelqBlockChain blocksOf(const zelqBCnrObject& record, zelqAddressForm form) {
    return {record.expansionData(), record.blockCount(), form == zelqAddressForm::Reversed};
}

void appendText(std::string& text, std::string_view label, std::string_view value) {
    text += label;
    text += value;
    text.append(value.size() < kSummaryTextWidth ? kSummaryTextWidth - value.size() : 0, ' ');
}

/// The numbers of an entry are unsigned; the summary has always shown them as signed.
void appendNumber(std::string& text, std::string_view label, std::uint32_t value) {
    std::array<char, 16> digits{};
    const char* const end =
        std::to_chars(digits.begin(), digits.end(), static_cast<std::int32_t>(value)).ptr;
    const auto size = static_cast<std::size_t>(end - digits.data());
    text += label;
    text.append(size < kSummaryNumberWidth ? kSummaryNumberWidth - size : 0, ' ');
    text.append(digits.data(), size);
}

void appendDumpLine(const zelqDumpBlock& block, std::size_t number, std::string& text) {
    std::array<char, zelqDumpBlock::kLineSize> line;
    block.writeLine(number, line);
    text.append(line.data(), line.size());
}

}  // namespace

void zelqRecordFormatter::appendTimeLine(const zelqBCnrObject& record, std::string& text) {
    if (!hasSummary(record)) {
        return;
    }
    if (time_ != record.time()) {
        time_ = record.time();
        timeText_ = locale_.time(*time_);
    }
    appendText(text, "Time: ", timeText_);
    appendNumber(text, "   Pid: ", record.pid());
    appendNumber(text, "   Major Error: ", record.majorError());
    text += "   Function: ";
    record.summaryFunction().appendTo(text);
}

void zelqRecordFormatter::appendDateLine(const zelqBCnrObject& record, std::string& text) {
    if (!hasSummary(record)) {
        return;
    }
    if (date_ != record.date()) {
        date_ = record.date();
        zelqDate shown = *date_;
        if (shown.month < 2 || shown.month > 12) {
            shown.month = 1;  // here, and only here, a month that does not exist is January
        }
        dateText_ = locale_.shortDate(shown);
    }
    appendText(text, "Date: ", dateText_);
    appendNumber(text, "   Tid: ", record.tid());
    appendNumber(text, "   Minor Error: ", record.minorError());
    appendNumber(text, "   Detect Point: ", record.summaryDetectPoint());
}

void zelqRecordFormatter::appendSummary(const zelqBCnrObject& record, std::string& text) {
    appendTimeLine(record, text);
    text += '\n';
    appendDateLine(record, text);
    text += "\n\n";
}

void zelqRecordFormatter::appendListing(const zelqBCnrObject& record, zelqAddressForm form,
                                        std::string& text) {
    appendSummary(record, text);
    for (zelqBlockChain chain = blocksOf(record, form); !chain.atEnd();) {
        const zelqDumpBlock block = chain.next();
        for (std::size_t number = 0; number < block.lineCount(); ++number) {
            appendDumpLine(block, number, text);
            text += '\n';
        }
        text += '\n';
    }
    text += '\n';
    text.append(kAsterisks, '*');
    text += "\n\n";
}

std::size_t zelqRecordFormatter::lineCount(const zelqBCnrObject& record,
                                           zelqAddressForm form) noexcept {
    std::size_t count = kLinesBefore + kLinesBehind;
    for (zelqBlockChain chain = blocksOf(record, form); !chain.atEnd();) {
        count += chain.next().lineCount() + 1;
    }
    return count;
}

std::string zelqRecordFormatter::line(const zelqBCnrObject& record, zelqAddressForm form,
                                      std::size_t number) {
    std::string text;
    if (number < kLinesBefore) {
        switch (number) {
            case 0:
                appendTimeLine(record, text);
                return text;
            case 1:
                appendDateLine(record, text);
                return text;
            default:
                return " ";
        }
    }
    std::size_t left = number - kLinesBefore;
    for (zelqBlockChain chain = blocksOf(record, form); !chain.atEnd();) {
        const zelqDumpBlock block = chain.next();
        if (left < block.lineCount()) {
            appendDumpLine(block, left, text);
            return text;
        }
        left -= block.lineCount();
        if (left-- == 0) {
            return text;  // the empty line behind the block
        }
    }
    return left == 1 ? std::string(kAsterisks, '*') : " ";
}
