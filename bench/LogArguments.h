#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

/// Up to which length the bytes of a log are kept; the program's own choice if nothing is said.
/// With
/// --on-demand on the command line they are read when they are needed.
inline std::optional<std::size_t>& mostKept() {
    static std::optional<std::size_t> most;
    return most;
}

/// Registers the benchmarks for each log that the command line names, and runs them.
inline int runForLogs(int argc, char** argv,
                      const std::function<void(const std::string& log)>& registerFor) {
    benchmark::Initialize(&argc, argv);
    for (int i = 1; i < argc; ++i) {
        if (std::string_view(argv[i]) == "--on-demand") {
            mostKept() = 0;
        } else {
            registerFor(argv[i]);
        }
    }
    return benchmark::RunSpecifiedBenchmarks() > 0 ? 0 : 1;
}
