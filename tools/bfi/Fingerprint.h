#pragma once
// A number that tells two disks apart: made from everything on them, quick, and the same on every machine. It
// is no checksum of a format and guards against no one.

#include <array>
#include <cstdint>
#include <span>

namespace tools::bfi {

class Fingerprint {
 public:
    /// Takes `bytes` in. Where one call ends and the next begins counts too.
    void Add(std::span<const std::uint8_t> bytes);

    /// Returns the number for all bytes so far.
    std::uint32_t Value() const;

 private:
    static constexpr std::size_t kWordBytes = 8;
    static constexpr std::size_t kLanes = 8;
    static constexpr std::size_t kGroupBytes = kLanes * kWordBytes;

    /// Words go to the lanes in turn, so that the processor mixes several at a time.
    std::array<std::uint64_t, kLanes> lanes_{1, 2, 3, 4, 5, 6, 7, 8};
};

}  // namespace tools::bfi
