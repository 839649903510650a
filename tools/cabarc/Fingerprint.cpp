// The strings are sampled by their hashes alone, so that files that hold a string agree about whether it
// belongs to the sample. The high bits of the hash divide the strings into classes, and each class keeps its
// least hash. Two files have the same least hash in a class when of all the strings that either of them has
// in it the least is in both; so the share of classes that agree is, on average, the share of strings that
// the files have in common. (The method is known as min-hash with one permutation.)
//
// For the bytes, the square roots of their shares form a vector of length 1. The product of two such vectors
// is 1 when the shares are equal and 0 when no byte is in both. Roots give rare bytes their part: without
// them the product would say little more than whether the commonest byte is the same.
//
// All of it is whole numbers, so no machine rounds in a way of its own.

#include "tools/cabarc/Fingerprint.h"

#include <algorithm>

#include "tools/shared/ByteOrder.h"

namespace tools::cabarc {

namespace {

constexpr int kClassBits = 7;
static_assert(1U << kClassBits == Fingerprint::kStrings, "each class gives one string");
constexpr std::uint32_t kNoString = 0xFFFFFFFF;

// A vector of length 1 in these units has a square of 2^28, so that a product of two fits 32 bits.
constexpr int kUnitBits = 14;
// What half of kSame is for: the classes that agree, or the product of the vectors.
constexpr std::uint32_t kPerString = Fingerprint::kSame / 2 / Fingerprint::kStrings;
constexpr int kProductShift = 2 * kUnitBits - 14;
static_assert(1U << (2 * kUnitBits - kProductShift) == Fingerprint::kSame / 2);

// Any odd multipliers with well spread bits will do, but the hash has to look random: of products alone the
// least are those of small numbers, which all programs have in common.
std::uint32_t HashOf(std::uint32_t string) {
    string *= 0x9E3779B1U;
    string = (string ^ (string >> 15)) * 0x85EBCA6BU;
    return string ^ (string >> 13);
}

// Returns the largest number whose square is at most `square`, which is at most that of the unit.
std::uint32_t SquareRoot(std::uint64_t square) {
    std::uint32_t root = 0;
    for (std::uint32_t bit = 1U << kUnitBits; bit != 0; bit >>= 1) {
        const std::uint32_t next = root | bit;
        if (next * next <= square) root = next;
    }
    return root;
}

}  // namespace

Fingerprint::Fingerprint(std::span<const std::uint8_t> bytes) {
    strings_.fill(kNoString);
    SampleStrings(bytes);
    CountBytes(bytes);
}

void Fingerprint::SampleStrings(std::span<const std::uint8_t> bytes) {
    for (std::size_t i = 0; i + kStringBytes <= bytes.size(); ++i) {
        const std::uint32_t hash = HashOf(GetU32(bytes.data() + i));
        std::uint32_t& least = strings_[hash >> (32 - kClassBits)];
        least = std::min(least, hash);
    }
}

void Fingerprint::CountBytes(std::span<const std::uint8_t> bytes) {
    std::array<std::uint32_t, 256> counts{};
    for (const std::uint8_t byte : bytes) ++counts[byte];
    if (bytes.empty()) return;
    std::transform(counts.begin(), counts.end(), bytes_.begin(), [&](std::uint32_t count) {
        const std::uint64_t square = (std::uint64_t{count} << (2 * kUnitBits)) / bytes.size();
        return static_cast<std::int16_t>(SquareRoot(square));
    });
}

std::uint32_t Fingerprint::Resemblance(const Fingerprint& other) const {
    std::uint32_t common = 0;
    for (std::size_t i = 0; i < kStrings; ++i)
        common += strings_[i] == other.strings_[i] && strings_[i] != kNoString ? 1U : 0U;
    if (common == 0) return 0;
    std::int32_t product = 0;
    for (std::size_t i = 0; i < bytes_.size(); ++i) product += bytes_[i] * other.bytes_[i];
    return common * kPerString + (static_cast<std::uint32_t>(product) >> kProductShift);
}

}  // namespace tools::cabarc
