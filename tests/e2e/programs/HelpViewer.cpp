// Stands in for the system's help viewer when it lies in its place as hhctrl.ocx: notes each call in
// help-calls.txt beside the program that calls, and shows the window that tells the program of an open help.
// It runs in the program's process, and notes beside the calls who tells there of a drive without a disk.

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
    // Whoever sees the window finds the note.
    note.close();
    constexpr UINT kCloseAll = 18;
    if (command != kCloseAll) return ShowWindowOfHelp();
    if (const HWND open = ::FindWindowA(kClassName, kTitle)) ::DestroyWindow(open);
    return nullptr;
}
