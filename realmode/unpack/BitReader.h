#pragma once
// The bits of a packed frame. LZX has them in 16-bit words, the highest bit of each first. Deflate has them
// in bytes, the lowest bit first; these are reversed while reading, so that the codes of both are read in one
// way. Numbers of deflate then come out reversed, too; ReadTurned puts them right.

#include <stdint.h>

#include "realmode/unpack/FarBytes.h"

namespace realmode::unpack {

class BitReader {
 public:
    enum class Order : uint8_t { Words, TurnedBytes };

    /// Reads the bytes [begin, end) of `input`.
    void Begin(FarBytes input, uint32_t begin, uint32_t end, Order order) {
        input_ = input;
        next_ = begin;
        end_ = end;
        order_ = order;
        bits_ = 0;
        left_ = 0;
    }

    /// Returns the next 16 bits, which stay; zeros after the end.
    uint32_t Peek16() {
        if (left_ < 16) Fill();
        return bits_ >> 16;
    }

    /// Takes `count` of the bits, at most 16, that Peek16 returned.
    void Skip(uint32_t count) {
        bits_ <<= count;
        left_ -= count;
    }

    /// Takes a number of `count` bits, 0 to 16, whose first bit is its highest.
    uint32_t Read(uint32_t count) {
        const uint32_t value = Peek16() >> (16 - count);
        Skip(count);
        return value;
    }

    /// Takes a number of `count` bits, 0 to 16, whose first bit is its lowest.
    uint32_t ReadTurned(uint32_t count);

    /// Leaves what is left of the current word or byte. Returns the place of the byte after it, from which
    /// bytes can be taken as they are; Begin goes on after them.
    uint32_t SkipToBorder() {
        left_ &= order_ == Order::Words ? ~15U : ~7U;
        return next_ - left_ / 8;
    }

    /// Whether the current word is used up (or none is begun).
    bool IsAtBorder() const { return left_ % 16 == 0; }

    /// Whether more bits were taken than there are.
    bool IsOverrun() const { return next_ * 8 - left_ > end_ * 8; }

    /// Whether the bytes were all taken, the last word or byte to any bit, and no more.
    bool IsAtEnd() { return !IsOverrun() && SkipToBorder() >= end_; }

    FarBytes Input() const { return input_; }
    uint32_t End() const { return end_; }

 private:
    void Fill();

    FarBytes input_;
    uint32_t next_ = 0;
    uint32_t end_ = 0;
    uint32_t bits_ = 0;  // the next bit is the highest
    uint32_t left_ = 0;  // how many of them are of the input
    Order order_ = Order::Words;
};

}  // namespace realmode::unpack
