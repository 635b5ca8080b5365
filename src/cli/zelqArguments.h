#pragma once

#include <cstdint>
#include <limits>

namespace CLI {
class Validator;
}

/// Checks of arguments that several commands need.
namespace zelqArguments {

/// A plain decimal number within these limits. Stricter than the parser's own reading, which takes
/// 010 for 8 and -1 for a huge number.
[[nodiscard]] CLI::Validator number(std::uint64_t least,
                                    std::uint64_t most = std::numeric_limits<std::uint64_t>::max());

}  // namespace zelqArguments
