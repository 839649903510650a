#include "tools/cabarc/lzx/Parser.h"

#include <algorithm>
#include <limits>

namespace tools::cabarc::lzx {

namespace {

constexpr std::size_t kQueueRing = 512;  // more than the longest item, a power of two
static_assert(kQueueRing > kMaxMatch);
constexpr std::uint64_t kUnreached = std::numeric_limits<std::uint64_t>::max();

std::uint32_t Agreement(const std::uint8_t* a, const std::uint8_t* b, std::uint32_t limit) {
    std::uint32_t n = 0;
    while (n < limit && a[n] == b[n]) ++n;
    return n;
}

}  // namespace

Parser::Parser(std::uint32_t niceLength)
    : niceLength_(niceLength), nodes_(kFrameSize + 1), queues_(kQueueRing) {}

void Parser::Offer(std::uint32_t to, std::uint64_t price, Item item) {
    nodes_[to] = std::min(nodes_[to], (price << 32) | item.Packed());
}

// Offers everything that can start at node i; returns how far the parse may go on from here: one position, or
// the length of a match that is long enough to be taken at once.
std::uint32_t Parser::Expand(std::uint32_t i, const std::uint8_t* here, std::uint32_t left,
                             std::span<const Match> matches, std::uint64_t history, const Prices& prices) {
    const std::uint64_t base = nodes_[i] >> 32;
    const RepeatQueue& queue = queues_[i % kQueueRing];
    const std::uint32_t longest = std::min(left, kMaxMatch);
    Offer(i + 1, base + prices.Literal(*here), Item::Literal(*here));
    if (longest < kMinMatch) return 1;

    for (std::uint32_t repeat = 0; repeat < kRepeats; ++repeat) {
        const std::uint32_t offset = queue.Offsets[repeat];
        if (offset > history) continue;
        const std::uint32_t length = Agreement(here - offset, here, longest);
        if (length < kMinMatch) continue;
        const Prices::Row& row = prices.Matches(static_cast<int>(repeat));
        if (length >= niceLength_) {
            Offer(i + length, base + row[length - kMinMatch], Item::Match(length, repeat));
            return length;
        }
        for (std::uint32_t l = kMinMatch; l <= length; ++l)
            Offer(i + l, base + row[l - kMinMatch], Item::Match(l, repeat));
    }

    std::uint32_t shortest = kMinMatch;
    for (const Match match : matches) {
        const std::uint32_t formatted = match.Offset() + kOffsetBias;
        const int slot = SlotOf(formatted);
        const Prices::Row& row = prices.Matches(slot);
        const std::uint64_t start = base + (slot >= kFirstAlignedSlot ? prices.LowBits(formatted) : 0);
        const std::uint32_t length = std::min(match.Length(), longest);
        if (length >= niceLength_) {
            Offer(i + length, start + row[length - kMinMatch], Item::Match(length, formatted));
            return length;
        }
        for (std::uint32_t l = shortest; l <= length; ++l)
            Offer(i + l, start + row[l - kMinMatch], Item::Match(l, formatted));
        shortest = length + 1;
    }
    return 1;
}

void Parser::Parse(const std::uint8_t* current, std::uint32_t length, const MatchTable& matches,
                   std::size_t first, std::uint64_t history, const Prices& prices, RepeatQueue& queue,
                   std::vector<Item>& items) {
    std::fill_n(nodes_.begin(), length + 1, kUnreached);
    nodes_[0] = 0;
    queues_[0] = queue;
    for (std::uint32_t i = 0; i < length;) {
        if (i > 0) {
            const Item arrived = Item::FromPacked(static_cast<std::uint32_t>(nodes_[i]));
            RepeatQueue& here = queues_[i % kQueueRing];
            here = queues_[(i - arrived.Length()) % kQueueRing];
            here.Apply(arrived);
        }
        i += Expand(i, current + i, length - i, matches.At(first + i), history + i, prices);
    }
    const auto mark = static_cast<std::ptrdiff_t>(items.size());
    for (std::uint32_t i = length; i > 0;) {
        items.push_back(Item::FromPacked(static_cast<std::uint32_t>(nodes_[i])));
        i -= items.back().Length();
    }
    std::reverse(items.begin() + mark, items.end());
    for (auto item = items.begin() + mark; item != items.end(); ++item) queue.Apply(*item);
}

}  // namespace tools::cabarc::lzx
