// With P the place of an E8 in the folder and S the translation size, a relative address r is mapped so that
// the range -P to S - 1 goes onto itself:
//
//     -P <= r < S - P    ->  r + P      the target lies in the folder: its absolute address, 0 to S - 1
//     S - P <= r < S     ->  r - S      into the gap that the first case leaves: -P to -1
//
// Anything else stays. So the decoder can undo each case by the range in which the result lies. After an E8
// the search continues five bytes later in every case and in both directions, so the operand, which is all
// that changes, is never searched, and both sides see the same E8 bytes.

#include "tools/cabarc/lzx/E8Translation.h"

#include <algorithm>
#include <vector>

#include "tools/cabarc/lzx/LzxFormat.h"
#include "tools/cabarc/lzx/TrialParse.h"
#include "tools/shared/ByteOrder.h"

namespace tools::cabarc::lzx {

namespace {

constexpr std::uint8_t kCallOpcode = 0xE8;
// Bytes at the end of a frame in which no E8 counts. Five would be enough for an operand to end within its
// frame; the format says ten.
constexpr std::uint32_t kUntouchedTail = 10;

}  // namespace

void TranslateFrame(std::span<std::uint8_t> frame, std::uint32_t folderOffset) {
    if (folderOffset / kFrameSize >= kTranslatedFrames || frame.size() <= kUntouchedTail) return;
    constexpr auto kSize = static_cast<std::int64_t>(kTranslationSize);
    const std::size_t end = frame.size() - kUntouchedTail;
    for (std::size_t i = 0; i < end;) {
        if (frame[i] != kCallOpcode) {
            ++i;
            continue;
        }
        std::uint8_t* const operand = &frame[i + 1];
        const std::int64_t place = static_cast<std::int64_t>(folderOffset) + static_cast<std::int64_t>(i);
        const std::int64_t relative = static_cast<std::int32_t>(GetU32(operand));
        if (relative >= -place && relative < kSize - place) {
            PutU32(operand, static_cast<std::uint32_t>(relative + place));
        } else if (relative >= kSize - place && relative < kSize) {
            PutU32(operand, static_cast<std::uint32_t>(relative - kSize));
        }
        i += 5;
    }
}

bool TranslationPays(std::span<const std::uint8_t> start) {
    std::vector<std::uint8_t> translated(start.begin(), start.end());
    for (std::size_t at = 0; at < translated.size(); at += kFrameSize)
        TranslateFrame(
            std::span(translated).subspan(at, std::min<std::size_t>(kFrameSize, translated.size() - at)),
            static_cast<std::uint32_t>(at));
    // Text and packed data hold next to no calls, and then there is nothing to estimate.
    if (std::equal(start.begin(), start.end(), translated.begin())) return false;
    return EstimatedBits(translated) < EstimatedBits(start);
}

}  // namespace tools::cabarc::lzx
