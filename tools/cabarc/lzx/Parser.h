#pragma once
// The near-optimal parse: the cheapest path over the positions of one stretch of input, given prices. Every
// node keeps the repeat queue of the path that leads to it, so that repeat matches are tried with the offsets
// that they will really have. As only the cheapest path to a node survives, and with it one queue, a match
// whose use lies in its offset could be lost at its own end; so chains of a match, one differing byte and the
// same offset again are offered as one step too.

#include <cstdint>
#include <span>
#include <vector>

#include "tools/cabarc/lzx/Item.h"
#include "tools/cabarc/lzx/MatchFinder.h"
#include "tools/cabarc/lzx/Prices.h"

namespace tools::cabarc::lzx {

/// The matches of a run of positions: those of position i are All[First[i]] up to All[First[i + 1]].
struct MatchTable {
    std::vector<Match> All;
    std::vector<std::uint32_t> First;
};

class Parser {
 public:
    /// `sureLength` is the match length that is taken without looking for anything better.
    explicit Parser(std::uint32_t sureLength);

    /// Parses `length` (1..32768) bytes at `current`, a stretch inside one frame whose first position is
    /// number `first` of `matches`. At least `history` bytes can be read before `current`. Appends the items
    /// to `items` and carries `queue` over them.
    void Parse(const std::uint8_t* current, std::uint32_t length, const MatchTable& matches,
               std::size_t first, std::uint64_t history, const Prices& prices, RepeatQueue& queue,
               std::vector<Item>& items);

 private:
    // More than the longest chain, a power of two.
    static constexpr std::size_t kQueueRing = 1024;
    static_assert(kQueueRing > 2 * kMaxMatch + 1);

    /// Where an item starts: node, bytes, and the price of the path up to here.
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
    RepeatQueue& QueueAt(std::uint32_t node) { return queues_.data()[node % kQueueRing]; }

    void Offer(std::uint32_t to, std::uint64_t price, Item item);
    void OfferChain(const Start& start, Item match, std::uint32_t offset, std::uint64_t price,
                    const Prices& prices);
    std::uint32_t OfferRepeats(const Start& start, std::uint64_t history, const Prices& prices);
    std::uint32_t Expand(const Start& start, std::span<const Match> matches, std::uint64_t history,
                         const Prices& prices);
    void FindQueue(std::uint32_t node);
    void TakePath(const std::uint8_t* current, std::uint32_t length, std::vector<Item>& items) const;

    std::uint32_t sureLength_;
    std::vector<std::uint64_t> nodes_;  ///< price << 32 | packed item that arrives here, and the chain mark
    std::vector<Item> chainMatches_;    ///< the match that a chain to this node begins with
    std::vector<RepeatQueue> queues_;   ///< of the last nodes, as a ring
};

}  // namespace tools::cabarc::lzx
