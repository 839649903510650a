#pragma once
// FarBytes where memory is flat.

#include <stdint.h>

namespace realmode::unpack {

class FarBytes {
 public:
    FarBytes() = default;
    /// `bytes` stays with the caller and outlives the object.
    explicit FarBytes(uint8_t* bytes) : bytes_(bytes) {}

    uint8_t* Pointer() const { return bytes_; }

    uint8_t Get8(uint32_t at) const { return bytes_[at]; }
    /// Little-endian numbers; `at` needs no alignment.
    uint32_t Get16(uint32_t at) const { return bytes_[at] | uint32_t{bytes_[at + 1]} << 8; }
    uint32_t Get32(uint32_t at) const { return Get16(at) | Get16(at + 2) << 16; }
    void Put8(uint32_t at, uint8_t value) const { bytes_[at] = value; }
    void Put32(uint32_t at, uint32_t value) const {
        for (uint32_t i = 0; i < 4; ++i) bytes_[at + i] = static_cast<uint8_t>(value >> 8 * i);
    }

    /// Copies byte by byte upwards, so that a copy to just above its source repeats what lies between them.
    static void Copy(FarBytes to, uint32_t toAt, FarBytes from, uint32_t fromAt, uint32_t count) {
        for (uint32_t i = 0; i < count; ++i) to.bytes_[toAt + i] = from.bytes_[fromAt + i];
    }
    /// Copies from near memory.
    static void Copy(FarBytes to, uint32_t toAt, const uint8_t* from, uint32_t count) {
        for (uint32_t i = 0; i < count; ++i) to.bytes_[toAt + i] = from[i];
    }

    /// Returns the place of the first `value` in [at, end), or `end`.
    uint32_t Find(uint32_t at, uint32_t end, uint8_t value) const {
        while (at < end && bytes_[at] != value) ++at;
        return at;
    }

 private:
    uint8_t* bytes_ = nullptr;
};

}  // namespace realmode::unpack
