// The positions of the stretch are the nodes of a graph, and every literal or match that could be sent is an
// edge from the position where it begins to the one where it ends. Its length is its price. The cheapest
// parse is the shortest path from the first node to the last. All edges lead forward, so one pass over the
// nodes in order finds it: when a node's turn comes, every way to it has been offered, and its price is
// final.
//
// A node is one 64-bit number: the price of the best path is in the upper half, the last item of that path
// in the lower one. The cheaper of two offers is then the smaller number, and an offer is one min() without
// a branch; among equal prices the smaller item wins, which keeps the result the same on every machine. The
// path is read backwards from the last node by the lengths of the items.
//
// Which lengths are offered: a match of length n can also be sent as any shorter one, and that is sometimes
// right, because a shorter one lets a better match begin earlier. Of all offsets for a length only the
// nearest is offered (the match finder gives no other): it never has the later position slot of two.
//
// Recent offsets are what makes this near-optimal only. What a match at a recent offset costs depends on the
// matches before it, so the true graph has a node for each position and each possible triple of offsets. Here
// each position keeps one triple, that of its cheapest path; a path that is a little dearer but would have
// kept a useful offset is lost. The parse runs forward, from the first position to the last, because only
// then is the triple at a node known when the matches at these offsets are tried. It is derived when the
// node's turn comes, once, and not at each offer; as steps are short, a ring of the last triples is enough.
//
// Chains mend the commonest loss. Where one byte of a long repetition was changed, the match before it and
// the match after it have the same offset, and the second one is cheap as a recent offset. But at the
// changed byte the first match often loses against something nearer, and its offset with it. So the longest
// match of each offset is also offered as one edge with the byte after it and the longest match that follows
// at the same offset. The edge's last item carries kChainMark and its first match is kept aside; the byte
// between takes no space. A chain costs one comparison of two bytes where it fails, which is nearly always.
//
// A match of the take-at-once length ends the search at its position, and nothing inside it is expanded.
// Without it, a long run would offer hundreds of lengths at each of its positions.
//
// Cost: for each position one literal, up to three recent offsets with all their lengths, and all lengths up
// to the longest match once. Memory: 12 bytes for each position of a frame. It is the wrong tool for a
// single quick parse: a lazy parse (TrialParse.cpp) needs no prices, only one or two candidates for a
// position, and a small part of the time.

#include "tools/cabarc/lzx/OptimalParser.h"

#include <algorithm>
#include <limits>

#include "tools/cabarc/lzx/StringMatch.h"

namespace tools::cabarc::lzx {

namespace {

constexpr std::uint64_t kUnreached = std::numeric_limits<std::uint64_t>::max();

bool PairsMatch(const std::uint8_t* a, const std::uint8_t* b) {
    return a[0] == b[0] && a[1] == b[1];
}

}  // namespace

OptimalParser::OptimalParser(std::uint32_t takeAtOnceLength)
    : takeAtOnceLength_(takeAtOnceLength),
      nodes_(kFrameSize + 1),
      chainMatches_(kFrameSize + 1),
      recentAt_(kRecentRing) {}

inline void OptimalParser::Offer(std::uint32_t to, std::uint64_t price, Item item) {
    std::uint64_t& node = NodeAt(to);
    node = std::min(node, (price << 32) | item.Packed());
}

// Offers a match in all lengths from `shortest` to `longest`, at `base` and the prices of `row`. This is
// where the parser spends its time. The length takes the lowest bits of an item and the price those above the
// item, so each offer is the sum of what all lengths share, the length and its price.
inline void OptimalParser::OfferLengths(std::uint32_t from, std::uint64_t base, const std::uint16_t* row,
                                        std::uint32_t shortest, std::uint32_t longest,
                                        std::uint32_t formatted) {
    std::uint64_t* const nodes = &NodeAt(from);
    const std::uint64_t shared = (base << 32) | Item::Match(0, formatted).Packed();
    for (std::size_t l = shortest; l <= longest; ++l)
        nodes[l] = std::min(nodes[l], shared + l + (std::uint64_t{row[l - kMinMatch]} << 32));
}

// Offers `match`, whose end has the given price, with the literal after it and the same offset again.
inline void OptimalParser::OfferChain(const Start& start, Item match, std::uint32_t offset,
                                      std::uint64_t price, const Prices& prices) {
    const std::uint32_t skipped = match.Length() + 1;
    if (skipped + kMinMatch > start.Left) return;
    const std::uint8_t* const again = start.Here + skipped;
    if (!PairsMatch(again - offset, again)) return;
    const std::uint32_t length =
        ExtendMatch(again - offset, again, kMinMatch, std::min(start.Left - skipped, kMaxMatch));
    const std::uint32_t to = start.Node + skipped + length;
    const std::uint64_t total =
        price + prices.Literal(start.Here[skipped - 1]) + prices.Matches(0).data()[length - kMinMatch];
    std::uint64_t& node = NodeAt(to);
    if (total >= node >> 32) return;
    node = (total << 32) | kChainMark | Item::Match(length, 0).Packed();
    chainMatches_.data()[to] = match;
}

// Offers the matches at the recent offsets. Returns 0, or the length of one that is to be taken at once.
inline std::uint32_t OptimalParser::OfferRecent(const Start& start, std::uint64_t history,
                                                const Prices& prices) {
    const RecentOffsets& recent = RecentAt(start.Node);
    const std::uint32_t longest = std::min(start.Left, kMaxMatch);
    for (std::uint32_t repeat = 0; repeat < kRecentOffsets; ++repeat) {
        const std::uint32_t offset = recent.Offsets[repeat];
        if (offset > history || !PairsMatch(start.Here - offset, start.Here)) continue;
        const std::uint32_t length = ExtendMatch(start.Here - offset, start.Here, kMinMatch, longest);
        const std::uint16_t* const row = prices.Matches(static_cast<int>(repeat)).data();
        const std::uint64_t end = start.Price + row[length - kMinMatch];
        if (length >= takeAtOnceLength_) {
            Offer(start.Node + length, end, Item::Match(length, repeat));
            return length;
        }
        OfferLengths(start.Node, start.Price, row, kMinMatch, length, repeat);
        OfferChain(start, Item::Match(length, repeat), offset, end, prices);
    }
    return 0;
}

// Offers everything that can start at a node. Returns how many positions the parse advances: one, or the
// length of a match that is long enough to be taken at once.
inline std::uint32_t OptimalParser::Expand(const Start& start, std::span<const Match> matches,
                                           std::uint64_t history, const Prices& prices) {
    Offer(start.Node + 1, start.Price + prices.Literal(*start.Here), Item::Literal(*start.Here));
    const std::uint32_t longest = std::min(start.Left, kMaxMatch);
    if (longest < kMinMatch) return 1;
    if (const std::uint32_t taken = OfferRecent(start, history, prices); taken != 0) return taken;

    std::uint32_t shortest = kMinMatch;
    for (const Match match : matches) {
        const std::uint32_t formatted = match.Offset() + kOffsetBias;
        const int slot = SlotOf(formatted);
        const std::uint16_t* const row = prices.Matches(slot).data();
        const std::uint64_t base = start.Price + (slot >= kFirstAlignedSlot ? prices.LowBits(formatted) : 0);
        const std::uint32_t length = std::min(match.Length(), longest);
        const std::uint64_t end = base + row[length - kMinMatch];
        if (length >= takeAtOnceLength_) {
            Offer(start.Node + length, end, Item::Match(length, formatted));
            return length;
        }
        OfferLengths(start.Node, base, row, shortest, length, formatted);
        OfferChain(start, Item::Match(length, formatted), match.Offset(), end, prices);
        shortest = length + 1;
    }
    return 1;
}

// Derives the recent offsets at a node from those where its last step began.
inline void OptimalParser::FindRecent(std::uint32_t node) {
    const auto packed = static_cast<std::uint32_t>(NodeAt(node));
    const Item arrived = Item::FromPacked(packed & ~kChainMark);
    RecentOffsets& recent = RecentAt(node);
    if ((packed & kChainMark) == 0) {
        recent = RecentAt(node - arrived.Length());
        recent.Apply(arrived);
    } else {
        const Item match = chainMatches_.data()[node];
        recent = RecentAt(node - arrived.Length() - 1 - match.Length());
        recent.Apply(match);  // the literal and the recent offset 0 change nothing
    }
}

// Appends the items of the cheapest path over the stretch.
void OptimalParser::TakePath(const std::uint8_t* current, std::uint32_t length,
                             std::vector<Item>& items) const {
    const auto mark = static_cast<std::ptrdiff_t>(items.size());
    for (std::uint32_t i = length; i > 0;) {
        const auto packed = static_cast<std::uint32_t>(nodes_[i]);
        items.push_back(Item::FromPacked(packed & ~kChainMark));
        if ((packed & kChainMark) != 0) {
            const Item match = chainMatches_[i];
            i -= items.back().Length() + 1;
            items.push_back(Item::Literal(current[i]));
            items.push_back(match);
        }
        i -= items.back().Length();
    }
    std::reverse(items.begin() + mark, items.end());
}

void OptimalParser::Parse(const std::uint8_t* current, std::uint32_t length, const MatchCache& matches,
                          std::size_t first, std::uint64_t history, const Prices& prices,
                          RecentOffsets& recent, std::vector<Item>& items) {
    std::ranges::fill(std::span(nodes_).first(length + 1), kUnreached);
    const std::span<const std::uint32_t> inStretch = std::span(matches.First).subspan(first, length + 1);
    const auto matchesAt = [all = matches.All.data(), begin = inStretch.data()](std::uint32_t i) {
        return std::span(all + begin[i], all + begin[i + 1]);
    };
    nodes_[0] = 0;
    recentAt_[0] = recent;
    for (std::uint32_t i = 0; i < length;) {
        if (i > 0) FindRecent(i);
        i += Expand({i, current + i, length - i, NodeAt(i) >> 32}, matchesAt(i), history + i, prices);
    }
    const std::size_t mark = items.size();
    TakePath(current, length, items);
    for (std::size_t i = mark; i < items.size(); ++i) recent.Apply(items[i]);
}

}  // namespace tools::cabarc::lzx
