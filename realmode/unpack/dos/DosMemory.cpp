#include "realmode/unpack/dos/DosMemory.h"

#include "realmode/unpack/dos/Calls.h"

namespace realmode::unpack {

namespace {

// What a move of XMS takes: an even number of bytes, and two places, of which handle 0 means a far pointer.
struct Move {
    uint32_t Bytes;
    uint16_t FromHandle;
    uint32_t From;
    uint16_t ToHandle;
    uint32_t To;
} __attribute__((packed));

uint32_t FarPointer(uint16_t segment, uint16_t offset) {
    return uint32_t{segment} << 16 | offset;
}

bool Xms(Registers& registers) {
    CallXms(registers);
    return registers.Ax == 1;
}

bool MoveXms(const Move& move) {
    Registers registers{.Ax = 0x0B00, .Si = OffsetOf(&move)};
    return Xms(registers);
}

}  // namespace

bool DosMemory::Allocate(uint32_t bytes, FarBytes& memory) {
    Registers registers{.Ax = 0x4800, .Bx = static_cast<uint16_t>((bytes + 15) / 16)};
    if (!Dos(registers)) return false;
    memory = FarBytes(registers.Ax);
    return true;
}

bool DosMemory::AllocateStore(uint32_t frames) {
    Registers registers{.Ax = 0x0900, .Dx = static_cast<uint16_t>(frames * (kFrameBytes / 1024))};
    if (!FindXms() || !Xms(registers)) return false;
    handle_ = registers.Dx;
    hasStore_ = true;
    return true;
}

bool DosMemory::PutInStore(uint32_t frame, FarBytes from) {
    return MoveXms({kFrameBytes, 0, FarPointer(from.Segment(), 0), handle_, frame * kFrameBytes});
}

const uint8_t* DosMemory::GetFromStore(uint32_t frame, uint32_t at, uint32_t count) {
    const uint32_t first = at & ~1U;
    const uint32_t bytes = (at + count - first + 1) & ~1U;
    const uint32_t to = FarPointer(OwnSegment(), OffsetOf(match_));
    return MoveXms({bytes, handle_, frame * kFrameBytes + first, 0, to}) ? match_ + (at - first) : nullptr;
}

void DosMemory::Free() {
    Registers registers{.Ax = 0x0A00, .Dx = handle_};
    if (hasStore_) CallXms(registers);
}

}  // namespace realmode::unpack
