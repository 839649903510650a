#include "src/common/Handle.h"

#include <windows.h>

namespace velbooter::handles {

void Kernel::Close(void* handle) {
    ::CloseHandle(handle);
}

void File::Close(void* handle) {
    ::CloseHandle(handle);
}

void Find::Close(void* handle) {
    ::FindClose(handle);
}

}  // namespace velbooter::handles
