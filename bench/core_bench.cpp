// The stages of opening a log and writing its listing. Beside them, as yardsticks,
// md5sum, cat and xxd of the same file. Usage: core_bench [benchmark options]
// [--on-demand] LOG...

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <utility>

#include "log/zelqBSorter.h"
#include "output/zelqListing.h"
#include "session/zelqFilterChain.h"
#include "session/zelqPreparedLog.h"

#include "HalfFilter.h"
#include "LogArguments.h"

namespace {

void setRate(benchmark::State& state, std::size_t records, std::size_t bytes) {
    state.counters["records"] = static_cast<double>(records);
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * state.iterations());
}

void yardstick(benchmark::State& state, const std::string& log, const std::string& tool) {
    const std::string command = tool + " '" + log + "' >/dev/null";
    for ([[maybe_unused]] auto iteration : state) {
        if (std::system(command.c_str()) != 0) {  // NOLINT(concurrency-mt-unsafe): one thread
            state.SkipWithError((tool + " failed").c_str());
            return;
        }
    }
    setRate(state, 0, std::filesystem::file_size(log));
}

/// The file's bytes into fresh memory.
void read(benchmark::State& state, const std::string& log) {
    std::size_t bytes = 0;
    for ([[maybe_unused]] auto iteration : state) {
        zelqLogFile file(log);
        while (file.readMore(std::size_t{1} << 20)) {
        }
        bytes = file.bytesRead();
        benchmark::DoNotOptimize(file.bytesFrom(0).data());
    }
    setRate(state, 0, bytes);
}

void readAndDecode(benchmark::State& state, const std::string& log) {
    std::size_t records = 0;
    std::size_t bytes = 0;
    for ([[maybe_unused]] auto iteration : state) {
        const zelqReadResult result =
            zelqLogReader::read({.fileName = log, .mostKept = mostKept()});
        records = result.log->size();
        bytes = std::filesystem::file_size(log);
    }
    setRate(state, records, bytes);
}

void readDecodeAndSort(benchmark::State& state, const std::string& log) {
    std::size_t records = 0;
    std::size_t bytes = 0;
    for ([[maybe_unused]] auto iteration : state) {
        const zelqPreparedLog prepared =
            zelqPreparedLog::read({.fileName = log, .mostKept = mostKept()}, 0);
        records = prepared.shown.size();
        bytes = std::filesystem::file_size(log);
    }
    setRate(state, records, bytes);
}

/// Sorting alone, from file order and from random order.
void sort(benchmark::State& state, const std::string& log, bool shuffled) {
    const zelqReadResult result = zelqLogReader::read({.fileName = log, .mostKept = mostKept()});
    std::vector<zelqBCnrObject*> fileOrder;
    result.log->number(0);
    result.log->forEach([&fileOrder](zelqBCnrObject& record) { fileOrder.push_back(&record); });
    if (shuffled) {
        std::shuffle(fileOrder.begin(), fileOrder.end(), std::mt19937_64(1));
    }
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        std::vector<zelqBCnrObject*> records = fileOrder;
        state.ResumeTiming();
        zelqBSorter::sort(records);
        benchmark::DoNotOptimize(records.data());
    }
    setRate(state, fileOrder.size(), 0);
}

/// Rendering the text of a log that is loaded, and handing it to the system.
void listing(benchmark::State& state, const std::string& log) {
    zelqReadResult result = zelqLogReader::read({.fileName = log, .mostKept = mostKept()});
    zelqLogCollection records;
    records.append(std::move(result.log), log, 0);
    const zelqLocaleText locale("C");
    for ([[maybe_unused]] auto iteration : state) {
        zelqOutputFile output("/dev/null");
        zelqListing::write(records, locale, output);
        if (!output.complete().ok()) {
            state.SkipWithError(output.status().text.c_str());
            return;
        }
    }
    setRate(state, records.size(), std::filesystem::file_size(log));
}

/// Running a chain of the filters of the kinds from `first` to `last`.
void filter(benchmark::State& state, const std::string& log, zelqFilterKind first,
            zelqFilterKind last) {
    zelqLogCollection records;
    records.append(std::move(zelqLogReader::read({.fileName = log, .mostKept = mostKept()}).log),
                   log, 0);
    zelqFilterChain chain;
    for (int kind = static_cast<int>(first); kind <= static_cast<int>(last); ++kind) {
        chain.apply(*halfFilter(static_cast<zelqFilterKind>(kind), records), records,
                    zelqParallel());
    }
    for ([[maybe_unused]] auto iteration : state) {
        chain.run(records, zelqParallel());
        benchmark::DoNotOptimize(chain.result().data());
    }
    setRate(state, records.size(), 0);
    state.counters["passed"] = static_cast<double>(chain.result().size());
}

/// Collecting the values that a filter's dialog offers.
void values(benchmark::State& state, const std::string& log, zelqFilterKind kind) {
    zelqLogCollection records;
    records.append(std::move(zelqLogReader::read({.fileName = log, .mostKept = mostKept()}).log),
                   log, 0);
    for ([[maybe_unused]] auto iteration : state) {
        state.counters["values"] =
            static_cast<double>(zelqValueTest::valuesOf(kind, records).size());
    }
    setRate(state, records.size(), 0);
}

void registerFor(const std::string& log) {
    const auto add = [&log](const char* name, auto function, auto... arguments) {
        benchmark::RegisterBenchmark((std::string(name) + ":" + log).c_str(), function, log,
                                     arguments...)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    };
    add("md5sum", yardstick, "md5sum");
    add("cat", yardstick, "cat");
    add("read", read);
    add("read+decode", readAndDecode);
    add("read+decode+sort", readDecodeAndSort);
    add("sort/file-order", sort, false);
    add("sort/shuffled", sort, true);
    add("xxd", yardstick, "xxd");
    add("listing", listing);
    using Kind = zelqFilterKind;
    add("filter/pid", filter, Kind::Pid, Kind::Pid);
    add("filter/detect-point", filter, Kind::DetectPoint, Kind::DetectPoint);
    add("filter/function", filter, Kind::Function, Kind::Function);
    add("filter/all-nine", filter, Kind::EntryType, Kind::Function);
    add("filter-values", values, Kind::DetectPoint);
}

}  // namespace

int main(int argc, char** argv) {
    return runForLogs(argc, argv, registerFor);
}
