// Every limit on which the codec relies without a check at run time, in one place: where a number is packed
// into fewer bits than its type has, where sums must not overflow, where a structure is indexed without a
// check, and where the end of a loop depends on sizes. A change of a constant that breaks one of these does
// not compile. What the format itself fixes is checked in LzxFormat.h, what callers pass in LzxEncoder's
// constructor.
//
// There is no code here: each line is an assertion with its reason.

#include <bit>
#include <cstdint>
#include <limits>

#include "tools/cabarc/CabinetDirectory.h"
#include "tools/cabarc/lzx/BitWriter.h"
#include "tools/cabarc/lzx/BlockCodes.h"
#include "tools/cabarc/lzx/BlockSplitter.h"
#include "tools/cabarc/lzx/E8Translation.h"
#include "tools/cabarc/lzx/EncodedCodeLengths.h"
#include "tools/cabarc/lzx/Item.h"
#include "tools/cabarc/lzx/LzxEncoder.h"
#include "tools/cabarc/lzx/LzxFormat.h"
#include "tools/cabarc/lzx/MatchFinder.h"
#include "tools/cabarc/lzx/OptimalParser.h"
#include "tools/cabarc/lzx/Prices.h"
#include "tools/cabarc/lzx/SegmentParser.h"
#include "tools/cabarc/lzx/StringMatch.h"

namespace tools::cabarc::lzx {

namespace {

constexpr std::uint64_t kWindow = std::uint64_t{1} << kMaxWindowBits;
constexpr std::uint64_t kMax16 = std::numeric_limits<std::uint16_t>::max();
constexpr std::uint64_t kMax32 = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint64_t kSegment = SegmentParser::kMaxBytes;
constexpr int kMostExtraBits = ExtraBits(kMaxSlots - 1);

// Packed items and matches.
static_assert(kMaxMatch < 1U << Item::kLengthBits, "an item holds every length");
static_assert(kMaxMatch - kMinMatch < 1U << Match::kLengthBits, "a cached match holds every length");
static_assert(MaxOffset(kMaxWindowBits) + kOffsetBias < 1U << Item::kValueBits,
              "an item holds every formatted offset");
static_assert(MaxOffset(kMaxWindowBits) < 1U << Match::kOffsetBits, "a cached match holds every offset");
static_assert(Match::kLengthBits + Match::kOffsetBits <= 32, "a cached match takes four bytes");
static_assert(kLiterals - 1 < 1 << Item::kValueBits, "an item holds every byte");
static_assert(OptimalParser::kChainMark >> (Item::kLengthBits + Item::kValueBits) != 0,
              "the chain mark lies above every packed item");

// Positions in the folder and in the window.
static_assert(kMaxFolderBytes + kWindow <= kMax32,
              "the match finder's places, position + window size, never wrap around");
static_assert(MaxOffset(kMaxWindowBits) < kWindow && MaxOffset(kMinWindowBits) < 1U << kMinWindowBits,
              "a node of the trees is used again only when no offset reaches its old place, and place 0 is "
              "out of reach from the first position on");
static_assert(std::uint64_t{2} * kWindow * sizeof(std::uint32_t) <= std::uint64_t{16} << 20,
              "the trees of the largest window take 16 MiB");
static_assert(kTripleHashBits >= 1 && kTripleHashBits <= 32, "Hash shifts by 32 - bits");
static_assert(std::uint64_t{kTranslatedFrames} * kFrameSize + kTranslationSize <= 0x7FFFFFFF,
              "translated addresses fit a signed 32-bit number");

// Options, of which the defaults are checked here and others when an encoder is constructed.
static_assert(LzxOptions{}.Search.Depth >= 1, "a search visits the root");
static_assert(LzxOptions{}.Search.NiceLength >= MatchFinder::kMinNiceLength &&
                  LzxOptions{}.Search.NiceLength <= kMaxMatch,
              "a comparison of NiceLength bytes is a match that the format has");
static_assert(LzxOptions{}.TakeAtOnceLength >= kMinMatch && LzxOptions{}.TakeAtOnceLength <= kMaxMatch,
              "a match of the take-at-once length can occur");
static_assert(LzxOptions{}.Passes >= 1, "items come from a pass");

// Segments and the match cache.
static_assert(kSegment % kFrameSize == 0, "a segment begins at a frame border, where no match crosses");
static_assert(kSegment < std::uint64_t{1} << kBlockSizeBits,
              "a block, even a whole segment, has a size field");
static_assert(
    LzxEncoder::kAheadBytes > kSegment + 2 * kFrameSize,
    "when a segment and a frame are no longer ready, the buffer has space for more, so each call of "
    "the encoder makes progress");
static_assert(kFrameSize >= kMaxMatch, "a frame past the segment's end is enough for every comparison");
static_assert(SegmentParser::kMaxCachedMatches + kFrameSize * MatchFinder::kMaxMatchesOfPosition <= kMax32,
              "the cache numbers its matches in 32 bits");

// Prices and paths.
constexpr std::uint64_t kDearestMatch = std::uint64_t{Prices::kBit} * (2 * kMaxCodeLength + kMostExtraBits);
constexpr std::uint64_t kDearestLiteral = std::uint64_t{Prices::kBit} * kMaxCodeLength;
static_assert(kDearestMatch <= kMax16,
              "the price of a match, both its symbols and its extra bits, has 16 bits");
static_assert(
    kFrameSize * kDearestLiteral + 2 * (kDearestMatch + kDearestLiteral) <= kMax32,
    "the path to a node is at most as dear as literals alone, and one step more, a chain, still has a "
    "price of 32 bits");
static_assert(std::has_single_bit(OptimalParser::kRecentRing) &&
                  OptimalParser::kRecentRing > OptimalParser::kLongestStep,
              "a step's start is still in the ring of recent offsets when its end is reached");
static_assert(kFrameSize % 2 == 0, "a segment begins at an even place, as an uncompressed block has to");

// Cells of the splitter.
static_assert(kCellBytes + kMaxMatch <= kMax16, "a cell counts its symbols, at most one a byte, in 16 bits");
static_assert(kMaxMainSymbols + kLengthSymbols <= kMax16, "a cell's symbols have numbers of 16 bits");
static_assert(kMaxCells >= 1 && kCellBytes >= 1, "every border is reached from the one before it");
static_assert(8 * kSegment <= std::uint64_t{1} << std::numeric_limits<float>::digits,
              "the bits of a segment are a float that is exact to one bit");
static_assert(kMaxCells * (kCellBytes + kMaxMatch) < std::uint64_t{1} << kBlockSizeBits,
              "the longest block has a size field");

// Codes.
static_assert(kMaxMainSymbols <= 1 << kMaxCodeLength && kLengthSymbols <= 1 << kMaxCodeLength &&
                  kAlignedSymbols <= 1 << kMaxAlignedLength && kPretreeSymbols <= 1 << kMaxPretreeLength,
              "the longest codes are enough to distinguish all symbols of a tree");
static_assert(kMaxMainSymbols >= kLengthSymbols && kMaxMainSymbols >= kPretreeSymbols &&
                  kMaxMainSymbols >= kAlignedSymbols,
              "the arrays in which codes are built are long enough for every tree");
static_assert(2 * kMaxMainSymbols <= static_cast<int>(kMax16),
              "leaves and inner nodes have numbers of 16 bits");
static_assert(kMaxAlignedLength < 1 << kAlignedLengthBits && kMaxPretreeLength < 1 << kPretreeLengthBits,
              "the longest code lengths fit the fields that hold them");
static_assert(EncodedCodeLengths::kLongestRun < kLengthSymbols &&
                  EncodedCodeLengths::kLongestRun <= std::numeric_limits<std::uint8_t>::max(),
              "a run's extra bits are kept in a byte");

// Bits and frames.
static_assert(BitWriter::kMaxFieldBits + BitWriter::kWordBits - 1 <= 64,
              "a field fits above the bits that wait for their word");
static_assert(kMaxCodeLength <= BitWriter::kMaxFieldBits && kMostExtraBits <= BitWriter::kMaxFieldBits &&
                  kBlockSizeBits <= BitWriter::kMaxFieldBits,
              "every field is written by one call");
constexpr std::uint64_t kStoredFrameBits = 1 + 32  // translation, in the first frame
                                           + kBlockTypeBits + kBlockSizeBits + BitWriter::kWordBits +
                                           8 * (4 * kRecentOffsets + kFrameSize + 1);
static_assert((kStoredFrameBits + 7) / 8 <= kMaxFramePayload,
              "a frame that is stored is never too large, so the writer has no frame to store twice");
static_assert(kFrameSize <= kMax16, "a frame's size has 16 bits in the cabinet");

}  // namespace

}  // namespace tools::cabarc::lzx
