// The strings of the window that share a hash of their first four bytes hang in one binary search tree, which
// keeps two orders at once:
//
//   by contents   every string in the smaller subtree of a node is less than the node's, every one in the
//                 greater subtree is greater (strings are compared by their first NiceLength bytes);
//   by age        every node is newer than all nodes under it.
//
// A new string is the newest, so it becomes the root. Walk goes down the old tree as a search for the new
// string would, and on its way splits it in two: a node that is less than the new string goes, with its
// smaller subtree, to the open end at the right rim of the new smaller half, and the walk turns to its
// greater subtree; a node that is greater goes to the left rim of the other half. Each step rewrites one
// link, no node is moved, and both orders hold again at the end.
//
// Why the walk meets the matches that the parser wants: the strings that agree with the new one in at least L
// bytes are neighbours in the order by contents, and the new string belongs among them. The newest of them is
// above all the others: a node that parted two of them would lie between them and thus be one of them, and
// older. So it is on the path of the new string, before any of the others, and nodes are met from new to old.
// Hence the first node that agrees in L bytes is the nearest that does, for each L, and reporting only what
// beats the best so far gives each length its nearest offset.
//
// Why a comparison need not start at the first byte: what is still ahead lies between the last node that was
// less and the last one that was greater. It agrees with the new string in at least as many bytes as the less
// alike of those two does.
//
// Nothing is ever removed. A node that has left the window ends the walk: all under it is older still. Its
// memory is used again one window later, when no link that is followed leads to it any more. A walk that
// ends at Depth cuts off what it has not reached, which is older than all that it has seen, so only far
// matches are lost. A node that agrees in NiceLength bytes is replaced by the new string, which takes over
// its subtrees: for any later search the nearer of two equal strings is as good. In a run of one byte every
// walk thus ends at its first node.
//
// Cost of a position: its hash and two for what is prefetched, at most Depth nodes, each but the first a
// cache miss in a large window, and a few compared bytes. Hash chains are the alternative: entering costs one
// store instead of a walk, so they win where most positions are skipped or where few candidates are looked
// at, as in a lazy parse (TrialParse.cpp). But a chain holds its candidates by age alone: nothing leads it to
// a long match far back in a window of 2 MiB.

#include "tools/cabarc/lzx/MatchFinder.h"

#include <algorithm>

#include "tools/cabarc/lzx/StringMatch.h"

namespace tools::cabarc::lzx {

namespace {

// With half as many trees, searching 3 MB of programs visits 6 % more nodes; with twice as many, 4 % fewer.
constexpr int kRootHashBits = 18;
// Bytes under the hash of a tree; shorter strings are not in any.
constexpr std::uint32_t kTreeBytes = 4;

// A search begins with three cache misses: the root, its node, and the string of that node. They are
// prefetched while earlier searches run: the root for the string this many bytes ahead, and for a nearer one,
// whose root has arrived by then, the other two.
constexpr std::uint32_t kRootAhead = 12;
constexpr std::uint32_t kNodeAhead = 6;

std::uint32_t Pair(const std::uint8_t* p) {
    return std::uint32_t{p[0]} | (std::uint32_t{p[1]} << 8);
}

std::uint32_t Triple(const std::uint8_t* p) {
    return std::uint32_t{p[0]} | (std::uint32_t{p[1]} << 8) | (std::uint32_t{p[2]} << 16);
}

std::uint32_t Quad(const std::uint8_t* p) {
    return Triple(p) | (std::uint32_t{p[3]} << 24);
}

// Which tree a string belongs to.
std::uint32_t TreeOf(const std::uint8_t* p) {
    return Hash(Quad(p), kRootHashBits);
}

}  // namespace

// Places are stored as position + window size, so that 0 is always too far away to be a match.
MatchFinder::MatchFinder(int windowBits, SearchLimits limits)
    : windowSize_(1U << windowBits),
      maxOffset_(MaxOffset(windowBits)),
      limits_(limits),
      pairs_(1U << 16),
      triples_(1U << kTripleHashBits),
      roots_(1U << kRootHashBits),
      nodes_(std::make_unique_for_overwrite<std::uint32_t[]>(std::size_t{2} << windowBits)) {}

// The tables have an element for each hash of their bits and the nodes two for each place in the window, so
// the accesses below need no check of the index: this is one of the two places where packing spends its time.

// Prefetches the memory with which the next searches begin. `limit` is the number of bytes that may be read.
inline void MatchFinder::PrefetchAhead(std::uint32_t now, const std::uint8_t* current,
                                       std::uint32_t limit) const {
    if (limit < kRootAhead + kTreeBytes) return;
    Prefetch(&roots_.data()[TreeOf(current + kRootAhead)]);
    const std::uint32_t place = roots_.data()[TreeOf(current + kNodeAhead)];
    const std::uint32_t offset = now + kNodeAhead - place;
    if (offset > maxOffset_) return;
    Prefetch(&nodes_.get()[std::size_t{2} * (place & (windowSize_ - 1))]);
    Prefetch(current + kNodeAhead - offset);
}

// Enters the current string as the root of its tree. `best` is the length that a match must exceed to be
// reported, `limit` the bytes that are compared. `smaller` and `greater` are the open ends of the two halves:
// the links to be set by the next node that is less, or greater, than the current string.
template <typename Report>
void MatchFinder::Walk(std::uint32_t now, const std::uint8_t* current, std::uint32_t limit,
                       std::uint32_t best, const Report& report) {
    const std::uint32_t mask = windowSize_ - 1;
    std::uint32_t* const nodes = nodes_.get();
    std::uint32_t& root = roots_.data()[TreeOf(current)];
    std::uint32_t place = root;
    root = now;
    PrefetchAhead(now, current, limit);
    std::uint32_t* smaller = &nodes[std::size_t{2} * (now & mask)];
    std::uint32_t* greater = smaller + 1;
    std::uint32_t smallerPrefix = 0;
    std::uint32_t greaterPrefix = 0;
    for (int depth = limits_.Depth; depth > 0; --depth) {
        const std::uint32_t offset = now - place;
        if (offset > maxOffset_) break;
        std::uint32_t* const node = &nodes[std::size_t{2} * (place & mask)];
        const std::uint8_t* const old = current - offset;
        std::uint32_t length = std::min(smallerPrefix, greaterPrefix);
        if (old[length] == current[length]) {
            length = ExtendMatch(old, current, length + 1, limit);
            if (length > best) {
                best = length;
                report(length, offset);
            }
            if (length >= limit) {
                // As far as strings are compared the two are equal: the new one takes the old one's place.
                *smaller = node[0];
                *greater = node[1];
                return;
            }
        }
        if (old[length] < current[length]) {
            *smaller = place;
            smaller = node + 1;
            place = *smaller;
            smallerPrefix = length;
        } else {
            *greater = place;
            greater = node;
            place = *greater;
            greaterPrefix = length;
        }
    }
    *smaller = 0;
    *greater = 0;
}

std::uint32_t MatchFinder::Find(std::uint32_t position, const std::uint8_t* current, std::uint32_t available,
                                std::uint32_t longest, std::vector<Match>& found) {
    std::uint32_t best = 0;
    longest = std::min(longest, available);
    if (longest < kMinMatch) {
        Skip(position, current, available);
        return best;
    }
    const std::uint32_t now = position + windowSize_;
    const auto report = [&](std::uint32_t length, std::uint32_t offset) {
        if (best >= longest) return;
        best = std::min(length, longest);
        const Match match(best, offset);  // emplace_back would also ask the vector for its last element
        found.push_back(match);
    };

    std::uint32_t& pair = pairs_.data()[Pair(current)];
    const std::uint32_t pairOffset = now - pair;
    pair = now;
    if (available < 3) {
        if (pairOffset <= maxOffset_) report(2, pairOffset);
        return best;
    }
    std::uint32_t& triple = triples_.data()[Hash(Triple(current) << 8, kTripleHashBits)];
    const std::uint32_t tripleOffset = now - triple;
    triple = now;
    const bool tripleHolds = tripleOffset <= maxOffset_ && Triple(current - tripleOffset) == Triple(current);
    // When the nearest pair is the nearest triple too, the longer match covers both lengths.
    if (pairOffset <= maxOffset_ && !(tripleHolds && tripleOffset == pairOffset)) report(2, pairOffset);
    if (tripleHolds) report(3, tripleOffset);
    if (available < kTreeBytes) return best;

    const std::uint32_t limit = std::min(available, limits_.NiceLength);
    Walk(now, current, limit, tripleHolds ? 3 : 2, [&](std::uint32_t length, std::uint32_t offset) {
        if (length >= limit)
            length = ExtendMatch(current - offset, current, length, std::min(available, kMaxMatch));
        report(length, offset);
    });
    return best;
}

void MatchFinder::Skip(std::uint32_t position, const std::uint8_t* current, std::uint32_t available) {
    if (available < kTreeBytes) return;
    const std::uint32_t now = position + windowSize_;
    pairs_[Pair(current)] = now;
    triples_[Hash(Triple(current) << 8, kTripleHashBits)] = now;
    const std::uint32_t limit = std::min(available, limits_.NiceLength);
    Walk(now, current, limit, limit, [](std::uint32_t, std::uint32_t) {});
}

}  // namespace tools::cabarc::lzx
