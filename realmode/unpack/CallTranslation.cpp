#include "realmode/unpack/CallTranslation.h"

namespace realmode::unpack {

namespace {

constexpr uint8_t kCall = 0xE8;
constexpr uint32_t kCallBytes = 5;
constexpr uint32_t kUntouchedEnd = 10;           // bytes at the end of each frame
constexpr uint32_t kUntouchedFolder = 1U << 30;  // from there on nothing is translated

}  // namespace

void UndoCallTranslation(FarBytes frame, uint32_t count, uint32_t position, uint32_t size) {
    if (count <= kUntouchedEnd || position >= kUntouchedFolder) return;
    const uint32_t end = count - kUntouchedEnd;
    for (uint32_t at = 0; at < end; at += kCallBytes) {
        at = frame.Find(at, end, kCall);
        if (at == end) return;
        const auto place = static_cast<int32_t>(position + at);
        const auto target = static_cast<int32_t>(frame.Get32(at + 1));
        if (target < -place || target >= static_cast<int32_t>(size)) continue;
        const auto move = target >= 0 ? 0 - static_cast<uint32_t>(place) : size;
        frame.Put32(at + 1, static_cast<uint32_t>(target) + move);
    }
}

}  // namespace realmode::unpack
