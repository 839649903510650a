#include "tools/cabarc/lzx/Parser.h"

#include <algorithm>
#include <limits>

#include "tools/cabarc/lzx/Agreement.h"

namespace tools::cabarc::lzx {

namespace {

constexpr std::uint64_t kUnreached = std::numeric_limits<std::uint64_t>::max();

// Marks a packed item as the last one of a chain; packed items leave the bit free.
constexpr std::uint32_t kChainMark = 1U << 31;

bool PairAgrees(const std::uint8_t* a, const std::uint8_t* b) {
    return a[0] == b[0] && a[1] == b[1];
}

}  // namespace

Parser::Parser(std::uint32_t sureLength)
    : sureLength_(sureLength), nodes_(kFrameSize + 1), chainMatches_(kFrameSize + 1), queues_(kQueueRing) {}

inline void Parser::Offer(std::uint32_t to, std::uint64_t price, Item item) {
    std::uint64_t& node = NodeAt(to);
    node = std::min(node, (price << 32) | item.Packed());
}

// Offers `match`, whose end has the given price, with the literal behind it and the same offset again.
inline void Parser::OfferChain(const Start& start, Item match, std::uint32_t offset, std::uint64_t price,
                               const Prices& prices) {
    const std::uint32_t skipped = match.Length() + 1;
    if (skipped + kMinMatch > start.Left) return;
    const std::uint8_t* const again = start.Here + skipped;
    if (!PairAgrees(again - offset, again)) return;
    const std::uint32_t length =
        Agreement(again - offset, again, kMinMatch, std::min(start.Left - skipped, kMaxMatch));
    const std::uint32_t to = start.Node + skipped + length;
    const std::uint64_t total =
        price + prices.Literal(start.Here[skipped - 1]) + prices.Matches(0).data()[length - kMinMatch];
    std::uint64_t& node = NodeAt(to);
    if (total >= node >> 32) return;
    node = (total << 32) | kChainMark | Item::Match(length, 0).Packed();
    chainMatches_.data()[to] = match;
}

// Offers the matches with the offsets of the queue. Returns 0, or the length of one that is to be taken.
inline std::uint32_t Parser::OfferRepeats(const Start& start, std::uint64_t history, const Prices& prices) {
    const RepeatQueue& queue = QueueAt(start.Node);
    const std::uint32_t longest = std::min(start.Left, kMaxMatch);
    for (std::uint32_t repeat = 0; repeat < kRepeats; ++repeat) {
        const std::uint32_t offset = queue.Offsets[repeat];
        if (offset > history || !PairAgrees(start.Here - offset, start.Here)) continue;
        const std::uint32_t length = Agreement(start.Here - offset, start.Here, kMinMatch, longest);
        const std::uint16_t* const row = prices.Matches(static_cast<int>(repeat)).data();
        const std::uint64_t end = start.Price + row[length - kMinMatch];
        if (length >= sureLength_) {
            Offer(start.Node + length, end, Item::Match(length, repeat));
            return length;
        }
        for (std::uint32_t l = kMinMatch; l <= length; ++l)
            Offer(start.Node + l, start.Price + row[l - kMinMatch], Item::Match(l, repeat));
        OfferChain(start, Item::Match(length, repeat), offset, end, prices);
    }
    return 0;
}

// Offers everything that can start at a node; returns how far the parse may go on from here: one position, or
// the length of a match that is long enough to be taken at once.
inline std::uint32_t Parser::Expand(const Start& start, std::span<const Match> matches, std::uint64_t history,
                                    const Prices& prices) {
    Offer(start.Node + 1, start.Price + prices.Literal(*start.Here), Item::Literal(*start.Here));
    const std::uint32_t longest = std::min(start.Left, kMaxMatch);
    if (longest < kMinMatch) return 1;
    if (const std::uint32_t taken = OfferRepeats(start, history, prices); taken != 0) return taken;

    std::uint32_t shortest = kMinMatch;
    for (const Match match : matches) {
        const std::uint32_t formatted = match.Offset() + kOffsetBias;
        const int slot = SlotOf(formatted);
        const std::uint16_t* const row = prices.Matches(slot).data();
        const std::uint64_t base = start.Price + (slot >= kFirstAlignedSlot ? prices.LowBits(formatted) : 0);
        const std::uint32_t length = std::min(match.Length(), longest);
        const std::uint64_t end = base + row[length - kMinMatch];
        if (length >= sureLength_) {
            Offer(start.Node + length, end, Item::Match(length, formatted));
            return length;
        }
        for (std::uint32_t l = shortest; l <= length; ++l)
            Offer(start.Node + l, base + row[l - kMinMatch], Item::Match(l, formatted));
        OfferChain(start, Item::Match(length, formatted), match.Offset(), end, prices);
        shortest = length + 1;
    }
    return 1;
}

// Derives the queue at a node from the queue where its last step began.
inline void Parser::FindQueue(std::uint32_t node) {
    const auto packed = static_cast<std::uint32_t>(NodeAt(node));
    const Item arrived = Item::FromPacked(packed & ~kChainMark);
    RepeatQueue& queue = QueueAt(node);
    if ((packed & kChainMark) == 0) {
        queue = QueueAt(node - arrived.Length());
        queue.Apply(arrived);
    } else {
        const Item match = chainMatches_.data()[node];
        queue = QueueAt(node - arrived.Length() - 1 - match.Length());
        queue.Apply(match);  // the literal and the repeat leave it alone
    }
}

// Appends the items of the cheapest path over the stretch.
void Parser::TakePath(const std::uint8_t* current, std::uint32_t length, std::vector<Item>& items) const {
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

void Parser::Parse(const std::uint8_t* current, std::uint32_t length, const MatchTable& matches,
                   std::size_t first, std::uint64_t history, const Prices& prices, RepeatQueue& queue,
                   std::vector<Item>& items) {
    std::ranges::fill(std::span(nodes_).first(length + 1), kUnreached);
    const std::span<const std::uint32_t> inStretch = std::span(matches.First).subspan(first, length + 1);
    const auto matchesAt = [all = matches.All.data(), begin = inStretch.data()](std::uint32_t i) {
        return std::span(all + begin[i], all + begin[i + 1]);
    };
    nodes_[0] = 0;
    queues_[0] = queue;
    for (std::uint32_t i = 0; i < length;) {
        if (i > 0) FindQueue(i);
        i += Expand({i, current + i, length - i, NodeAt(i) >> 32}, matchesAt(i), history + i, prices);
    }
    const std::size_t mark = items.size();
    TakePath(current, length, items);
    for (std::size_t i = mark; i < items.size(); ++i) queue.Apply(items[i]);
}

}  // namespace tools::cabarc::lzx
