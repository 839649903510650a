#pragma once
// LZX as cabinets have it; docs/formats/lzx.md describes it.

#include <stdint.h>

#include "realmode/unpack/BitReader.h"
#include "realmode/unpack/HuffmanCode.h"
#include "realmode/unpack/Window.h"

namespace realmode::unpack {

class LzxDecoder {
 public:
    static constexpr uint32_t kMinWindowBits = 15;
    static constexpr uint32_t kMaxWindowBits = 21;

    LzxDecoder(Window& window, Codes& codes) : window_(window), codes_(codes) {}
    LzxDecoder(const LzxDecoder&) = delete;
    LzxDecoder& operator=(const LzxDecoder&) = delete;

    /// The most bytes that a match reaches back with that window.
    static constexpr uint32_t MaxDistance(uint32_t windowBits) { return (1U << windowBits) - 3; }

    /// Begins a folder; the window has begun it, too.
    void BeginFolder(uint32_t windowBits);

    /// Decodes the first `packed` bytes of `input` to the first `frameBytes` bytes of the window's frame. It
    /// is BadTree, BadMatch or BadStream when they are damaged, NoXms when the store fails.
    Fault DecodeFrame(FarBytes input, uint32_t packed, uint32_t frameBytes);

    /// The size to which calls are translated, 0 when they are not; known from the first frame on.
    uint32_t TranslationSize() const { return translationSize_; }

 private:
    enum class Block : uint8_t { None, Verbatim, Aligned, Uncompressed };

    static constexpr uint32_t kLiterals = 256;
    static constexpr uint32_t kMaxSlots = 50;
    static constexpr uint32_t kMaxMainSymbols = kLiterals + 8 * kMaxSlots;
    static constexpr uint32_t kLengthSymbols = 249;
    static constexpr uint32_t kAlignedSymbols = 8;
    static_assert(kMaxMainSymbols <= HuffmanCode::kMaxSymbols);

    void BeginStream();
    Fault DecodePart(uint32_t& at, uint32_t end);
    Fault BeginBlock();
    Fault BeginUncompressed();
    bool ReadTrees(bool aligned);
    bool ReadLengths(uint8_t* lengths, uint32_t count);
    bool ReadRun(uint32_t symbol, uint8_t*& length, const uint8_t* end);
    Fault CopyUncompressed(uint32_t& at, uint32_t end);
    Fault DecodeItems(uint32_t& at, uint32_t end);
    Fault DecodeMatch(uint32_t symbol, uint32_t& at, uint32_t end);
    uint32_t ReadDistance(uint32_t slot);
    uint32_t ReadExtra(uint32_t bits);

    Window& window_;
    Codes& codes_;
    BitReader bits_;
    uint8_t mainLengths_[kMaxMainSymbols];
    uint8_t lengthLengths_[kLengthSymbols];
    uint32_t mainSymbols_ = 0;
    uint32_t translationSize_ = 0;
    uint32_t queue_[3] = {1, 1, 1};
    uint32_t blockLeft_ = 0;
    Block block_ = Block::None;
    bool blockIsOdd_ = false;
    bool padIsDue_ = false;  // the byte after an uncompressed block of an odd size
    bool hasBegun_ = false;
};

}  // namespace realmode::unpack
