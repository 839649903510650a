// Most tables of counts give a plain Huffman code that is no deeper than its limit, so that is built first,
// in linear time after the sort. Only when a leaf turns out too deep (counts that grow like Fibonacci
// numbers, or the small limits of the aligned tree and the pretrees) is the work done again by
// package-merge, which is exact under a limit but takes time and memory in proportion to symbols times
// limit.
//
// Both only find how many leaves lie at each depth. Which symbol gets which depth follows: the rarer, the
// deeper, and among equal counts the order of the symbols decides, so that the result is the same on every
// machine.

#include "tools/cabarc/lzx/HuffmanCode.h"

#include <algorithm>
#include <array>
#include <vector>

#include "tools/cabarc/lzx/LzxFormat.h"

namespace tools::cabarc::lzx {

namespace {

struct Leaf {
    std::uint32_t Count;
    std::uint16_t Symbol;
};

using LengthCounts = std::array<std::uint32_t, 64>;

// Huffman's construction joins the two lightest nodes until one is left. A heap is not needed: leaves are
// sorted, and inner nodes are created in rising order of weight, so the two lightest are always at the heads
// of two queues. Parents have higher numbers than their children; depths are found from the root downwards.
// Fills how many leaves have each depth; returns false when one is deeper than maxLength.
bool HuffmanDepths(std::span<const Leaf> leaves, int maxLength, LengthCounts& leavesOfDepth) {
    const std::size_t n = leaves.size();
    std::array<std::uint32_t, kMaxMainSymbols> weight;
    std::array<std::uint16_t, 2 * kMaxMainSymbols> parent;  // leaves first, then inner nodes
    std::size_t leaf = 0;
    std::size_t inner = 0;
    for (std::size_t created = 0; created + 1 < n; ++created) {
        std::uint32_t sum = 0;
        for (int side = 0; side < 2; ++side) {
            const bool takeLeaf = leaf < n && (inner == created || leaves[leaf].Count <= weight[inner]);
            sum += takeLeaf ? leaves[leaf].Count : weight[inner];
            parent[takeLeaf ? leaf++ : n + inner++] = static_cast<std::uint16_t>(created);
        }
        weight[created] = sum;
    }
    std::array<std::uint16_t, kMaxMainSymbols> depth;
    depth[n - 2] = 0;
    for (std::size_t i = n - 2; i-- > 0;) depth[i] = static_cast<std::uint16_t>(depth[parent[n + i]] + 1);
    leavesOfDepth.fill(0);
    for (std::size_t i = 0; i < n; ++i) {
        const int leafDepth = depth[parent[i]] + 1;
        if (leafDepth > maxLength) return false;
        ++leavesOfDepth[static_cast<std::size_t>(leafDepth)];
    }
    return true;
}

// Package-merge sees a code as coins. A leaf of length k holds one coin of face value 2^-1, 2^-2, ... 2^-k
// each, all at the price of its count; a complete code of n leaves holds coins worth n - 1 in all, and the
// code with the fewest bits is the cheapest such collection. From the smallest face value upwards, two coins
// of one level, the cheapest with the next cheapest, make a package that is worth one coin of the next level
// and competes with the leaves' own coins there. The 2n - 2 cheapest coins of the top level are bought; a
// leaf's length is the number of levels on which it was.
void LimitedDepths(std::span<const Leaf> leaves, int maxLength, LengthCounts& leavesOfDepth) {
    struct Coin {
        std::uint64_t Value;
        bool IsLeaf;
    };
    const std::size_t n = leaves.size();
    std::vector<std::vector<Coin>> levels(static_cast<std::size_t>(maxLength));
    for (std::size_t level = 0; level < levels.size(); ++level) {
        std::vector<Coin>& coins = levels[level];
        for (const Leaf& leaf : leaves) coins.push_back({leaf.Count, true});
        if (level > 0) {
            const std::vector<Coin>& below = levels[level - 1];
            for (std::size_t i = 0; i + 1 < below.size(); i += 2)
                coins.push_back({below[i].Value + below[i + 1].Value, false});
        }
        std::inplace_merge(coins.begin(), coins.begin() + static_cast<std::ptrdiff_t>(n), coins.end(),
                           [](const Coin& a, const Coin& b) { return a.Value < b.Value; });
    }
    // 2n - 2 coins of the top level are bought; a package buys two coins of the level below. The leaves
    // bought on a level are always its cheapest ones, so counting them is enough.
    std::vector<std::uint32_t> lengthOfLeaf(n, 0);
    std::size_t buy = 2 * n - 2;
    for (std::size_t level = levels.size(); level-- > 0 && buy > 0;) {
        std::size_t leafCount = 0;
        for (std::size_t i = 0; i < buy; ++i) leafCount += levels[level][i].IsLeaf ? 1 : 0;
        for (std::size_t i = 0; i < leafCount; ++i) ++lengthOfLeaf[i];
        buy = 2 * (buy - leafCount);
    }
    leavesOfDepth.fill(0);
    for (const std::uint32_t length : lengthOfLeaf) ++leavesOfDepth[length];
}

}  // namespace

void BuildCodeLengths(std::span<const std::uint32_t> counts, int maxLength, std::span<std::uint8_t> lengths) {
    std::array<Leaf, kMaxMainSymbols> storage;
    std::size_t n = 0;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        lengths[i] = 0;
        if (counts[i] != 0) storage[n++] = {counts[i], static_cast<std::uint16_t>(i)};
    }
    const std::span<Leaf> leaves(storage.data(), n);
    if (n == 0) return;
    if (n == 1) {
        lengths[leaves[0].Symbol] = 1;
        lengths[leaves[0].Symbol == 0 ? 1 : 0] = 1;
        return;
    }
    std::sort(leaves.begin(), leaves.end(), [](const Leaf& a, const Leaf& b) {
        return a.Count != b.Count ? a.Count < b.Count : a.Symbol < b.Symbol;
    });
    LengthCounts leavesOfDepth;
    if (!HuffmanDepths(leaves, maxLength, leavesOfDepth)) LimitedDepths(leaves, maxLength, leavesOfDepth);
    std::size_t next = n;  // the most frequent leaf takes the shortest code
    for (std::size_t depth = 1; depth <= static_cast<std::size_t>(maxLength); ++depth)
        for (std::uint32_t i = 0; i < leavesOfDepth[depth]; ++i)
            lengths[leaves[--next].Symbol] = static_cast<std::uint8_t>(depth);
}

void AssignCodes(std::span<const std::uint8_t> lengths, std::span<std::uint16_t> codes) {
    std::array<std::uint32_t, kMaxCodeLength + 2> next{};
    for (const std::uint8_t length : lengths) ++next[length + 1U];
    next[1] = 0;  // unused symbols take no code
    std::uint32_t first = 0;
    for (std::size_t length = 1; length < next.size(); ++length) {
        first = (first + next[length]) << 1;
        next[length] = first;
    }
    for (std::size_t i = 0; i < lengths.size(); ++i)
        codes[i] = lengths[i] == 0 ? std::uint16_t{0} : static_cast<std::uint16_t>(next[lengths[i]]++);
}

}  // namespace tools::cabarc::lzx
