#pragma once
// MSZIP: in each data record two letters and a deflate stream (RFC 1951), whose matches reach into the frame
// before.

#include <stdint.h>

#include "realmode/unpack/BitReader.h"
#include "realmode/unpack/HuffmanCode.h"
#include "realmode/unpack/Window.h"

namespace realmode::unpack {

class MsZipDecoder {
 public:
    static constexpr uint32_t kWindowFrames = 2;
    static constexpr uint32_t kMaxDistance = 32768;

    MsZipDecoder(Window& window, Codes& codes) : window_(window), codes_(codes) {}
    MsZipDecoder(const MsZipDecoder&) = delete;
    MsZipDecoder& operator=(const MsZipDecoder&) = delete;

    /// Decodes the first `packed` bytes of `input` to the first `frameBytes` bytes of the window's frame. It
    /// is BadTree, BadMatch or BadStream when they are damaged, NoXms when the store fails.
    Fault DecodeFrame(FarBytes input, uint32_t packed, uint32_t frameBytes);

 private:
    static constexpr uint32_t kMaxMainSymbols = 288;
    static constexpr uint32_t kMaxDistanceSymbols = 32;

    Fault DecodeBlock(uint32_t type, uint32_t& at, uint32_t end);
    Fault CopyStored(uint32_t& at, uint32_t end);
    bool MakeFixedCodes();
    bool ReadCodes();
    bool ReadLengths(uint32_t count);
    Fault DecodeItems(uint32_t& at, uint32_t end);
    Fault DecodeMatch(uint32_t symbol, uint32_t& at, uint32_t end);

    Window& window_;
    Codes& codes_;
    BitReader bits_;
    uint8_t lengths_[kMaxMainSymbols + kMaxDistanceSymbols];
};

}  // namespace realmode::unpack
