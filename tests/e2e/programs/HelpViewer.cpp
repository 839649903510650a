// Stands in for the system's help viewer when it is installed in its place as hhctrl.ocx: records each call
// in help-calls.txt next to the calling program, and shows the window by which the program recognises an
// open help. It runs in the program's process, and also records who reports a drive without a disk there.

#include <windows.h>

#include <fstream>
#include <string>

namespace {

constexpr const char* kClassName = "HH Parent";
constexpr const char* kTitle = "The Corvane Help";

std::string NoteFile(const std::string& name) {
    char path[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string file = path;
    return file.substr(0, file.rfind('\\') + 1) + name;
}

HWND ShowWindowOfHelp() {
    if (const HWND open = ::FindWindowA(kClassName, kTitle)) return open;
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = ::DefWindowProcA;
    windowClass.hInstance = ::GetModuleHandleA(nullptr);
    windowClass.lpszClassName = kClassName;
    ::RegisterClassA(&windowClass);
    const HWND window = ::CreateWindowExA(0, kClassName, kTitle, WS_OVERLAPPED, 0, 0, 100, 100, nullptr,
                                          nullptr, windowClass.hInstance, nullptr);
    ::ShowWindow(window, SW_SHOWNOACTIVATE);
    return window;
}

}  // namespace

extern "C" __declspec(dllexport) HWND WINAPI
    HtmlHelpA(HWND owner, LPCSTR file, UINT command, DWORD_PTR data) {
    const bool isSilent = (::GetErrorMode() & SEM_FAILCRITICALERRORS) != 0;
    std::ofstream(NoteFile("critical-errors.txt")) << (isSilent ? "the program" : "the system");
    std::ofstream note(NoteFile("help-calls.txt"), std::ios::app);
    note << "owner " << reinterpret_cast<INT_PTR>(owner) << " file " << (file != nullptr ? file : "none")
         << " command " << command << " data " << data << "\n";
    // The record is complete before the window is visible.
    note.close();
    constexpr UINT kCloseAll = 18;
    if (command != kCloseAll) return ShowWindowOfHelp();
    if (const HWND open = ::FindWindowA(kClassName, kTitle)) ::DestroyWindow(open);
    return nullptr;
}
