#include "output/zelqCsv.h"

#include "log/zelqExpansionBlocks.h"
#include "log/zelqUtf8.h"
#include "output/zelqDecimal.h"
#include "output/zelqHexText.h"
#include "output/zelqIsoTime.h"
#include "output/zelqTerminalText.h"

namespace {

constexpr std::string_view kHeader =
    "log,entry,offset,code,type,time,year,month,day,hour,minute,second,fraction,pid,tid,"
    "major_error,minor_error,detect_point,detect_point_type,function,data_length,blocks";

void appendField(std::uint64_t value, std::string& text) {
    zelqDecimal::append(value, text);
    text += ',';
}

}  // namespace

void zelqCsv::appendHeader(std::string& text) {
    text += kHeader;
    if (options_.data) {
        text += ",data";
    }
    appendLineEnd(text);
}

void zelqCsv::append(const zelqWrittenEntry& entry, std::string& text) {
    const zelqBCnrObject& record = entry.record;
    if (log_.empty() || entry.log != givenLog_) {
        givenLog_ = entry.log;
        log_.clear();
        appendText(zelqUtf8::wellFormed(entry.log), log_);
        log_ += ',';
    }
    text += log_;
    appendField(entry.place.number, text);
    appendField(entry.place.offset, text);
    appendField(record.entryType(), text);
    text += record.iconText();
    text += ',';
    appendTime(record.timestamp(), text);
    for (const std::uint32_t value : {record.pid(), record.tid(), record.majorError(),
                                      record.minorError(), record.detectPoint()}) {
        appendField(value, text);
    }
    appendText(record.detectPointType(), text);
    text += ',';
    function_.clear();
    const zelqText function = record.function();
    zelqUtf8::appendLatin1(function.start, function_);
    zelqUtf8::appendLatin1(function.end, function_);
    appendText(function_, text);
    text += ',';
    appendField(entry.data.size(), text);
    zelqDecimal::append(record.blockCount(), text);
    if (options_.data) {
        text += ',';
        appendData(entry, text);
    }
    appendLineEnd(text);
}

void zelqCsv::appendText(std::string_view value, std::string& text) const {
    if (options_.forTerminal) {
        appendQuoted(zelqTerminalText::escaped(value), text);
    } else {
        appendQuoted(value, text);
    }
}

/// Appends a text with quotes if it needs them.
void zelqCsv::appendQuoted(std::string_view value, std::string& text) const {
    constexpr std::string_view kFormulaStarts = "=+-@\t\r\n";
    const bool isFormula =
        options_.safe && !value.empty() && kFormulaStarts.find(value[0]) != value.npos;
    if (!isFormula && !value.empty() && value.find_first_of(",\"\r\n") == value.npos) {
        text += value;
        return;
    }
    text += '"';
    if (isFormula) {
        text += '\'';
    }
    for (const char character : value) {
        text.append(character == '"' ? 2 : 1, character);
    }
    text += '"';
}

void zelqCsv::appendTime(zelqTimestamp time, std::string& text) {
    if (zelqIsoTime::hasDate(time)) {
        zelqIsoTime::append(time, text);
    }
    text += ',';
    for (const unsigned value :
         {unsigned{time.date().year}, unsigned{time.date().month}, unsigned{time.date().day},
          unsigned{time.hour()}, unsigned{time.minute()}, unsigned{time.second()},
          unsigned{time.fraction()}}) {
        appendField(value, text);
    }
}

void zelqCsv::appendData(const zelqWrittenEntry& entry, std::string& text) {
    bool first = true;
    for (zelqExpansionBlocks blocks(entry.data, entry.record.blockCount()); !blocks.atEnd();) {
        const zelqExpansionBlock block = blocks.next();
        if (!first) {
            text += ' ';
        }
        first = false;
        zelqDecimal::append(block.address, text);
        text += ':';
        zelqHexText::append(block.data, text);
    }
    if (first) {
        text += "\"\"";
    }
}
