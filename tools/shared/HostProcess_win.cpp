#include "tools/shared/HostProcess.h"

#include <windows.h>
// shellapi.h needs windows.h before it.
#include <shellapi.h>

#include "tools/shared/Handle.h"
#include "tools/shared/ToolError.h"
#include "tools/shared/Utf8.h"
#include "tools/shared/WideText_win.h"

namespace tools {
namespace {

// Memory that the system has allocated for an array of `Element`.
template <typename Element>
struct LocalMemory {
    using Value = Element*;
    static Value None() { return nullptr; }
    static void Close(Value memory) { LocalFree(memory); }
};

}  // namespace

std::vector<std::string> Arguments(int, char**) {
    int count = 0;
    const UniqueHandle<LocalMemory<wchar_t*>> words(CommandLineToArgvW(GetCommandLineW(), &count));
    const std::vector<std::wstring> wide(words.Get() + (words ? 1 : 0), words.Get() + count);
    std::vector<std::string> arguments(wide.size());
    for (std::size_t i = 0; i < wide.size(); ++i)
        // It must not be used in a lossy form: its question marks would be wildcards.
        if (!ConvertToUtf8(wide[i], arguments[i]))
            throw ToolError("this name is not Unicode: " + LossyUtf8(wide[i]));
    return arguments;
}

void UseSystemLibrariesOnly() {
    // A Windows 7 without its updates has no such function.
    using SetDirectories = BOOL(WINAPI*)(DWORD);
    const auto set = reinterpret_cast<SetDirectories>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "SetDefaultDllDirectories")));
    if (set != nullptr) set(LOAD_LIBRARY_SEARCH_SYSTEM32);
}

void Print(Stream stream, const std::string& text) {
    const HANDLE output = GetStdHandle(stream == Stream::Output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
    DWORD mode = 0;
    DWORD written = 0;
    if (GetConsoleMode(output, &mode) && IsUtf8(text)) {
        const std::wstring wide = WideFromUtf8(text);
        WriteConsoleW(output, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
    } else {
        WriteFile(output, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    }
}

}  // namespace tools
