#include "tools/bfi/Fingerprint.h"

#include <algorithm>

#include "tools/shared/ByteOrder.h"

namespace tools::bfi {
namespace {

// 2^64 divided by the golden ratio, made odd: a multiplication by it spreads a changed bit over all higher
// ones.
constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;

// The shift brings the high bits, where the multiplication has gathered the changes, down to the low ones.
std::uint64_t Mix(std::uint64_t state, std::uint64_t word) {
    const std::uint64_t product = (state ^ word) * kMultiplier;
    return product ^ (product >> 32);
}

}  // namespace

void Fingerprint::Add(std::span<const std::uint8_t> bytes) {
    // A copy: the compiler could not keep the members in registers while it reads bytes that could belong to
    // them.
    std::array<std::uint64_t, kLanes> lanes = lanes_;
    lanes[0] = Mix(lanes[0], bytes.size());
    const std::uint8_t* place = bytes.data();
    for (std::size_t left = bytes.size() / kGroupBytes; left > 0; --left, place += kGroupBytes) {
// Only an unrolled loop keeps the lanes in registers.
#pragma GCC unroll 8
        for (std::size_t lane = 0; lane < kLanes; ++lane)
            lanes[lane] = Mix(lanes[lane], GetU64(place + lane * kWordBytes));
    }
    std::array<std::uint8_t, kGroupBytes> last{};
    std::copy_n(place, bytes.size() % kGroupBytes, last.begin());
    for (std::size_t lane = 0; lane < kLanes; ++lane)
        lanes[lane] = Mix(lanes[lane], GetU64(last.data() + lane * kWordBytes));
    lanes_ = lanes;
}

std::uint32_t Fingerprint::Value() const {
    std::uint64_t state = 0;
    for (const std::uint64_t lane : lanes_) state = Mix(state, lane);
    return static_cast<std::uint32_t>(state);
}

}  // namespace tools::bfi
