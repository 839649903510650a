#pragma once
// What a file holds, in so few bytes that each of thousands of files can be compared with many others: how
// often each byte occurs, and a sample of the file's strings of four bytes. The first shows files of one
// kind, whose symbols suit the same codes, the second files that have matches in each other.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace tools::cabarc {

/// The fingerprint of some bytes, which it does not refer to. It is the same on every system.
class Fingerprint {
 public:
    /// The most strings in the sample.
    static constexpr std::uint32_t kStrings = 128;
    /// Bytes of each string.
    static constexpr std::size_t kStringBytes = 4;
    /// The largest resemblance: half of it is for the strings, half for the bytes.
    static constexpr std::uint32_t kSame = 1U << 15;

    /// Takes time in proportion to the bytes, of which there may be up to 2^32 - 1.
    explicit Fingerprint(std::span<const std::uint8_t> bytes);

    /// Returns how much the two resemble each other: 0 when their samples have no string in common, as when
    /// one of them has fewer than kStringBytes bytes; else more, up to kSame for equal bytes. Packed files
    /// resemble each other in how often each byte occurs, but hardly have a string in common.
    std::uint32_t Resemblance(const Fingerprint& other) const;

 private:
    void SampleStrings(std::span<const std::uint8_t> bytes);
    void CountBytes(std::span<const std::uint8_t> bytes);

    std::array<std::uint32_t, kStrings> strings_;
    std::array<std::int16_t, 256> bytes_{};
};

}  // namespace tools::cabarc
