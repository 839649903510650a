#pragma once
// FarBytes on DOS: a segment. FS belongs to these functions, each of which loads it anew.

#include <stdint.h>

namespace realmode::unpack {

class FarBytes {
 public:
    FarBytes() = default;
    explicit FarBytes(uint16_t segment) : segment_(segment) {}

    uint16_t Segment() const { return segment_; }

    uint8_t Get8(uint32_t at) const {
        uint8_t value;
        asm volatile("movw %w1, %%fs; movb %%fs:(%2), %0" : "=q"(value) : "r"(segment_), "r"(at) : "memory");
        return value;
    }
    /// Little-endian numbers; `at` needs no alignment.
    uint32_t Get16(uint32_t at) const {
        uint32_t value;
        asm volatile("movw %w1, %%fs; movzwl %%fs:(%2), %0"
                     : "=r"(value)
                     : "r"(segment_), "r"(at)
                     : "memory");
        return value;
    }
    uint32_t Get32(uint32_t at) const {
        uint32_t value;
        asm volatile("movw %w1, %%fs; movl %%fs:(%2), %0" : "=r"(value) : "r"(segment_), "r"(at) : "memory");
        return value;
    }
    void Put8(uint32_t at, uint8_t value) const {
        asm volatile("movw %w1, %%fs; movb %0, %%fs:(%2)" : : "q"(value), "r"(segment_), "r"(at) : "memory");
    }
    void Put32(uint32_t at, uint32_t value) const {
        asm volatile("movw %w1, %%fs; movl %0, %%fs:(%2)" : : "r"(value), "r"(segment_), "r"(at) : "memory");
    }

    /// Copies byte by byte upwards, so that a copy to just above its source repeats what lies between them.
    static void Copy(FarBytes to, uint32_t toAt, FarBytes from, uint32_t fromAt, uint32_t count) {
        asm volatile("pushw %%ds; pushw %%es; movw %w3, %%es; movw %w4, %%ds; rep movsb; popw %%es; popw %%ds"
                     : "+D"(toAt), "+S"(fromAt), "+c"(count)
                     : "r"(to.segment_), "r"(from.segment_)
                     : "memory");
    }
    /// Copies from near memory.
    static void Copy(FarBytes to, uint32_t toAt, const uint8_t* from, uint32_t count) {
        asm volatile("pushw %%es; movw %w3, %%es; rep movsb; popw %%es"
                     : "+D"(toAt), "+S"(from), "+c"(count)
                     : "r"(to.segment_)
                     : "memory");
    }

    /// Returns the place of the first `value` in [at, end), or `end`.
    uint32_t Find(uint32_t at, uint32_t end, uint8_t value) const {
        uint32_t left = end - at;
        if (left == 0) return end;
        bool found;
        asm volatile("pushw %%es; movw %w3, %%es; repne scasb; popw %%es"
                     : "+D"(at), "+c"(left), "=@ccz"(found)
                     : "r"(segment_), "a"(value)
                     : "memory");
        return found ? at - 1 : end;
    }

 private:
    uint16_t segment_ = 0;
};

}  // namespace realmode::unpack
