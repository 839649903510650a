#include "tools/cabarc/lzx/E8Translation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "tools/cabarc/lzx/LzxFormat.h"
#include "tools/shared/ByteOrder.h"

namespace tools::cabarc::lzx {

namespace {

constexpr std::uint8_t kCallOpcode = 0xE8;
constexpr std::uint32_t kUntouchedTail = 10;
constexpr std::uint32_t kTranslatedFrames = 32768;

// The estimate: a greedy parse with one candidate per hash value, priced by the entropy of its literals and
// of its lengths and offset sizes. It is rough in size but errs alike for both forms of the same bytes.
constexpr int kHashBits = 16;
constexpr std::uint32_t kShortestMatch = 4;

double EntropyBits(std::span<const std::uint32_t> counts) {
    double total = 0;
    double sum = 0;
    for (const std::uint32_t count : counts) {
        total += count;
        if (count != 0) sum += count * std::log2(count);
    }
    return total == 0 ? 0 : total * std::log2(total) - sum;
}

double EstimateBits(std::span<const std::uint8_t> bytes) {
    std::vector<std::uint32_t> last(std::size_t{1} << kHashBits, 0);  // position + 1
    std::array<std::uint32_t, kMaxMainSymbols> main{};
    double extraBits = 0;
    std::uint32_t repeat = 0;
    const auto size = static_cast<std::uint32_t>(bytes.size());
    const auto agreement = [&](std::uint32_t from, std::uint32_t to) {
        std::uint32_t n = 0;
        const std::uint32_t limit = std::min(size - to, kMaxMatch);
        while (n < limit && bytes[from + n] == bytes[to + n]) ++n;
        return n;
    };
    for (std::uint32_t i = 0; i < size;) {
        std::uint32_t length = 0;
        std::uint32_t offset = 0;
        if (i + kShortestMatch <= size) {
            std::uint32_t& place = last[(GetU32(&bytes[i]) * 0x9E3779B1U) >> (32 - kHashBits)];
            if (place != 0) {
                offset = i + 1 - place;
                length = offset <= MaxOffset(kMaxWindowBits) ? agreement(place - 1, i) : 0;
            }
            place = i + 1;
        }
        if (repeat != 0) {
            const std::uint32_t again = agreement(i - repeat, i);
            if (again + 1 >= length && again >= 3) {
                length = again;
                offset = repeat;
            }
        }
        if (length < 3) {
            ++main[bytes[i]];
            ++i;
            continue;
        }
        const int slot = offset == repeat ? 0 : SlotOf(offset + kOffsetBias);
        const std::uint32_t header = std::min<std::uint32_t>(length - kMinMatch, kLengthHeaders - 1);
        ++main[static_cast<std::size_t>(kLiterals + slot * kLengthHeaders) + header];
        extraBits += ExtraBits(slot) + (header == kLengthHeaders - 1 ? 4 : 0);
        repeat = offset;
        i += length;
    }
    return EntropyBits(main) + extraBits;
}

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
    return EstimateBits(translated) < EstimateBits(start);
}

}  // namespace tools::cabarc::lzx
