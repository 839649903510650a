// The functions that libFuzzer calls; main is libFuzzer's own. The target's seeds are written into the first
// folder of the command line, which libFuzzer uses as its corpus.

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include "tests/fuzz/FuzzTarget.h"

extern "C" int LLVMFuzzerInitialize(const int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerInitialize(const int* argc, char*** argv) {
    for (int i = 1; i < *argc; ++i) {
        const std::filesystem::path folder = (*argv)[i];
        if (!std::filesystem::is_directory(folder)) continue;
        int number = 0;
        for (const fuzz::Bytes& seed : fuzz::Seeds()) {
            std::ofstream file(folder / ("seed-" + std::to_string(++number)), std::ios::binary);
            std::copy(seed.begin(), seed.end(), std::ostreambuf_iterator<char>(file));
        }
        break;
    }
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        fuzz::RunInput({data, size});
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        std::abort();  // makes libFuzzer keep the input
    }
    return 0;
}
