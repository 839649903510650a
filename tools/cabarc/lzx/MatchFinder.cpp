#include "tools/cabarc/lzx/MatchFinder.h"

#include <algorithm>

#include "tools/cabarc/lzx/Agreement.h"
#include "tools/cabarc/lzx/Hash.h"

namespace tools::cabarc::lzx {

namespace {

constexpr int kRootHashBits = 17;
constexpr std::uint32_t kTreeBytes = 4;  // bytes under the roots' hash

std::uint32_t Pair(const std::uint8_t* p) {
    return std::uint32_t{p[0]} | (std::uint32_t{p[1]} << 8);
}

std::uint32_t Triple(const std::uint8_t* p) {
    return std::uint32_t{p[0]} | (std::uint32_t{p[1]} << 8) | (std::uint32_t{p[2]} << 16);
}

std::uint32_t Quad(const std::uint8_t* p) {
    return Triple(p) | (std::uint32_t{p[3]} << 24);
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
// the accesses below need no check of the index: this is where packing spends half of its time.

// Goes down the tree of the current string and rebuilds it with this string as its top. `best` is the length
// that a match must exceed to be reported.
template <typename Report>
void MatchFinder::Walk(std::uint32_t now, const std::uint8_t* current, std::uint32_t limit,
                       std::uint32_t best, const Report& report) {
    const std::uint32_t mask = windowSize_ - 1;
    std::uint32_t* const nodes = nodes_.get();
    std::uint32_t& root = roots_.data()[Hash(Quad(current), kRootHashBits)];
    std::uint32_t place = root;
    root = now;
    std::uint32_t* smaller = &nodes[std::size_t{2} * (now & mask)];
    std::uint32_t* greater = smaller + 1;
    std::uint32_t smallerAgrees = 0;
    std::uint32_t greaterAgrees = 0;
    for (int depth = limits_.Depth; depth > 0; --depth) {
        const std::uint32_t offset = now - place;
        if (offset > maxOffset_) break;
        std::uint32_t* const node = &nodes[std::size_t{2} * (place & mask)];
        const std::uint8_t* const old = current - offset;
        std::uint32_t length = std::min(smallerAgrees, greaterAgrees);
        if (old[length] == current[length]) {
            length = Agreement(old, current, length + 1, limit);
            if (length > best) {
                best = length;
                report(length, offset);
            }
            if (length >= limit) {
                // The old string can no longer be told from the new one: the new one takes its place.
                *smaller = node[0];
                *greater = node[1];
                return;
            }
        }
        if (old[length] < current[length]) {
            *smaller = place;
            smaller = node + 1;
            place = *smaller;
            smallerAgrees = length;
        } else {
            *greater = place;
            greater = node;
            place = *greater;
            greaterAgrees = length;
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
    // A pair whose third byte agrees too is the same place as the triple's: the longer match says it all.
    if (pairOffset <= maxOffset_ && !(tripleHolds && tripleOffset == pairOffset)) report(2, pairOffset);
    if (tripleHolds) report(3, tripleOffset);
    if (available < kTreeBytes) return best;

    const std::uint32_t limit = std::min(available, limits_.NiceLength);
    Walk(now, current, limit, tripleHolds ? 3 : 2, [&](std::uint32_t length, std::uint32_t offset) {
        if (length >= limit)
            length = Agreement(current - offset, current, length, std::min(available, kMaxMatch));
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
