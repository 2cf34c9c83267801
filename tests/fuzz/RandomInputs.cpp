// Stands in for libFuzzer where it is not linked: feeds a fuzz target the seeds of a folder, if one is given, then a
// fixed count of random inputs from a fixed seed.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize);

namespace {

using Input = std::vector<std::uint8_t>;

/// The inputs that the folder's files hold, by file name.
std::vector<Input> Seeds(const char* pszFolder) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(pszFolder)) files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    std::vector<Input> seeds;
    for (const auto& file : files) {
        std::ifstream stream(file, std::ios::binary);
        seeds.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }
    return seeds;
}

}  // namespace

int main(int argc, char** argv) {
    const long nInputs = argc > 1 ? std::atol(argv[1]) : 0;
    if (nInputs < 1 || argc > 3) {
        std::fprintf(stderr, "usage: %s INPUTS [SEED-FOLDER]\n", argv[0]);
        return 2;
    }
    std::size_t nSeeds = 0;
    if (argc == 3) {
        const std::vector<Input> seeds = Seeds(argv[2]);
        nSeeds = seeds.size();
        for (const Input& seed : seeds) LLVMFuzzerTestOneInput(seed.data(), seed.size());
    }
    std::mt19937 engine(1);
    Input input;
    for (long i = 0; i < nInputs; ++i) {
        input.resize(engine() % 256);
        for (std::uint8_t& byte : input) {
            byte = static_cast<std::uint8_t>(engine());
        }
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
    std::printf("%zu seeds, %ld random inputs\n", nSeeds, nInputs);
    return 0;
}
