#pragma once
// Unpacks a folder of a cabinet, frame by frame.

#include <stdint.h>

#include "realmode/unpack/CabinetReader.h"
#include "realmode/unpack/HuffmanCode.h"
#include "realmode/unpack/LzxDecoder.h"
#include "realmode/unpack/MsZipDecoder.h"
#include "realmode/unpack/Window.h"

namespace realmode::unpack {

class FolderReader {
 public:
    FolderReader(CabinetReader& cabinet, Memory& memory)
        : cabinet_(cabinet),
          memory_(memory),
          window_(memory),
          lzx_(window_, codes_),
          msZip_(window_, codes_) {}
    FolderReader(const FolderReader&) = delete;
    FolderReader& operator=(const FolderReader&) = delete;

    /// The frames of the window that a folder needs, which is never longer than the folder.
    static uint32_t WindowFrames(const FolderRecord& folder);

    /// Gets the memory for folders with up to that many frames. It is NoMemory or NoXms when there is not
    /// enough.
    Fault Allocate(uint32_t windowFrames);

    /// Begins a folder.
    void Begin(const FolderRecord& folder);

    /// Unpacks the next frame. It is BadDirectory when the folder has no more, else what is wrong with the
    /// frame.
    Fault NextFrame();

    /// The frame: where it lies, the place of its first byte in the folder, and that of the first byte after
    /// it.
    FarBytes Frame() const { return frame_; }
    uint32_t FrameStart() const { return start_; }
    uint32_t FrameEnd() const { return end_; }

 private:
    Fault Decode(uint32_t packed, uint32_t unpacked);

    CabinetReader& cabinet_;
    Memory& memory_;
    Codes codes_;
    Window window_;
    LzxDecoder lzx_;
    MsZipDecoder msZip_;
    FolderRecord folder_;
    FarBytes data_;  // a data record; after the decoding what of the frame differs from the window
    FarBytes frame_;
    uint32_t start_ = 0;
    uint32_t end_ = 0;
};

}  // namespace realmode::unpack
