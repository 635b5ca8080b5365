#include "output/zelqJsonLines.h"

#include "log/zelqExpansionBlocks.h"
#include "log/zelqUtf8.h"
#include "output/zelqDecimal.h"
#include "output/zelqHexText.h"
#include "output/zelqIsoTime.h"
#include "output/zelqJsonText.h"

// The names of the fields and what stands between them are written as they are: a writer that goes
// through them character by character takes twice the time for a log.

namespace {

void appendField(std::string_view start, std::uint64_t value, std::string& text) {
    text += start;
    zelqDecimal::append(value, text);
}

void appendTime(zelqTimestamp time, std::string& text) {
    if (zelqIsoTime::hasDate(time)) {
        text += R"(","time":")";
        zelqIsoTime::append(time, text);
        text += '"';
    } else {
        text += R"(","time":null)";
    }
    appendField(R"(,"year":)", time.date().year, text);
    appendField(R"(,"month":)", time.date().month, text);
    appendField(R"(,"day":)", time.date().day, text);
    appendField(R"(,"hour":)", time.hour(), text);
    appendField(R"(,"minute":)", time.minute(), text);
    appendField(R"(,"second":)", time.second(), text);
    appendField(R"(,"fraction":)", time.fraction(), text);
}

}  // namespace

void zelqJsonLines::append(const zelqWrittenEntry& entry, std::string& text) {
    const zelqBCnrObject& record = entry.record;
    if (log_.empty() || entry.log != givenLog_) {
        givenLog_ = entry.log;
        log_ = R"({"log":)";
        zelqJsonText::append(zelqUtf8::wellFormed(entry.log), options_.ascii, log_);
    }
    text += log_;
    appendField(R"(,"entry":)", entry.place.number, text);
    appendField(R"(,"offset":)", entry.place.offset, text);
    appendField(R"(,"code":)", record.entryType(), text);
    text += R"(,"type":")";
    text += record.iconText();
    appendTime(record.timestamp(), text);
    appendField(R"(,"pid":)", record.pid(), text);
    appendField(R"(,"tid":)", record.tid(), text);
    appendField(R"(,"major_error":)", record.majorError(), text);
    appendField(R"(,"minor_error":)", record.minorError(), text);
    appendField(R"(,"detect_point":)", record.detectPoint(), text);
    text += R"(,"detect_point_type":")";
    text += record.detectPointType();
    text += R"(","function":)";
    appendFunction(record.function(), text);
    appendField(R"(,"data_length":)", entry.data.size(), text);
    appendField(R"(,"blocks":)", record.blockCount(), text);
    if (options_.data) {
        appendData(entry, text);
    }
    text += "}\n";
}

void zelqJsonLines::appendFunction(const zelqText& name, std::string& text) {
    function_.clear();
    zelqUtf8::appendLatin1(name.start, function_);
    zelqUtf8::appendLatin1(name.end, function_);
    zelqJsonText::append(function_, options_.ascii, text);
}

void zelqJsonLines::appendData(const zelqWrittenEntry& entry, std::string& text) {
    text += R"(,"data":[)";
    std::string_view start = R"({"address":)";
    for (zelqExpansionBlocks blocks(entry.data, entry.record.blockCount()); !blocks.atEnd();) {
        const zelqExpansionBlock block = blocks.next();
        appendField(start, block.address, text);
        text += R"(,"bytes":")";
        zelqHexText::append(block.data, text);
        text += "\"}";
        start = R"(,{"address":)";
    }
    text += ']';
}
