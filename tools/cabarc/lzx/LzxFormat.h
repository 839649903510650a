#pragma once
// The numbers that the LZX format fixes as it is used in cabinets: window sizes, position slots, alphabets,
// code length limits and frames. Everything else in this folder is a choice of this encoder; nothing here
// is. The published descriptions are the documentation of LZX in the cabinet SDK and of the WIM and CHM
// variants of the format; docs/formats/lzx.md has all of it in one place.

#include <algorithm>
#include <bit>
#include <cstdint>

#include "tools/cabarc/FolderCompressor.h"

namespace tools::cabarc::lzx {

/// The sizes that a window can have, as base-2 logarithms of bytes: 32 KiB to 2 MiB.
constexpr int kMinWindowBits = 15;
constexpr int kMaxWindowBits = 21;

/// A folder is cut into frames of this many bytes; each makes one data record of the cabinet, and no match
/// may cross from one frame into the next. In the type in which this codec counts positions.
constexpr std::uint32_t kFrameSize = tools::cabarc::kFrameSize;

/// The most bytes that readers accept as the packed form of one frame.
constexpr std::uint32_t kMaxFramePayload = kFrameSize + 6144;

/// The bytes that a match stands for. One of two bytes can still pay when its offset is a recent one.
constexpr std::uint32_t kMinMatch = 2;
constexpr std::uint32_t kMaxMatch = 257;

/// Main symbols of literals, one for each byte.
constexpr int kLiterals = 256;
/// Main symbols for each position slot: lengths 2 to 8, and "the length tree has the rest".
constexpr int kLengthHeaders = 8;
/// Symbols of the length tree: lengths 9 to 257.
constexpr int kLengthSymbols = 249;
/// The low three bits of an offset, which an aligned block codes by a tree of their own.
constexpr int kAlignedBits = 3;
constexpr int kAlignedSymbols = 1 << kAlignedBits;
/// Symbols of a pretree, under which a list of code lengths is sent: 17 differences and three kinds of runs.
constexpr int kPretreeSymbols = 20;
/// Position slots 0 to 2 name the last three offsets.
constexpr int kRecentOffsets = 3;

/// The longest codes. Main and length tree: the largest length that a pretree can name. Pretree and aligned
/// tree: the largest number in the fields of 4 and 3 bits that hold their lengths.
constexpr int kMaxCodeLength = 16;
constexpr int kMaxPretreeLength = 15;
constexpr int kMaxAlignedLength = 7;
constexpr int kPretreeLengthBits = 4;
constexpr int kAlignedLengthBits = 3;

/// Verbatim and aligned blocks are coded and differ only in how the low offset bits are sent; an
/// uncompressed block holds its bytes as they are.
enum class BlockType : std::uint8_t { Verbatim = 1, Aligned = 2, Uncompressed = 3 };
/// The two fields that every block begins with: its type, and how many bytes it stands for.
constexpr int kBlockTypeBits = 3;
constexpr int kBlockSizeBits = 24;

/// Offsets are stored as "formatted offset" = offset + 2; 0 to 2 stand for the recent offsets.
constexpr std::uint32_t kOffsetBias = 2;

/// Returns the number of extra bits that follow a main symbol of this position slot.
constexpr int ExtraBits(int slot) {
    return slot < 4 ? 0 : std::min(17, slot / 2 - 1);
}

/// Returns the smallest formatted offset of the slot.
constexpr std::uint32_t SlotBase(int slot) {
    if (slot < 4) return static_cast<std::uint32_t>(slot);
    // From slot 36 on all slots have the same width.
    if (slot >= 36) return static_cast<std::uint32_t>(slot - 34) << 17;
    return static_cast<std::uint32_t>(2 + slot % 2) << ExtraBits(slot);
}

/// Returns the position slot of a formatted offset (below 2^21).
constexpr int SlotOf(std::uint32_t formatted) {
    if (formatted < 4) return static_cast<int>(formatted);
    if (formatted >= 1U << 18) return 34 + static_cast<int>(formatted >> 17);
    const int top = std::bit_width(formatted) - 1;
    return 2 * top + static_cast<int>((formatted >> (top - 1)) & 1U);
}

/// The first slot whose extra bits include a whole aligned symbol (three low bits).
constexpr int kFirstAlignedSlot = 8;

/// Returns the number of position slots of a window of 2^windowBits bytes.
constexpr int PositionSlots(int windowBits) {
    return SlotOf((1U << windowBits) - 1) + 1;
}

/// Returns the number of main symbols of a window of 2^windowBits bytes.
constexpr int MainSymbols(int windowBits) {
    return kLiterals + kLengthHeaders * PositionSlots(windowBits);
}

/// Enough for every window, so that all tables have one size.
constexpr int kMaxSlots = PositionSlots(kMaxWindowBits);
constexpr int kMaxMainSymbols = MainSymbols(kMaxWindowBits);

/// Returns the largest offset, in bytes, that is used. A window can name one byte more, but 7-Zip 26.02
/// mixes up the first bytes of some matches that begin exactly there.
constexpr std::uint32_t MaxOffset(int windowBits) {
    return (1U << windowBits) - 2 - kOffsetBias;
}

static_assert(PositionSlots(15) == 30 && PositionSlots(16) == 32 && PositionSlots(17) == 34);
static_assert(PositionSlots(18) == 36 && PositionSlots(19) == 38 && PositionSlots(20) == 42);
static_assert(PositionSlots(21) == 50 && MainSymbols(21) == 656);
static_assert(SlotBase(4) == 4 && SlotBase(8) == 16 && SlotBase(38) == 1U << 19 && SlotBase(50) == 1U << 21);
static_assert([] {
    for (int slot = 0; slot < kMaxSlots; ++slot)
        if (SlotBase(slot + 1) != SlotBase(slot) + (1U << ExtraBits(slot)) ||
            SlotOf(SlotBase(slot)) != slot || SlotOf(SlotBase(slot + 1) - 1) != slot)
            return false;
    return true;
}());
static_assert(SlotOf(3) == 3 && SlotOf(4) == 4 && SlotOf(5) == 4 && SlotOf(6) == 5 && SlotOf(15) == 7);
static_assert(SlotOf((1U << 18) - 1) == 35 && SlotOf(1U << 18) == 36 && SlotOf((1U << 21) - 1) == 49);
static_assert(ExtraBits(kFirstAlignedSlot) == 3 && ExtraBits(kFirstAlignedSlot - 1) == 2);
static_assert(kMaxMatch == kMinMatch + (kLengthHeaders - 1) + kLengthSymbols - 1);

}  // namespace tools::cabarc::lzx
