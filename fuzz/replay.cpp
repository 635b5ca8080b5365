#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <vector>

// NOLINTNEXTLINE(*-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Replaces libFuzzer: runs the fuzzer for each file of a folder, and for variations of it in which
/// some bytes are random, but the same in each run.
int main(int argc, char** argv) {
    constexpr unsigned kVariations = 100;
    int count = 0;
    for (const auto& file : std::filesystem::directory_iterator(argc > 1 ? argv[1] : ".")) {
        std::ifstream stream(file.path(), std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
        std::cout << file.path().filename() << std::endl;  // at once: the fuzzer may abort
        std::minstd_rand random(4711);
        for (unsigned i = 0; i < kVariations; ++i) {
            std::vector<std::uint8_t> varied(bytes.begin(), bytes.end());
            for (unsigned changes = varied.empty() ? 0 : i % 8; changes > 0; --changes) {
                const auto place = (random() >> 8) % varied.size();
                varied[place] = static_cast<std::uint8_t>(random() >> 8);
            }
            LLVMFuzzerTestOneInput(varied.data(), varied.size());
        }
        ++count;
    }
    return count > 0 ? 0 : 1;
}
