#include "realmode/unpack/Window.h"

namespace realmode::unpack {

Fault Window::Allocate(uint32_t frames) {
    while (allocated_ < frames && memory_.Allocate(kFrameBytes, frames_[allocated_])) ++allocated_;
    if (frames > 0 && allocated_ == 0) return Fault::NoMemory;
    if (allocated_ < frames && !memory_.AllocateStore(frames)) return Fault::NoXms;
    return Fault::None;
}

void Window::BeginFolder(uint32_t frames, uint32_t limit) {
    windowFrames_ = frames;
    nearFrames_ = frames < allocated_ ? frames : allocated_;
    limit_ = limit;
    near_ = slot_ = start_ = 0;
}

Fault Window::CopyMatch(uint32_t at, uint32_t distance, uint32_t length) {
    if (distance - 1 >= limit_) return Fault::BadMatch;
    if (distance > at) return CopyOlder(at, distance, length);
    FarBytes::Copy(Frame(), at, Frame(), at - distance, length);
    return Fault::None;
}

Fault Window::CopyOlder(uint32_t at, uint32_t distance, uint32_t length) {
    if (distance - at > start_) return Fault::BadMatch;
    while (length > 0 && distance > at) {
        const uint32_t back = distance - at;  // before the frame that is being filled
        const uint32_t age = (back + kFrameBytes - 1) / kFrameBytes;
        const uint32_t from = age * kFrameBytes - back;
        const uint32_t rest = kFrameBytes - from;
        const uint32_t count = length < rest ? length : rest;
        const Fault fault = CopyFromFrame(age, from, at, count);
        if (fault != Fault::None) return fault;
        at += count;
        length -= count;
    }
    FarBytes::Copy(Frame(), at, Frame(), at - distance, length);
    return Fault::None;
}

Fault Window::CopyFromFrame(uint32_t age, uint32_t from, uint32_t at, uint32_t count) {
    // A frame that is exactly one window old lies where the new one is being written, and what a match may
    // reach of it is not overwritten yet.
    if (age < nearFrames_ || !UsesStore()) {
        const uint32_t near = near_ >= age ? near_ - age : near_ + nearFrames_ - age;
        FarBytes::Copy(Frame(), at, frames_[near], from, count);
        return Fault::None;
    }
    const uint32_t slot = slot_ >= age ? slot_ - age : slot_ + windowFrames_ - age;
    const uint8_t* const bytes = memory_.GetFromStore(slot, from, count);
    if (bytes == nullptr) return Fault::NoXms;
    FarBytes::Copy(Frame(), at, bytes, count);
    return Fault::None;
}

Fault Window::NextFrame() {
    if (UsesStore() && !memory_.PutInStore(slot_, Frame())) return Fault::NoXms;
    if (++near_ == nearFrames_) near_ = 0;
    if (++slot_ == windowFrames_) slot_ = 0;
    start_ += kFrameBytes;
    return Fault::None;
}

}  // namespace realmode::unpack
