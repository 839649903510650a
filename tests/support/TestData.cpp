#include "tests/support/TestData.h"

#include <algorithm>
#include <array>
#include <random>
#include <string_view>

namespace tools::testing {

namespace {

// std::mt19937 gives the same numbers everywhere; the distributions of the library do not, so they are not
// used.
class Random {
 public:
    explicit Random(std::uint32_t seed) : engine_(seed) {}
    std::uint32_t Below(std::uint32_t limit) { return static_cast<std::uint32_t>(engine_()) % limit; }
    std::uint8_t Byte() { return static_cast<std::uint8_t>(Below(256)); }

 private:
    std::mt19937 engine_;
};

void AppendNumber(Bytes& to, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) to.push_back(static_cast<std::uint8_t>(value >> shift));
}

}  // namespace

Bytes BytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

Bytes RandomBytes(std::size_t size, std::uint32_t seed) {
    Random random(seed);
    Bytes bytes(size);
    for (std::uint8_t& byte : bytes) byte = random.Byte();
    return bytes;
}

Bytes TextLike(std::size_t size, std::uint32_t seed) {
    constexpr std::array<std::string_view, 24> kWords{
        "device", "=",          "C:\\DRIVERS\\", "himem.sys", "set",  "path",  "echo",    "off",
        "if",     "errorlevel", "goto",          "end",       "rem",  "the ",  "keycode", "shift",
        "load",   "high",       "files",         "buffers",   "last", "drive", "copy",    "%1"};
    Random random(seed);
    Bytes bytes;
    while (bytes.size() < size) {
        const std::string_view word = kWords[random.Below(random.Below(24) + 1)];
        bytes.insert(bytes.end(), word.begin(), word.end());
        if (random.Below(6) == 0) {
            const std::string number = std::to_string(random.Below(5000));
            bytes.insert(bytes.end(), number.begin(), number.end());
        }
        if (random.Below(8) == 0) bytes.push_back('\r');
        bytes.push_back(bytes.back() == '\r' ? '\n' : ' ');
    }
    bytes.resize(size);
    return bytes;
}

Bytes CodeLike(std::size_t size, std::uint32_t seed) {
    Random random(seed);
    std::array<std::uint32_t, 60> targets;
    for (std::uint32_t& target : targets) target = random.Below(static_cast<std::uint32_t>(size) + 1);
    Bytes bytes;
    while (bytes.size() < size) {
        switch (random.Below(6)) {
            case 0:
                bytes.push_back(0xE8);
                AppendNumber(bytes, targets[random.Below(60)] - static_cast<std::uint32_t>(bytes.size() + 4));
                break;
            case 1:
                bytes.insert(bytes.end(),
                             {0x55, 0x89, 0xE5, 0x83, 0xEC, static_cast<std::uint8_t>(4 * random.Below(9))});
                break;
            case 2:
                bytes.insert(bytes.end(),
                             {0x8B, 0x45, static_cast<std::uint8_t>(0xF0 + 4 * random.Below(4))});
                break;
            case 3:
                bytes.push_back(0xB8);
                AppendNumber(bytes, 0x400000 + 16 * random.Below(3000));
                break;
            default:
                bytes.push_back(static_cast<std::uint8_t>(0x50 + random.Below(16)));
        }
    }
    bytes.resize(size);
    return bytes;
}

Bytes CallsOnly(std::size_t size, std::uint32_t seed) {
    Random random(seed);
    Bytes bytes;
    while (bytes.size() < size) {
        const auto place = static_cast<std::uint32_t>(bytes.size());
        bytes.push_back(0xE8);
        switch (random.Below(5)) {
            case 0:
                AppendNumber(bytes, random.Below(12'000'000));
                break;
            case 1:
                AppendNumber(bytes, 0U - place - 1 + random.Below(3));
                break;
            case 2:
                AppendNumber(bytes, 12'000'000U - place - 1 + random.Below(3));
                break;
            case 3:
                AppendNumber(bytes, 0xE8E8E8E8U);
                break;
            default:
                AppendNumber(bytes, random.Below(0xFFFFFFFFU));
        }
    }
    bytes.resize(size);
    return bytes;
}

Bytes Runs(std::size_t size, std::uint32_t seed) {
    Random random(seed);
    Bytes bytes;
    while (bytes.size() < size) {
        const std::size_t length = 1 + random.Below(1 + random.Below(1 + random.Below(9000)));
        bytes.insert(bytes.end(), std::min(length, size - bytes.size()),
                     static_cast<std::uint8_t>(random.Below(7)));
    }
    return bytes;
}

Bytes Records(std::size_t size, std::uint32_t seed) {
    Random random(seed);
    Bytes bytes;
    for (std::uint32_t i = 0; bytes.size() < size; ++i) {
        AppendNumber(bytes, i * 3);
        AppendNumber(bytes, 0x10000 + 8 * random.Below(100));
        bytes.insert(bytes.end(), {0, 0, static_cast<std::uint8_t>(random.Below(3)), 0x7F});
    }
    bytes.resize(size);
    return bytes;
}

Bytes Mixed(std::size_t size, std::uint32_t seed) {
    Random random(seed);
    constexpr std::array kMakers{RandomBytes, TextLike, CodeLike, CallsOnly, Runs, Records};
    Bytes bytes;
    while (bytes.size() < size) {
        const Bytes part = kMakers[random.Below(6)](1 + random.Below(60000), random.Below(1000));
        bytes.insert(bytes.end(), part.begin(), part.end());
    }
    bytes.resize(size);
    return bytes;
}

Bytes FarCopies(std::size_t size, std::size_t farthest, std::uint32_t seed) {
    Random random(seed);
    Bytes bytes = RandomBytes(std::min(size, farthest + 300), seed + 1);
    while (bytes.size() < size) {
        // Most copies come from just inside and just outside the range that a window can reach.
        std::size_t offset = random.Below(3) == 0 ? 1 + random.Below(static_cast<std::uint32_t>(farthest))
                                                  : farthest - 4 + random.Below(8);
        offset = std::min(offset, bytes.size());
        for (std::uint32_t length = 2 + random.Below(300); length > 0; --length)
            bytes.push_back(bytes[bytes.size() - offset]);
        bytes.push_back(random.Byte());
    }
    bytes.resize(size);
    return bytes;
}

const std::vector<DataKind>& DataKinds() {
    static const std::vector<DataKind> kinds{
        {"random", RandomBytes}, {"text", TextLike},
        {"code", CodeLike},      {"calls", CallsOnly},
        {"runs", Runs},          {"records", Records},
        {"mixed", Mixed},        {"zeros", [](std::size_t size, std::uint32_t) { return Bytes(size, 0); }}};
    return kinds;
}

}  // namespace tools::testing
