#include "output/zelqJsonLines.h"

#ifdef __SSE2__
#define RAPIDJSON_SSE2  // NOLINT: asks the library to look for what it escapes 16 bytes at a time
#endif
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "log/zelqExpansionBlocks.h"
#include "output/zelqHexText.h"
#include "output/zelqIsoTime.h"
#include "output/zelqUtf8.h"

struct zelqJsonLines::Form {
    Form() = default;
    virtual ~Form() = default;
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    virtual void append(const zelqWrittenEntry& entry, std::string& text) = 0;
};

/// `Encoding`: of what is written.
template <typename Encoding>
struct zelqJsonLines::FormOf : Form {
    explicit FormOf(bool withData) : withData_(withData) {}

    void append(const zelqWrittenEntry& entry, std::string& text) override {
        buffer_.Clear();
        writer_.Reset(buffer_);
        writer_.StartObject();
        writePlace(entry);
        writeHeader(entry.record);
        writeData(entry.record);
        writer_.EndObject();
        text.append(buffer_.GetString(), buffer_.GetSize());
        text += '\n';
    }

private:
    template <std::size_t Size>
    void key(const char (&name)[Size]) {  // NOLINT(*-avoid-c-arrays): the size of a literal
        writer_.Key(name, Size - 1);
    }
    template <std::size_t Size>
    void number(const char (&name)[Size], std::uint64_t value) {  // NOLINT(*-avoid-c-arrays)
        key(name);
        writer_.Uint64(value);
    }
    void string(std::string_view value) {
        writer_.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    }

    void writePlace(const zelqWrittenEntry& entry) {
        if (entry.log != givenLog_) {
            givenLog_ = entry.log;
            log_ = zelqUtf8::wellFormed(entry.log);
        }
        key("log");
        string(log_);
        number("entry", entry.place.number);
        number("offset", entry.place.offset);
    }

    void writeHeader(const zelqBCnrObject& record) {
        number("code", record.entryType());
        key("type");
        string(record.iconText());
        key("time");
        writeTime(record.timestamp());
        number("pid", record.pid());
        number("tid", record.tid());
        number("major_error", record.majorError());
        number("minor_error", record.minorError());
        number("detect_point", record.detectPoint());
        key("detect_point_type");
        string(record.detectPointType());
        key("function");
        scratch_.clear();
        const zelqText function = record.function();
        zelqUtf8::appendLatin1(function.start, scratch_);
        zelqUtf8::appendLatin1(function.end, scratch_);
        string(scratch_);
    }

    void writeTime(zelqTimestamp time) {
        if (zelqIsoTime::hasDate(time)) {
            scratch_.clear();
            zelqIsoTime::append(time, scratch_);
            string(scratch_);
        } else {
            writer_.Null();
        }
        number("year", time.date().year);
        number("month", time.date().month);
        number("day", time.date().day);
        number("hour", time.hour());
        number("minute", time.minute());
        number("second", time.second());
        number("fraction", time.fraction());
    }

    void writeData(const zelqBCnrObject& record) {
        number("data_length", record.expansionData().size());
        number("blocks", record.blockCount());
        if (!withData_) {
            return;
        }
        key("data");
        writer_.StartArray();
        for (zelqExpansionBlocks blocks(record.expansionData(), record.blockCount());
             !blocks.atEnd();) {
            const zelqExpansionBlock block = blocks.next();
            writer_.StartObject();
            number("address", block.address);
            key("bytes");
            scratch_.clear();
            zelqHexText::append(block.data, scratch_);
            string(scratch_);
            writer_.EndObject();
        }
        writer_.EndArray();
    }

    rapidjson::StringBuffer buffer_;
    rapidjson::Writer<rapidjson::StringBuffer, rapidjson::UTF8<>, Encoding> writer_;
    bool withData_;
    std::string givenLog_;
    std::string log_;  ///< the same as well-formed UTF-8
    std::string scratch_;
};

zelqJsonLines::zelqJsonLines(const Options& options) {
    if (options.ascii) {
        form_ = std::make_unique<FormOf<rapidjson::ASCII<>>>(options.data);
    } else {
        form_ = std::make_unique<FormOf<rapidjson::UTF8<>>>(options.data);
    }
}

zelqJsonLines::~zelqJsonLines() = default;

void zelqJsonLines::append(const zelqWrittenEntry& entry, std::string& text) {
    form_->append(entry, text);
}
