#pragma once

#include <string>

namespace CLI {
class App;
}

/// Scripts that complete the program's command lines in shells, made from what its parser knows.
namespace zelqCompletion {

[[nodiscard]] std::string forBash(const CLI::App& program);
[[nodiscard]] std::string forZsh(const CLI::App& program);
[[nodiscard]] std::string forFish(const CLI::App& program);

}  // namespace zelqCompletion
