#pragma once
// What a parse consists of: literals and matches, packed into 32 bits each because a segment holds up to a
// million of them, and the queue of the last three offsets that matches refer to.

#include <array>
#include <cstdint>
#include <utility>

#include "tools/cabarc/lzx/LzxFormat.h"

namespace tools::cabarc::lzx {

/// One literal (length 1, the byte as value) or one match (length 2..257, the formatted offset as value).
class Item {
 public:
    Item() = default;
    static Item Literal(std::uint8_t byte) { return Item(1U | (std::uint32_t{byte} << kLengthBits)); }
    static Item Match(std::uint32_t length, std::uint32_t formattedOffset) {
        return Item(length | (formattedOffset << kLengthBits));
    }

    std::uint32_t Length() const { return packed_ & ((1U << kLengthBits) - 1); }
    bool IsLiteral() const { return Length() == 1; }
    /// The byte of a literal.
    std::uint8_t Byte() const { return static_cast<std::uint8_t>(packed_ >> kLengthBits); }
    /// The formatted offset of a match: 0..2 repeat, else offset + 2.
    std::uint32_t Formatted() const { return packed_ >> kLengthBits; }

    /// The same as one number (30 bits), and back.
    std::uint32_t Packed() const { return packed_; }
    static Item FromPacked(std::uint32_t packed) { return Item(packed); }

 private:
    static constexpr int kLengthBits = 9;
    explicit Item(std::uint32_t packed) : packed_(packed) {}
    std::uint32_t packed_ = 0;
};

/// The last three offsets, as both sides keep them.
struct RepeatQueue {
    std::array<std::uint32_t, kRepeats> Offsets{1, 1, 1};

    /// Updates the queue for a match and returns the match's offset. Repeats 1 and 2 trade places with 0
    /// (they do not rotate), any other offset pushes the queue down.
    std::uint32_t Apply(std::uint32_t formatted) {
        if (formatted < static_cast<std::uint32_t>(kRepeats)) {
            std::swap(Offsets[0], Offsets[formatted]);
        } else {
            Offsets[2] = Offsets[1];
            Offsets[1] = Offsets[0];
            Offsets[0] = formatted - kOffsetBias;
        }
        return Offsets[0];
    }

    /// Updates the queue for any item; literals leave it alone.
    void Apply(Item item) {
        if (!item.IsLiteral()) Apply(item.Formatted());
    }

    friend bool operator==(const RepeatQueue&, const RepeatQueue&) = default;
};

}  // namespace tools::cabarc::lzx
