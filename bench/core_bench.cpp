// The stages of opening a log, and md5sum of the same file beside them as a yardstick.
// Usage: core_bench [benchmark options] LOG...

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <random>

#include "log/zelqBSorter.h"
#include "log/zelqPreparedLog.h"

#include "LogArguments.h"

namespace {

void setRate(benchmark::State& state, std::size_t records, std::size_t bytes) {
    state.counters["records"] = static_cast<double>(records);
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * state.iterations());
}

void md5sum(benchmark::State& state, const std::string& log) {
    const std::string command = "md5sum '" + log + "' >/dev/null";
    for ([[maybe_unused]] auto iteration : state) {
        if (std::system(command.c_str()) != 0) {
            state.SkipWithError("md5sum failed");
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
        bytes = file.bytes().size();
        benchmark::DoNotOptimize(file.bytes().data());
    }
    setRate(state, 0, bytes);
}

void readAndDecode(benchmark::State& state, const std::string& log) {
    std::size_t records = 0;
    std::size_t bytes = 0;
    for ([[maybe_unused]] auto iteration : state) {
        const zelqReadResult result = readLog({.fileName = log});
        records = result.log->size();
        bytes = result.log->file().bytes().size();
    }
    setRate(state, records, bytes);
}

void readDecodeAndSort(benchmark::State& state, const std::string& log) {
    std::size_t records = 0;
    std::size_t bytes = 0;
    for ([[maybe_unused]] auto iteration : state) {
        const zelqPreparedLog prepared = prepareLog({.fileName = log}, 0);
        records = prepared.shown.size();
        bytes = prepared.log->file().bytes().size();
    }
    setRate(state, records, bytes);
}

/// Sorting alone, from file order and from random order.
void sort(benchmark::State& state, const std::string& log, bool shuffled) {
    const zelqReadResult result = readLog({.fileName = log});
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

void registerFor(const std::string& log) {
    const auto add = [&log](const char* name, auto function, auto... arguments) {
        benchmark::RegisterBenchmark((std::string(name) + ":" + log).c_str(), function, log,
                                     arguments...)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    };
    add("md5sum", md5sum);
    add("read", read);
    add("read+decode", readAndDecode);
    add("read+decode+sort", readDecodeAndSort);
    add("sort/file-order", sort, false);
    add("sort/shuffled", sort, true);
}

}  // namespace

int main(int argc, char** argv) {
    return runForLogs(argc, argv, registerFor);
}
