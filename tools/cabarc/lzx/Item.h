#pragma once
// What a parse consists of: literals and matches, and the recent offsets that matches refer to and change.
//
// An item is packed into 32 bits because a segment holds up to a million of them, and because the parser
// keeps one beside the price in each of its 64-bit nodes. A match is kept as it will be sent, by its
// formatted offset: whether it takes one of the recent offsets or spells out its own is the parser's
// decision, which neither the counts nor the writer make again.

#include <array>
#include <cstdint>
#include <utility>

#include "tools/cabarc/lzx/LzxFormat.h"

namespace tools::cabarc::lzx {

/// One literal (length 1, the byte as value) or one match (length 2 to 257, the formatted offset as value).
class Item {
 public:
    /// The widths of the two fields; the highest bits are free for marks of the parser.
    static constexpr int kLengthBits = 9;
    static constexpr int kValueBits = 21;

    Item() = default;
    /// Create an item. Nothing is checked: `length` is kMinMatch to kMaxMatch, `formattedOffset` below
    /// 2^kValueBits.
    static Item Literal(std::uint8_t byte) { return Item(1U | (std::uint32_t{byte} << kLengthBits)); }
    static Item Match(std::uint32_t length, std::uint32_t formattedOffset) {
        return Item(length | (formattedOffset << kLengthBits));
    }

    /// The bytes that the item stands for.
    std::uint32_t Length() const { return packed_ & ((1U << kLengthBits) - 1); }
    bool IsLiteral() const { return Length() == 1; }
    /// The byte of a literal.
    std::uint8_t Byte() const { return static_cast<std::uint8_t>(packed_ >> kLengthBits); }
    /// The formatted offset of a match: 0 to 2 for a recent offset, else offset + 2.
    std::uint32_t Formatted() const { return packed_ >> kLengthBits; }

    /// The item as one number of kLengthBits + kValueBits bits, and an item from such a number.
    std::uint32_t Packed() const { return packed_; }
    static Item FromPacked(std::uint32_t packed) { return Item(packed); }

    friend bool operator==(const Item&, const Item&) = default;

 private:
    explicit Item(std::uint32_t packed) : packed_(packed) {}
    std::uint32_t packed_ = 0;
};

/// The last three offsets (R0, R1 and R2 of the format), as encoder and decoder both keep them. They run
/// through the whole folder: frames and coded blocks do not reset them, an uncompressed block sets them.
struct RecentOffsets {
    std::array<std::uint32_t, kRecentOffsets> Offsets{1, 1, 1};

    /// Follows a match, given by its formatted offset, and returns its offset in bytes. R1 and R2 trade
    /// places with R0 when they are used; they do not rotate as in a list by last use, so R1 stays where it
    /// is when R2 is used. Any other offset pushes the three down, even one that is among them already.
    std::uint32_t Apply(std::uint32_t formatted) {
        if (formatted < static_cast<std::uint32_t>(kRecentOffsets)) {
            std::swap(Offsets[0], Offsets[formatted]);
        } else {
            Offsets[2] = Offsets[1];
            Offsets[1] = Offsets[0];
            Offsets[0] = formatted - kOffsetBias;
        }
        return Offsets[0];
    }

    /// Follows any item; literals do not change the offsets.
    void Apply(Item item) {
        if (!item.IsLiteral()) Apply(item.Formatted());
    }

    friend bool operator==(const RecentOffsets&, const RecentOffsets&) = default;
};

}  // namespace tools::cabarc::lzx
