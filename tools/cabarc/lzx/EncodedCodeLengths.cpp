// An element can be sent as a difference from its old length, or a run of elements as one symbol: 4 to 51
// zeros, or 4 or 5 equal lengths. A run of ten equal lengths that did not change may be cheaper as ten
// differences of zero than as two runs; it depends on the pretree, which depends on what is used. So the
// encoding is a shortest path, as the parse of the data is: the places between elements are the nodes,
// differences and runs the edges, and the lengths of the pretree's codes the prices. The first round guesses
// the prices, and each further round takes them from the pretree that the round before led to. A round can
// come out longer than the one before; the shortest is kept.
//
// Cost: a list has at most 400 elements, and each has at most 51 edges that begin there; in all a hundredth
// of the time of packing when it was measured. A greedy encoder, which takes the longest run each time,
// would do where headers are rare.

#include "tools/cabarc/lzx/EncodedCodeLengths.h"

#include <algorithm>
#include <limits>

#include "tools/cabarc/lzx/HuffmanCode.h"

namespace tools::cabarc::lzx {

namespace {

// The run symbols of the pretree: symbol, shortest run in elements, extra bits that say by how much it is
// longer.
struct RunKind {
    std::uint8_t Symbol;
    std::uint32_t Shortest;
    int ExtraBits;

    constexpr std::uint32_t Longest() const { return Shortest + (1U << ExtraBits) - 1; }
};
constexpr RunKind kShortZeros{17, 4, 4};
constexpr RunKind kLongZeros{18, 20, 5};
constexpr RunKind kEqual{19, 4, 1};
constexpr std::uint32_t kDifferences = 17;  // lengths differ modulo this

static_assert(kLongZeros.Longest() == EncodedCodeLengths::kLongestRun);

// The price in bits that the first round assumes for every pretree symbol: about the average length of
// twenty codes.
constexpr std::uint32_t kFirstGuessBits = 4;
// The price in bits of a symbol that no step has used: that of a rare one, because it may become useful.
constexpr std::uint32_t kUnusedSymbolBits = 7;
// Nothing changes after the third round on the reference sets.
constexpr int kRounds = 3;

std::uint8_t DifferenceOf(std::uint8_t previous, std::uint8_t next) {
    return static_cast<std::uint8_t>((previous + kDifferences - next) % kDifferences);
}

int ExtraBitsOf(std::uint8_t symbol) {
    for (const RunKind& kind : {kShortZeros, kLongZeros, kEqual})
        if (kind.Symbol == symbol) return kind.ExtraBits;
    return 0;
}

}  // namespace

EncodedCodeLengths::EncodedCodeLengths(std::span<const std::uint8_t> previous,
                                       std::span<const std::uint8_t> lengths) {
    StepCosts costs;
    costs.fill(kFirstGuessBits);
    std::vector<Step> best;
    std::uint32_t bestBits = std::numeric_limits<std::uint32_t>::max();
    for (int round = 0; round < kRounds; ++round) {
        ChooseSteps(previous, lengths, costs);
        BuildPretree();
        if (bits_ >= bestBits) break;
        bestBits = bits_;
        best = steps_;
        for (std::size_t i = 0; i < costs.size(); ++i)
            costs[i] = pretree_[i] != 0 ? pretree_[i] : kUnusedSymbolBits;
    }
    if (bits_ != bestBits) {
        steps_ = best;
        BuildPretree();
    }
}

// Each element is reached by a difference or by the end of a run. The difference of an equal run is counted
// from the old length of its first element alone, so the others may have had any.
void EncodedCodeLengths::ChooseSteps(std::span<const std::uint8_t> previous,
                                     std::span<const std::uint8_t> lengths, const StepCosts& costs) {
    struct Arrival {
        std::uint32_t Bits = std::numeric_limits<std::uint32_t>::max();
        std::uint32_t From = 0;
        Step By;
    };
    const std::size_t n = lengths.size();
    std::vector<Arrival> arrivals(n + 1);
    arrivals[0].Bits = 0;
    const auto offer = [&](std::size_t from, std::size_t to, std::uint32_t price, Step by) {
        const std::uint32_t total = arrivals[from].Bits + price;
        if (total < arrivals[to].Bits) arrivals[to] = {total, static_cast<std::uint32_t>(from), by};
    };
    std::size_t runEnd = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const std::uint8_t difference = DifferenceOf(previous[i], lengths[i]);
        offer(i, i + 1, costs[difference], {difference, 0, 0});
        if (runEnd <= i)
            for (runEnd = i + 1; runEnd < n && lengths[runEnd] == lengths[i];) ++runEnd;
        const auto run = static_cast<std::uint32_t>(runEnd - i);
        const auto offerRuns = [&](const RunKind& kind, std::uint32_t price, std::uint8_t then) {
            for (std::uint32_t length = kind.Shortest; length <= std::min(run, kind.Longest()); ++length)
                offer(i, i + length, price,
                      {kind.Symbol, static_cast<std::uint8_t>(length - kind.Shortest), then});
        };
        const auto priceOf = [&](const RunKind& kind) {
            return costs[kind.Symbol] + static_cast<std::uint32_t>(kind.ExtraBits);
        };
        if (lengths[i] == 0) {
            offerRuns(kShortZeros, priceOf(kShortZeros), 0);
            offerRuns(kLongZeros, priceOf(kLongZeros), 0);
        }
        offerRuns(kEqual, priceOf(kEqual) + costs[difference], difference);
    }
    steps_.clear();
    for (std::size_t i = n; i > 0; i = arrivals[i].From) steps_.push_back(arrivals[i].By);
    std::reverse(steps_.begin(), steps_.end());
}

void EncodedCodeLengths::BuildPretree() {
    std::array<std::uint32_t, kPretreeSymbols> counts{};
    for (const Step& step : steps_) {
        ++counts[step.Symbol];
        if (step.Symbol == kEqual.Symbol) ++counts[step.Difference];
    }
    BuildCodeLengths(counts, kMaxPretreeLength, pretree_);
    bits_ = kPretreeLengthBits * kPretreeSymbols;
    for (std::size_t i = 0; i < counts.size(); ++i)
        bits_ +=
            counts[i] * (pretree_[i] + static_cast<std::uint32_t>(
                                           i < kDifferences ? 0 : ExtraBitsOf(static_cast<std::uint8_t>(i))));
}

void EncodedCodeLengths::Write(BitWriter& writer) const {
    std::array<std::uint16_t, kPretreeSymbols> codes;
    AssignCodes(pretree_, codes);
    for (const std::uint8_t length : pretree_) writer.Put(length, kPretreeLengthBits);
    for (const Step& step : steps_) {
        writer.Put(codes[step.Symbol], pretree_[step.Symbol]);
        writer.Put(step.Extra, ExtraBitsOf(step.Symbol));
        if (step.Symbol == kEqual.Symbol) writer.Put(codes[step.Difference], pretree_[step.Difference]);
    }
}

}  // namespace tools::cabarc::lzx
