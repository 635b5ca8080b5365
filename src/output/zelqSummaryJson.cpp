#include "output/zelqSummaryJson.h"

#include <array>
#include <string_view>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "log/zelqUtf8.h"
#include "output/zelqIsoTime.h"
#include "output/zelqJsonText.h"

namespace {

constexpr std::array<std::string_view, zelqLogSummary::kTypes.size()> kTypeNames{
    "Error", "Trace", "Message", "Unknown"};

/// Writes one document. `Encoding`: of what is written.
template <typename Encoding>
class Document {
public:
    std::string of(const std::vector<zelqShownSummary>& logs, const zelqShownSummary& all) {
        writer_.StartObject();
        key("logs");
        writer_.StartArray();
        for (const zelqShownSummary& log : logs) {
            writer_.StartObject();
            key("log");
            string(zelqUtf8::wellFormed(log.log));
            writeCounts(log);
            writer_.EndObject();
        }
        writer_.EndArray();
        key("all");
        writer_.StartObject();
        writeCounts(all);
        writer_.EndObject();
        writer_.EndObject();
        const std::string_view json(buffer_.GetString(), buffer_.GetSize());
        std::string text;
        if constexpr (Encoding::supportUnicode) {
            text = json;
        } else {
            zelqJsonText::appendWithoutDel(json, text);
        }
        text += '\n';
        return text;
    }

private:
    void key(std::string_view name) {
        writer_.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()));
    }
    void string(std::string_view value) {
        writer_.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    }
    void number(std::string_view name, std::uint64_t value) {
        key(name);
        writer_.Uint64(value);
    }
    void boolean(std::string_view name, bool value) {
        key(name);
        writer_.Bool(value);
    }
    void time(std::string_view name, std::int64_t time) {
        std::string text;
        zelqIsoTime::append(time, text);
        key(name);
        string(text);
    }
    void null(std::string_view name) {
        key(name);
        writer_.Null();
    }

    void writeCounts(const zelqShownSummary& summary) {
        number("entries", summary.entries);
        number("bytes", summary.bytes);
        number("findings", summary.findings);
        key("types");
        writer_.StartObject();
        for (std::size_t i = 0; i < kTypeNames.size(); ++i) {
            number(kTypeNames[i], summary.types[i]);
        }
        writer_.EndObject();
        number("without_date", summary.withoutDate);
        writeTimes(summary);
        writeList("functions", summary.functions);
        writeList("pids", summary.pids);
        writeList("major_errors", summary.majorErrors);
        writeList("minor_errors", summary.minorErrors);
        key("histogram");
        writer_.StartArray();
        for (const zelqTimeProfile::Bar& bar : summary.bars) {
            writer_.StartObject();
            time("from", bar.start);
            number("seconds", static_cast<std::uint64_t>(bar.seconds));
            number("entries", bar.entries);
            number("errors", bar.errors);
            writer_.EndObject();
        }
        writer_.EndArray();
    }

    void writeTimes(const zelqShownSummary& summary) {
        if (!summary.hasTimes) {
            for (const std::string_view name : {"first", "last", "largest_gap", "busiest_minute"}) {
                null(name);
            }
            return;
        }
        time("first", summary.first);
        time("last", summary.last);
        key("largest_gap");
        writer_.StartObject();
        number("seconds", static_cast<std::uint64_t>(summary.gap.seconds));
        time("after", summary.gap.after);
        boolean("exact", summary.gap.exact);
        writer_.EndObject();
        key("busiest_minute");
        writer_.StartObject();
        time("from", summary.minute.start);
        number("entries", summary.minute.entries);
        boolean("exact", summary.minute.exact);
        writer_.EndObject();
    }

    template <typename Value>
    void writeList(std::string_view name, const zelqShownSummary::List<Value>& list) {
        key(name);
        writer_.StartObject();
        number("different", list.different);
        number("missing", list.missing);
        key("top");
        writer_.StartArray();
        for (const auto& count : list.top) {
            writer_.StartObject();
            key("value");
            if constexpr (std::is_same_v<Value, std::string>) {
                std::string value;
                zelqUtf8::appendLatin1(count.value, value);
                string(value);
            } else {
                writer_.Uint(count.value);
            }
            number("entries", count.entries);
            writer_.EndObject();
        }
        writer_.EndArray();
        writer_.EndObject();
    }

    rapidjson::StringBuffer buffer_;
    rapidjson::Writer<rapidjson::StringBuffer, rapidjson::UTF8<>, Encoding> writer_{buffer_};
};

}  // namespace

std::string zelqSummaryJson::of(const std::vector<zelqShownSummary>& logs,
                                const zelqShownSummary& all, bool ascii) {
    return ascii ? Document<rapidjson::ASCII<>>().of(logs, all)
                 : Document<rapidjson::UTF8<>>().of(logs, all);
}
