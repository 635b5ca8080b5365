#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

class zelqRandom;

/// A function that writes sample entries.
struct zelqSampleFunction {
    std::string name;       ///< "ProcessJob"
    std::string signature;  ///< "ProcessJob(int)"; a few have no argument list

    /// The functions of the sample system, always the same ones.
    [[nodiscard]] static std::vector<zelqSampleFunction> all();
};

/// Made-up program data that reads as text in one of the two character columns of a dump.
class zelqSampleTexts {
public:
    enum class Encoding { Ascii, Ebcdic };

    /// The longest text that pick() gives, in bytes.
    static constexpr std::size_t kLongestText = 2048;

    explicit zelqSampleTexts(zelqRandom& random);

    /// `size` bytes that begin with a line picked at random; valid as long as this object.
    [[nodiscard]] std::span<const std::byte> pick(Encoding encoding, std::size_t size,
                                                  zelqRandom& random) const;

private:
    std::vector<std::byte> ascii_;
    std::vector<std::byte> ebcdic_;
    /// In both; each is followed by kLongestText bytes or more.
    std::vector<std::size_t> lineStarts_;
};
