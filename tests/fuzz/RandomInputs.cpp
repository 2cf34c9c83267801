// Stands in for libFuzzer where it is not linked: feeds a fuzz target a fixed count of inputs from a fixed seed.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize);

int main(int argc, char** argv) {
    const long nInputs = argc == 2 ? std::atol(argv[1]) : 0;
    if (nInputs < 1) {
        std::fprintf(stderr, "usage: %s INPUTS\n", argv[0]);
        return 2;
    }
    std::mt19937 engine(1);
    std::vector<std::uint8_t> input;
    for (long i = 0; i < nInputs; ++i) {
        input.resize(engine() % 256);
        for (std::uint8_t& byte : input) {
            byte = static_cast<std::uint8_t>(engine());
        }
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
    std::printf("%ld inputs\n", nInputs);
    return 0;
}
