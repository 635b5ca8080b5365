// Merging logs one after another into the same rows, beside loading each of them by itself.
// Usage: merge_bench [benchmark options] LOG...

#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "output/zelqRecordFormatter.h"
#include "session/zelqSession.h"

namespace {

using Logs = std::vector<std::string>;

/// Adds a log to what is loaded, as the window does.
void add(zelqSession& session, const std::string& name) {
    const int slot = session.logs().slotFor(name);
    session.add(
        name, zelqPreparedLog::read({.fileName = name, .logSlot = static_cast<std::uint16_t>(slot)},
                                    static_cast<std::int32_t>(session.logs().size())));
}

void loadSingly(benchmark::State& state, const Logs& names) {
    for ([[maybe_unused]] auto iteration : state) {
        for (const std::string& name : names) {
            zelqSession session(&zelqRecordFormatter::lineCount);
            add(session, name);
            state.counters["records"] = static_cast<double>(session.shown().size());
        }
    }
}

void merge(benchmark::State& state, const Logs& names) {
    for ([[maybe_unused]] auto iteration : state) {
        zelqSession session(&zelqRecordFormatter::lineCount);
        for (const std::string& name : names) {
            add(session, name);
        }
        state.counters["records"] = static_cast<double>(session.shown().size());
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
