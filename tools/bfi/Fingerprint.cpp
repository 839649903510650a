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
    lanes_[0] = Mix(lanes_[0], bytes.size());
    while (bytes.size() >= kLanes * kWordBytes) {
        for (std::size_t lane = 0; lane < kLanes; ++lane)
            lanes_[lane] = Mix(lanes_[lane], tools::GetU64(bytes.data() + lane * kWordBytes));
        bytes = bytes.subspan(kLanes * kWordBytes);
    }
    std::array<std::uint8_t, kLanes * kWordBytes> last{};
    std::copy(bytes.begin(), bytes.end(), last.begin());
    for (std::size_t lane = 0; lane < kLanes; ++lane)
        lanes_[lane] = Mix(lanes_[lane], tools::GetU64(last.data() + lane * kWordBytes));
}

std::uint32_t Fingerprint::Value() const {
    std::uint64_t state = 0;
    for (const std::uint64_t lane : lanes_) state = Mix(state, lane);
    return static_cast<std::uint32_t>(state);
}

}  // namespace tools::bfi
