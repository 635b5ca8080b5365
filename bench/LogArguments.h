#pragma once

#include <functional>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

/// Registers the benchmarks for each log that the command line names, and runs them.
inline int runForLogs(int argc, char** argv,
                      const std::function<void(const std::string& log)>& registerFor) {
    benchmark::Initialize(&argc, argv);
    for (int i = 1; i < argc; ++i) {
        registerFor(argv[i]);
    }
    return benchmark::RunSpecifiedBenchmarks() > 0 ? 0 : 1;
}
