#pragma once
// A number that distinguishes two disks: computed from everything on them, quick, and the same on every
// machine. It becomes the serial number of a volume, by which DOS notices that a disk was changed. It is no
// checksum of a format and protects against nobody.

#include <array>
#include <cstdint>
#include <span>

namespace tools::bfi {

/// Mixes 64-bit words by multiplication. Cost: one multiplication for every eight bytes.
class Fingerprint {
 public:
    /// Adds `bytes`. Where one call ends and the next begins counts, too: the same bytes in other pieces
    /// give another number.
    void Add(std::span<const std::uint8_t> bytes);

    /// Returns the number for all calls so far; more may be added afterwards.
    std::uint32_t Value() const;

 private:
    static constexpr std::size_t kWordBytes = 8;
    static constexpr std::size_t kLanes = 8;
    static constexpr std::size_t kGroupBytes = kLanes * kWordBytes;

    /// Words go to the lanes in turn, so that the processor mixes several at a time.
    std::array<std::uint64_t, kLanes> lanes_{1, 2, 3, 4, 5, 6, 7, 8};
};

}  // namespace tools::bfi
