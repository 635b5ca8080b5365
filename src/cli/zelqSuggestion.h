#pragma once

#include <string>

namespace CLI {
class App;
}

/// Says what is wrong with a command line in which a command or an option is mistyped.
namespace zelqSuggestion {

/// The first argument that is no command or option, and the nearest one that is. Empty if all are
/// known. To be called after the parser has failed.
[[nodiscard]] std::string of(const CLI::App& program);

}  // namespace zelqSuggestion
