#pragma once
// The optimal parse: the cheapest way, at given prices, to send one stretch of input as literals and
// matches. "Optimal" is the field's word; with recent offsets the result is only near the optimum, as the
// .cpp explains.
//
// Its time is linear in the stretch, with a factor for the lengths of all matches at a position. Its
// decisions are as good as the prices and the matches that it is given: it looks for no matches itself,
// except those at the recent offsets.

#include <cstdint>
#include <span>
#include <vector>

#include "tools/cabarc/lzx/Item.h"
#include "tools/cabarc/lzx/MatchFinder.h"
#include "tools/cabarc/lzx/Prices.h"

namespace tools::cabarc::lzx {

/// The matches of a run of positions, kept because a segment is parsed several times: those of position i are
/// All[First[i]] up to All[First[i + 1]], so First has one element more than there are positions.
struct MatchCache {
    std::vector<Match> All;
    std::vector<std::uint32_t> First;
};

/// Keeps its working memory between calls, and nothing else.
class OptimalParser {
 public:
    /// A packed item under this mark is the last one of a chain.
    static constexpr std::uint32_t kChainMark = 1U << 31;

    /// The most bytes that one step of the parse covers: a chain of match, literal and match.
    static constexpr std::uint32_t kLongestStep = 2 * kMaxMatch + 1;

    /// Nodes whose recent offsets are kept: more than a step is long, a power of two.
    static constexpr std::size_t kRecentRing = 1024;

    /// A match of `takeAtOnceLength` (kMinMatch to kMaxMatch) or more is taken without looking for anything
    /// better that begins inside it.
    explicit OptimalParser(std::uint32_t takeAtOnceLength);

    /// Parses `length` (1 to kFrameSize) bytes at `current`, a stretch inside one frame whose first position
    /// is number `first` of `matches`; matches that cross its end are cut. `history` is the number of the
    /// folder's bytes before it, of which at least a window can be read. Appends the items to `items` and
    /// carries `recent` over them. The result depends on the arguments alone.
    void Parse(const std::uint8_t* current, std::uint32_t length, const MatchCache& matches,
               std::size_t first, std::uint64_t history, const Prices& prices, RecentOffsets& recent,
               std::vector<Item>& items);

 private:
    /// Where a step begins: its node (0-based position in the stretch), its bytes, and the price of the path
    /// up to here.
    struct Start {
        std::uint32_t Node;
        const std::uint8_t* Here;
        std::uint32_t Left;  ///< bytes up to the end of the stretch
        std::uint64_t Price;
    };

    // Parse checks once that the whole stretch lies in the nodes and in the matches. A check of each index in
    // its loops would make packing slower by a tenth, so they reach their elements by these and by the rows
    // of prices as pointers.
    std::uint64_t& NodeAt(std::uint32_t node) { return nodes_.data()[node]; }
    RecentOffsets& RecentAt(std::uint32_t node) { return recentAt_.data()[node % kRecentRing]; }

    void Offer(std::uint32_t to, std::uint64_t price, Item item);
    void OfferLengths(std::uint32_t from, std::uint64_t base, const std::uint16_t* row,
                      std::uint32_t shortest, std::uint32_t longest, std::uint32_t formatted);
    void OfferChain(const Start& start, Item match, std::uint32_t offset, std::uint64_t price,
                    const Prices& prices);
    std::uint32_t OfferRecent(const Start& start, std::uint64_t history, const Prices& prices);
    std::uint32_t Expand(const Start& start, std::span<const Match> matches, std::uint64_t history,
                         const Prices& prices);
    void FindRecent(std::uint32_t node);
    void TakePath(const std::uint8_t* current, std::uint32_t length, std::vector<Item>& items) const;

    std::uint32_t takeAtOnceLength_;
    std::vector<std::uint64_t> nodes_;     ///< price << 32 | packed item that arrives here, with its mark
    std::vector<Item> chainMatches_;       ///< the match that a chain to this node begins with
    std::vector<RecentOffsets> recentAt_;  ///< of the last nodes, as a ring
};

}  // namespace tools::cabarc::lzx
