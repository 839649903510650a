#include "tests/support/Bytes.h"

#include <iterator>
#include <random>

namespace tools::testing {

Bytes BytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

Bytes NoiseBytes(std::size_t count, std::uint32_t seed) {
    std::mt19937 random(seed);
    Bytes bytes(count);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random() >> 13);
    return bytes;
}

Bytes ProseBytes(std::size_t count, std::uint32_t seed) {
    constexpr const char* kWords[] = {"device", "driver ", "himem ", "lowers ", "the ",
                                      "\r\n",   "boot ",   "packet", ", "};
    std::mt19937 random(seed);
    std::string text;
    while (text.size() < count) {
        text += kWords[(random() >> 7) % std::size(kWords)];
        if (random() % 8 == 0) text += std::to_string(random() % 100000);
    }
    text.resize(count);
    return BytesOf(text);
}

}  // namespace tools::testing
