#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

// NOLINTNEXTLINE(*-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Stands in for libFuzzer: runs the fuzzer once for each file of a folder.
int main(int argc, char** argv) {
    int count = 0;
    for (const auto& file : std::filesystem::directory_iterator(argc > 1 ? argv[1] : ".")) {
        std::ifstream stream(file.path(), std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
        std::cout << file.path().filename() << std::endl;  // at once: the fuzzer may abort
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        ++count;
    }
    return count > 0 ? 0 : 1;
}
