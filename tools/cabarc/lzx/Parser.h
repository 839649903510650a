#pragma once
// The near-optimal parse: the cheapest path over the positions of one stretch of input, given prices. Every
// node keeps the repeat queue of the path that leads to it, so that repeat matches are tried with the offsets
// that they will really have.

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

    std::span<const Match> At(std::size_t i) const {
        return {All.data() + First[i], All.data() + First[i + 1]};
    }
};

class Parser {
 public:
    /// `niceLength` is the match length that is taken without looking for anything better.
    explicit Parser(std::uint32_t niceLength);

    /// Parses `length` (1..32768) bytes at `current`, a stretch inside one frame whose first position is
    /// number `first` of `matches`. At least `history` bytes can be read before `current`. Appends the items
    /// to `items` and carries `queue` over them.
    void Parse(const std::uint8_t* current, std::uint32_t length, const MatchTable& matches,
               std::size_t first, std::uint64_t history, const Prices& prices, RepeatQueue& queue,
               std::vector<Item>& items);

 private:
    void Offer(std::uint32_t to, std::uint64_t price, Item item);
    std::uint32_t Expand(std::uint32_t i, const std::uint8_t* here, std::uint32_t left,
                         std::span<const Match> matches, std::uint64_t history, const Prices& prices);

    std::uint32_t niceLength_;
    std::vector<std::uint64_t> nodes_;  ///< price << 32 | packed item that arrives here
    std::vector<RepeatQueue> queues_;   ///< of the last nodes, as a ring
};

}  // namespace tools::cabarc::lzx
