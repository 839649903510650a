#pragma once
// The match finder: for every position of the folder, the nearest earlier occurrence of each match length
// inside the window. The optimal parser wants all of them, because a shorter match from nearby can be cheaper
// than the longest one.
//
// Strings of four bytes and more are found in binary search trees, one for each hash value, at a cost of at
// most Depth string comparisons for a position. Pairs have a table of their own, triples a small hash table.
//
// Every match that it reports is one. What it may miss: a triple whose place was taken by another one with
// the same hash, and matches of four bytes and more that lie deeper in their tree than Depth.
// MatchFinder.cpp gives the invariants of the trees, their cost, and when hash chains would be the better
// choice.

#include <cstdint>
#include <memory>
#include <vector>

#include "tools/cabarc/lzx/LzxFormat.h"

namespace tools::cabarc::lzx {

/// A match at some position, as the match cache holds it: millions of them, so in four bytes.
class Match {
 public:
    static constexpr int kLengthBits = 8;
    static constexpr int kOffsetBits = 24;

    /// `length` is kMinMatch to kMaxMatch, `offset` at most MaxOffset(kMaxWindowBits), both in bytes;
    /// unchecked.
    Match(std::uint32_t length, std::uint32_t offset)
        : packed_((offset << kLengthBits) | (length - kMinMatch)) {}
    std::uint32_t Length() const { return (packed_ & ((1U << kLengthBits) - 1)) + kMinMatch; }
    std::uint32_t Offset() const { return packed_ >> kLengthBits; }

 private:
    std::uint32_t packed_;
};

/// Limits of the search.
struct SearchLimits {
    /// Tree nodes visited for each position, at least 1. The time of a search is at most in proportion to
    /// it; on the reference sets twice as many save 0.06 %, half as many lose 0.06 %.
    int Depth = 48;
    /// The nice length in bytes, kMinNiceLength to kMaxMatch: a match this long ends the search, though it
    /// is reported in its full length. It bounds a comparison, and keeps runs of one byte from taking
    /// quadratic time.
    std::uint32_t NiceLength = 128;
};

/// Searches one folder from its start to its end. It keeps positions, not bytes: the caller's buffer holds
/// those.
class MatchFinder {
 public:
    static constexpr std::uint32_t kMinNiceLength = 3;

    /// The most matches that a position can have: their lengths rise.
    static constexpr std::uint32_t kMaxMatchesOfPosition = kMaxMatch - kMinMatch + 1;

    /// Takes eight bytes of memory for each byte of the window of 2^windowBits (15 to 21) bytes, though only
    /// as much of it is touched as the folder fills. REQUIRES: `limits` within their bounds.
    MatchFinder(int windowBits, SearchLimits limits);

    /// Enters the string at `position` (bytes from the start of the folder) and appends its matches to
    /// `found`: rising lengths, none longer than `longest`, each with the nearest offset at which that many
    /// bytes agree. A length between two of them has the offset of the longer one; a length of 3 is given
    /// even when the next one has the same offset. Returns the length of the last one, 0 for none.
    ///
    /// REQUIRES: every position is entered once, in order, by Find or Skip. `current` points at its bytes,
    /// with the whole window (or all of the folder so far) readable before it and `available` bytes from it
    /// on. Those are at least NiceLength unless the folder ends there: the trees are ordered by as many.
    std::uint32_t Find(std::uint32_t position, const std::uint8_t* current, std::uint32_t available,
                       std::uint32_t longest, std::vector<Match>& found);

    /// Enters the string without looking for matches; a string of under four bytes, the folder's last, is
    /// left out. REQUIRES: as Find. It walks the tree as Find does and is hardly cheaper.
    void Skip(std::uint32_t position, const std::uint8_t* current, std::uint32_t available);

 private:
    void PrefetchAhead(std::uint32_t now, const std::uint8_t* current, std::uint32_t limit) const;
    template <typename Report>
    void Walk(std::uint32_t now, const std::uint8_t* current, std::uint32_t limit, std::uint32_t best,
              const Report& report);

    std::uint32_t windowSize_;
    std::uint32_t maxOffset_;
    SearchLimits limits_;
    std::vector<std::uint32_t> pairs_;    ///< last place of each two bytes
    std::vector<std::uint32_t> triples_;  ///< last place of three bytes, by hash
    std::vector<std::uint32_t> roots_;    ///< top of the tree of each four-byte hash
    /// For each window position the smaller and the greater subtree. Only what has been entered is ever read,
    /// so the memory is left as it comes: a small folder touches little of it.
    std::unique_ptr<std::uint32_t[]> nodes_;
};

}  // namespace tools::cabarc::lzx
