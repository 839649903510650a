#include "src/common/Handle.h"

#include <windows.h>

namespace velbooter {

namespace handles {

void Kernel::Close(void* handle) {
    ::CloseHandle(handle);
}

void File::Close(void* handle) {
    ::CloseHandle(handle);
}

void Find::Close(void* handle) {
    ::FindClose(handle);
}

}  // namespace handles

FileHandle OpenExistingFile(const std::string& file, std::uint32_t access) {
    return FileHandle(::CreateFileA(file.c_str(), access,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

}  // namespace velbooter
