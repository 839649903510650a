#include "tools/cabarc/lzx/HuffmanCode.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <random>
#include <vector>

namespace tools::cabarc::lzx::testing {
namespace {

std::vector<std::uint8_t> BuiltLengths(const std::vector<std::uint32_t>& counts, int maxLength) {
    std::vector<std::uint8_t> lengths(counts.size(), 99);
    BuildCodeLengths(counts, maxLength, lengths);
    return lengths;
}

// The sum of 2^-length over all codes, in units of 2^-16; 2^16 for a complete code.
std::uint64_t Filled(const std::vector<std::uint8_t>& lengths) {
    std::uint64_t filled = 0;
    for (const std::uint8_t length : lengths) filled += length == 0 ? 0 : std::uint64_t{1} << (16 - length);
    return filled;
}

std::uint64_t Cost(const std::vector<std::uint32_t>& counts, const std::vector<std::uint8_t>& lengths) {
    return std::inner_product(counts.begin(), counts.end(), lengths.begin(), std::uint64_t{0});
}

TEST(HuffmanCode, IsEmptyWithoutSymbols) {
    EXPECT_EQ(BuiltLengths({0, 0, 0}, 16), (std::vector<std::uint8_t>{0, 0, 0}));
}

TEST(HuffmanCode, GivesALoneSymbolAPartner) {
    EXPECT_EQ(BuiltLengths({0, 0, 7}, 16), (std::vector<std::uint8_t>{1, 0, 1}));
    EXPECT_EQ(BuiltLengths({7, 0, 0}, 16), (std::vector<std::uint8_t>{1, 1, 0}));
}

TEST(HuffmanCode, GivesFrequentSymbolsShortCodes) {
    EXPECT_EQ(BuiltLengths({1, 1, 2, 4}, 16), (std::vector<std::uint8_t>{3, 3, 2, 1}));
}

TEST(HuffmanCode, StaysCompleteWithinItsLimit) {
    // Fibonacci counts give the deepest trees.
    std::vector<std::uint32_t> fibonacci{1, 1};
    while (fibonacci.size() < 40) fibonacci.push_back(fibonacci.end()[-1] + fibonacci.end()[-2]);
    for (int limit = 6; limit <= 16; ++limit) {
        const std::vector<std::uint8_t> lengths = BuiltLengths(fibonacci, limit);
        EXPECT_EQ(65536U, Filled(lengths));
        EXPECT_EQ(*std::max_element(lengths.begin(), lengths.end()), limit);
    }
}

TEST(HuffmanCode, IsTheBestCodeWithinItsLimit) {
    // All complete codes of five symbols with at most three bits, tried one by one.
    std::mt19937 random(1);
    for (int round = 0; round < 200; ++round) {
        std::vector<std::uint32_t> counts(5);
        for (std::uint32_t& count : counts)
            count = 1 + static_cast<std::uint32_t>(random()) % (1U << (random() % 12));
        std::uint64_t best = ~std::uint64_t{0};
        std::vector<std::uint8_t> tried(5);
        for (int code = 0; code < 243; ++code) {
            for (std::size_t i = 0, rest = static_cast<std::size_t>(code); i < 5; ++i, rest /= 3)
                tried[i] = static_cast<std::uint8_t>(1 + rest % 3);
            if (Filled(tried) == 65536) best = std::min(best, Cost(counts, tried));
        }
        EXPECT_EQ(best, Cost(counts, BuiltLengths(counts, 3)));
    }
}

TEST(HuffmanCode, FillsTheLargestAlphabet) {
    std::mt19937 random(2);
    for (int round = 0; round < 50; ++round) {
        std::vector<std::uint32_t> counts(656);
        for (std::uint32_t& count : counts)
            count = static_cast<std::uint32_t>(random()) >> (random() % 33 == 0 ? 4 : 31 - random() % 9);
        const std::vector<std::uint8_t> lengths = BuiltLengths(counts, 16);
        EXPECT_EQ(65536U, Filled(lengths));
        for (std::size_t i = 0; i < counts.size(); ++i) EXPECT_EQ(lengths[i] == 0, counts[i] == 0);
    }
}

TEST(HuffmanCode, NumbersShorterCodesFirstThenBySymbol) {
    const std::vector<std::uint8_t> lengths{3, 0, 1, 3, 2};
    std::vector<std::uint16_t> codes(5);
    AssignCodes(lengths, codes);
    EXPECT_EQ(codes, (std::vector<std::uint16_t>{0b110, 0, 0b0, 0b111, 0b10}));
}

}  // namespace
}  // namespace tools::cabarc::lzx::testing
