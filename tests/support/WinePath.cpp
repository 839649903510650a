#include "tests/support/WinePath.h"

#include <windows.h>

namespace velbooter {

std::string UnixPath(const std::filesystem::path& path) {
    using Converter = char*(CDECL*)(LPCWSTR);
    const auto convert = reinterpret_cast<Converter>(reinterpret_cast<void*>(
        ::GetProcAddress(::GetModuleHandleA("kernel32.dll"), "wine_get_unix_file_name")));
    if (convert == nullptr) return "";
    char* const name = convert(path.c_str());
    const std::string result = name == nullptr ? "" : name;
    ::HeapFree(::GetProcessHeap(), 0, name);
    return result;
}

}  // namespace velbooter
