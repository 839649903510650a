#pragma once
// The bytes of a folder that matches refer to: the latest frames in conventional memory, and all of the
// window in a store (XMS) as well when conventional memory does not hold it.

#include <stdint.h>

#include "realmode/unpack/Machine.h"

namespace realmode::unpack {

class Window {
 public:
    static constexpr uint32_t kMaxFrames = 64;  ///< of the largest window, 2 MB

    explicit Window(Memory& memory) : memory_(memory) {}
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    /// Gets the memory for folders that look back over up to `frames` frames. It is NoMemory or NoXms when
    /// there is not enough.
    Fault Allocate(uint32_t frames);

    /// Begins a folder that looks back over `frames` frames, the one that is being filled among them; no more
    /// than there is memory for. No match reaches back over more than `limit` bytes.
    void BeginFolder(uint32_t frames, uint32_t limit);

    /// The frame that is being filled.
    FarBytes Frame() const { return frames_[near_]; }
    /// The place of its first byte in the folder.
    uint32_t FrameStart() const { return start_; }

    /// Fills `length` bytes of the frame from the place `at` on with those that lie `distance` bytes before
    /// them. They lie within the frame, and there are at most kMaxMatchBytes. It is BadMatch when they would
    /// come from before the folder or the window, NoXms when the store fails.
    Fault CopyMatch(uint32_t at, uint32_t distance, uint32_t length);

    /// Ends the frame, which is full; NoXms when the store fails.
    Fault NextFrame();

 private:
    Fault CopyOlder(uint32_t at, uint32_t distance, uint32_t length);
    Fault CopyFromFrame(uint32_t age, uint32_t from, uint32_t at, uint32_t count);
    bool UsesStore() const { return nearFrames_ < windowFrames_; }

    Memory& memory_;
    FarBytes frames_[kMaxFrames];
    uint32_t allocated_ = 0;     // of frames_
    uint32_t nearFrames_ = 0;    // of frames_ used by this folder
    uint32_t windowFrames_ = 0;  // that this folder looks back over
    uint32_t limit_ = 0;
    uint32_t near_ = 0;   // the frame that is being filled, in frames_
    uint32_t slot_ = 0;   // and in the store
    uint32_t start_ = 0;  // and in the folder
};

}  // namespace realmode::unpack
