// A lazy parse takes the best match at each place, unless the place after it has a better one: then it sends
// a literal and looks on from there. It looks one byte ahead where the optimal parse looks at everything,
// and needs about an eighth of its time. Prices would have to be learnt by a parse that comes too late, so a
// candidate is weighed by fixed guesses: the bits of the bytes that it stands for, less what a match costs
// and the bits of its offset.
//
// Candidates are the recent offsets, the last places of the next four bytes under their hash, and the last
// place of the next three. A match at an older place is missed, in both of the forms that are compared
// alike.

#include "tools/cabarc/lzx/TrialParse.h"

#include <algorithm>
#include <array>
#include <bit>
#include <vector>

#include "tools/cabarc/lzx/BlockCodes.h"
#include "tools/cabarc/lzx/StringMatch.h"
#include "tools/shared/ByteOrder.h"

namespace tools::cabarc::lzx {

namespace {

// The last places of a string of four bytes that are tried. With one, the loss by translating relocatable
// modules hardly shows; with four, no more shows than with two.
constexpr std::size_t kPlaces = 2;
constexpr int kPlaceHashBits = 16;
// How many bytes ahead the places of a string are prefetched.
constexpr std::uint32_t kAhead = 16;
// A match of three bytes from farther away costs about as much as three literals.
constexpr std::uint32_t kFarthestTriple = 8192;
// From this length on a match is not weighed against one that starts a byte later.
constexpr std::uint32_t kLongEnough = 32;
// The parse is priced in stretches about as long as blocks are. Priced as a whole, what translation does to
// a part of the bytes is lost in the average.
constexpr std::uint32_t kStretch = 32768;

class TrialParse {
 public:
    explicit TrialParse(std::span<const std::uint8_t> bytes)
        : bytes_(bytes),
          size_(static_cast<std::uint32_t>(bytes.size())),
          places_(std::size_t{1} << kPlaceHashBits),
          triples_(std::size_t{1} << kTripleHashBits) {}

    double Run() {
        double bits = 0;
        SymbolCounts counts;
        std::uint32_t stretchEnd = kStretch;
        Candidate next;
        bool known = false;  // whether next is already looked up
        for (std::uint32_t i = 0; i < size_;) {
            if (i >= stretchEnd) {
                bits += BitsOf(counts);
                counts = {};
                stretchEnd += kStretch;
            }
            const Candidate candidate = known ? next : Look(i);
            known = candidate.Length < kLongEnough && candidate.Score > 0;
            if (known) next = Look(i + 1);
            if (candidate.Score <= 0 || (known && next.Score > candidate.Score + kOneLiteral)) {
                counts.Add(Item::Literal(bytes_[i]));
                ++i;
                continue;
            }
            known = false;
            const Item match = Item::Match(candidate.Length, candidate.Formatted);
            counts.Add(match);
            recent_.Apply(match);
            i += candidate.Length;
        }
        return bits + BitsOf(counts);
    }

 private:
    double BitsOf(const SymbolCounts& counts) const {
        return entropy_.EntropyBits(counts.Main) + entropy_.EntropyBits(counts.Length) +
               static_cast<double>(ExtraOffsetBits(counts, BlockType::Verbatim));
    }

    // The best match at a place, and about how many bits it saves; no match saves nothing.
    struct Candidate {
        std::uint32_t Length = 0;
        std::uint32_t Formatted = 0;
        int Score = 0;
    };
    static constexpr int kByte = 8;
    static constexpr int kOneLiteral = 4;   // bits that a literal costs beyond its share of a match
    static constexpr int kRepeatPrice = 4;  // of a match with the newest offset, the older ones one more each
    static constexpr int kMatchPrice = 7;   // of any other, beside the bits of its offset

    std::uint32_t MatchLengthAt(std::uint32_t i, std::uint32_t offset) const {
        return ExtendMatch(bytes_.data() + i - offset, bytes_.data() + i, 0, std::min(size_ - i, kMaxMatch));
    }

    static void Improve(Candidate& best, std::uint32_t length, std::uint32_t formatted, int price) {
        const int score = static_cast<int>(length) * kByte - price;
        if (score > best.Score) best = {length, formatted, score};
    }

    void Try(Candidate& best, std::uint32_t i, std::uint32_t place, std::uint32_t farthest,
             std::uint32_t shortest) const {
        if (place == 0 || i + 1 - place > farthest) return;
        const std::uint32_t offset = i + 1 - place;
        const std::uint32_t length = MatchLengthAt(i, offset);
        if (length >= shortest)
            Improve(best, length, offset + kOffsetBias,
                    static_cast<int>(std::bit_width(offset)) + kMatchPrice);
    }

    // Returns the best match at `i` and enters the place. What is read lies before size_, and the tables
    // have an element for each hash of their bits, so no access needs a check.
    Candidate Look(std::uint32_t i) {
        Candidate best;
        if (i + 4 > size_) return best;
        if (i + kAhead + 4 <= size_) Prefetch(&PlacesOf(GetU32(bytes_.data() + i + kAhead)));
        for (std::uint32_t repeat = 0; repeat < kRecentOffsets; ++repeat) {
            const std::uint32_t offset = recent_.Offsets[repeat];
            if (offset > i) continue;
            const std::uint32_t length = MatchLengthAt(i, offset);
            if (length >= 3) Improve(best, length, repeat, kRepeatPrice + static_cast<int>(repeat));
        }
        const std::uint32_t quad = GetU32(bytes_.data() + i);
        Places& places = PlacesOf(quad);
        for (const std::uint32_t place : places) Try(best, i, place, MaxOffset(kMaxWindowBits), 4);
        std::uint32_t& triple = triples_.data()[Hash(quad << 8, kTripleHashBits)];
        if (best.Length < 4) Try(best, i, triple, kFarthestTriple, 3);
        triple = i + 1;
        std::copy_backward(places.begin(), places.end() - 1, places.end());
        places[0] = i + 1;
        return best;
    }

    using Places = std::array<std::uint32_t, kPlaces>;  // position + 1, newest first
    Places& PlacesOf(std::uint32_t quad) { return places_.data()[Hash(quad, kPlaceHashBits)]; }

    std::span<const std::uint8_t> bytes_;
    std::uint32_t size_;
    std::vector<Places> places_;
    std::vector<std::uint32_t> triples_;
    RecentOffsets recent_;
    EntropyTerms entropy_;
};

}  // namespace

double EstimatedBits(std::span<const std::uint8_t> bytes) {
    return TrialParse(bytes).Run();
}

}  // namespace tools::cabarc::lzx
