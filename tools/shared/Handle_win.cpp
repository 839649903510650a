#include <windows.h>

#include "tools/shared/Handle.h"

namespace tools::handles {

File::Value File::None() {
    return INVALID_HANDLE_VALUE;
}

void File::Close(Value file) {
    CloseHandle(file);
}

Search::Value Search::None() {
    return INVALID_HANDLE_VALUE;
}

void Search::Close(Value search) {
    FindClose(search);
}

}  // namespace tools::handles
