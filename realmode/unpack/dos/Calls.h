#pragma once
// Calls to DOS (functions that DOS 3.3 has) and to the XMS driver.

#include <stdint.h>

namespace realmode::unpack {

/// The segment of code, data and stack.
inline uint16_t OwnSegment() {
    uint16_t segment;
    asm("movw %%cs, %0" : "=r"(segment));
    return segment;
}

/// A near pointer as an offset.
inline uint16_t OffsetOf(const void* pointer) {
    return static_cast<uint16_t>(reinterpret_cast<uint32_t>(pointer));
}

/// What a call takes; Ax, Cx, Dx and Carry are then what it gives.
struct Registers {
    uint16_t Ax = 0;
    uint16_t Bx = 0;
    uint16_t Cx = 0;
    uint16_t Dx = 0;
    uint16_t Si = 0;
    uint16_t Ds = OwnSegment();
    bool Carry = false;
};

extern "C" {
/// Calls DOS (INT 21h).
void CallDos(Registers& registers);
/// Calls the XMS driver, which FindXms must have found. Carry means nothing then.
void CallXms(Registers& registers);
/// Returns whether there is an XMS driver, and keeps its address for CallXms.
bool FindXms();
/// Handlers of interrupts, not to be called.
void OnBreak();
void OnDiskError();
/// Whether Ctrl-C was pressed.
extern volatile bool isStopped;
}

/// Calls DOS; false when it reports an error, whose number is then in Ax.
inline bool Dos(Registers& registers) {
    CallDos(registers);
    return !registers.Carry;
}

}  // namespace realmode::unpack
