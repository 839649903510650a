#include "tests/realmode/unpack/RandomFiles.h"

#include <algorithm>
#include <array>
#include <random>

#include "tests/support/TestData.h"
#include "tests/tools/cabarc/InTestFolder.h"

namespace realmode::unpack::testing {

namespace {

std::string RandomName(std::mt19937& random, std::size_t longest) {
    static const std::string letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-$~";
    std::string name(1 + random() % longest, ' ');
    for (char& letter : name) letter = letters[random() % letters.size()];
    // So that none is a device.
    name[0] = static_cast<char>('0' + random() % 10);
    return name;
}

std::size_t RandomSize(std::mt19937& random) {
    constexpr std::array<std::size_t, 8> kBorders{0, 1, 2, 32767, 32768, 32769, 65536, 98304};
    switch (random() % 4) {
        case 0:
            return kBorders[random() % kBorders.size()];
        case 1:
            return random() % 200;
        case 2:
            return random() % 5000;
        default:
            return random() % 60000;
    }
}

}  // namespace

void MakeRandomFiles(const std::string& folder, std::uint32_t seed, std::size_t size) {
    std::mt19937 random(seed);
    const auto& kinds = tools::testing::DataKinds();
    std::string sub;
    for (std::size_t written = 0; written < size;) {
        if (random() % 3 == 0) {
            sub.clear();
            for (unsigned depth = random() % 4; depth > 0; --depth) sub += "D" + RandomName(random, 7) + "/";
        }
        std::string name = RandomName(random, 8);
        if (random() % 2 == 0) name += "." + RandomName(random, 3);
        const std::size_t length = std::min(RandomSize(random), size - written);
        const auto& kind = kinds[random() % kinds.size()];
        const auto contents = kind.Make(length, static_cast<std::uint32_t>(random()));
        tools::cabarc::testing::WriteBytes(folder + "/" + sub + name, contents);
        written += length + 1;
    }
    // Repetitions of much earlier bytes: matches from as far as the window reaches.
    const auto far = tools::testing::FarCopies(std::min<std::size_t>(size, 700'000), size, seed);
    tools::cabarc::testing::WriteBytes(folder + "/FAR", far);
}

}  // namespace realmode::unpack::testing
