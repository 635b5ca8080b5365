// Merging logs one after another into the same rows, beside loading each of them by itself.
// Usage: merge_bench [benchmark options] LOG...

#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "session/zelqPreparedLog.h"
#include "session/zelqRecordDisplay.h"

namespace {

using Logs = std::vector<std::string>;

void loadSingly(benchmark::State& state, const Logs& names) {
    for ([[maybe_unused]] auto iteration : state) {
        for (const std::string& name : names) {
            zelqPreparedLog prepared = prepareLog({.fileName = name}, 0);
            zelqLogCollection records;
            records.append(std::move(prepared.log), records.assignLogSlot(name));
            showRecords(prepared.shown, records, zelqLogCollection::kAllLogs);
            state.counters["records"] = static_cast<double>(prepared.shown.size());
        }
    }
}

void merge(benchmark::State& state, const Logs& names) {
    for ([[maybe_unused]] auto iteration : state) {
        zelqLogCollection records;
        zelqRecordList container(zelqBCnrObject::InContainer);
        for (const std::string& name : names) {
            const int slot = records.assignLogSlot(name);
            zelqPreparedLog prepared =
                prepareLog({.fileName = name, .logSlot = static_cast<std::uint16_t>(slot)},
                           static_cast<std::int32_t>(records.size()));
            records.append(std::move(prepared.log), slot);
            container.merge(std::move(prepared.shown));
            showRecords(container, records, zelqLogCollection::kAllLogs);
        }
        state.counters["records"] = static_cast<double>(container.size());
    }
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    const Logs names(argv + 1, argv + argc);
    benchmark::RegisterBenchmark("load-singly", loadSingly, names)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    benchmark::RegisterBenchmark("merge", merge, names)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    return benchmark::RunSpecifiedBenchmarks() > 0 ? 0 : 1;
}
