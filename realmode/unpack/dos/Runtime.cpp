// What the compiler calls by itself and a library would have.

#include <stddef.h>

extern "C" {

void* memcpy(void* to, const void* from, size_t count) {
    void* at = to;
    asm volatile("rep movsb" : "+D"(at), "+S"(from), "+c"(count) : : "memory");
    return to;
}

void* memset(void* to, int value, size_t count) {
    void* at = to;
    asm volatile("rep stosb" : "+D"(at), "+c"(count) : "a"(value) : "memory");
    return to;
}

/// A function that a class leaves to those derived from it; there is no way to call one.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the compiler has given the name
void __cxa_pure_virtual() {
    for (;;) asm volatile("hlt");
}
}
