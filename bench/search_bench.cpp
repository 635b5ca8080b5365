// Searching all records of a log that is loaded, in the order of its rows. Beside it, as a
// yardstick, grep on the same file. Usage: search_bench [benchmark options] [--on-demand]
// LOG...
//
// Counters: first_hit_ms, until the first match is known; hits; hit_bits, memory of the matches
// in bits a record.

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <thread>
#include <utility>

#include "log/zelqLogReader.h"
#include "output/zelqSearchTexts.h"
#include "session/zelqPreparedLog.h"
#include "session/zelqRecordSearch.h"

#include "LogArguments.h"

namespace {

using Clock = std::chrono::steady_clock;
using Kind = zelqSearchPattern::Kind;

constexpr std::string_view kAbsent = "paper jam";  // in no sample log

void grep(benchmark::State& state, const std::string& log) {
    const std::string command =
        "grep -a -c -i -F '" + std::string(kAbsent) + "' '" + log + "' >/dev/null";
    for ([[maybe_unused]] auto iteration : state) {
        if (std::system(command.c_str()) == -1) {  // NOLINT(concurrency-mt-unsafe): one thread
            state.SkipWithError("grep failed");
            return;
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(std::filesystem::file_size(log)) *
                            state.iterations());
}

void search(benchmark::State& state, const std::string& log,
            const zelqSearchPattern::Query& query) {
    zelqPreparedLog prepared = zelqPreparedLog::read({.fileName = log, .mostKept = mostKept()}, 0);
    const auto records = prepared.shown.records();
    zelqLogCollection logs;
    logs.append(std::move(prepared.log), log, 0);
    const zelqDataReader data(logs.dataSources());
    const auto pattern = std::make_shared<const zelqSearchPattern>(query);
    const zelqLocaleText locale("C");
    zelqRecordSearch found;
    for ([[maybe_unused]] auto iteration : state) {
        std::optional<Clock::duration> firstHit;
        const Clock::time_point start = Clock::now();
        found.start({.count = records.size(), .from = 0, .makeMatcher = [&] {
                         return [matcher =
                                     zelqRecordMatcher(pattern, zelqSearchTexts::of(locale), data),
                                 records](std::size_t place) mutable {
                             zelqRecordMatcher::fetch(records, place);
                             return matcher.matches(*records[place]);
                         };
                     }});
        while (found.isRunning()) {
            if (!firstHit && found.matches() != 0) {
                firstHit = Clock::now() - start;
            }
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        }
        found.stop();
        if (firstHit) {
            state.counters["first_hit_ms"] =
                std::chrono::duration<double, std::milli>(*firstHit).count();
        }
    }
    state.counters["hits"] = static_cast<double>(found.matches());
    state.counters["hit_bits"] = static_cast<double>(found.bits().size() * 64) /
                                 static_cast<double>(std::max<std::size_t>(1, records.size()));
    state.SetBytesProcessed(static_cast<std::int64_t>(std::filesystem::file_size(log)) *
                            state.iterations());
}

void registerFor(const std::string& log) {
    const auto add = [&log](const char* name, auto function, auto... arguments) {
        benchmark::RegisterBenchmark((std::string(name) + ":" + log).c_str(), function, log,
                                     arguments...)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime()
            ->MeasureProcessCPUTime();
    };
    using Query = zelqSearchPattern::Query;
    add("grep", grep);
    add("search/absent", search, Query{.text = std::string(kAbsent)});
    add("search/found", search, Query{.text = "out of paper"});
    add("search/number", search, Query{.text = "770"});
    add("search/letter", search, Query{.text = "\xC3\xA4"});
    add("search/bytes", search, Query{.kind = Kind::Bytes, .text = "C1 C2 C3 C4"});
    add("search/expression", search,
        Query{.kind = Kind::RegularExpression, .text = "paper (jam|tray)"});
}

}  // namespace

int main(int argc, char** argv) {
    return runForLogs(argc, argv, registerFor);
}
