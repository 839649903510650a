#include "src/ui/windows/HelpWindow.h"

#include "src/common/Folders.h"

namespace velbooter {

namespace {

constexpr const char* kViewer = "hhctrl.ocx";

// Calls the viewer in the library `viewer`, when there is one.
void Call(HMODULE viewer, HWND owner, const char* file, HelpCommand command, DWORD_PTR data) {
    using HtmlHelpFunction = HWND(WINAPI*)(HWND, LPCSTR, UINT, DWORD_PTR);
    if (viewer == nullptr) return;
    const auto htmlHelp =
        reinterpret_cast<HtmlHelpFunction>(reinterpret_cast<void*>(::GetProcAddress(viewer, "HtmlHelpA")));
    if (htmlHelp != nullptr) htmlHelp(owner, file, static_cast<UINT>(command), data);
}

}  // namespace

void CallHtmlHelp(HWND owner, const std::string& file, HelpCommand command, std::uintptr_t data) {
    // Loaded when it is needed and then kept: the viewer's window lives in this library. By its path: a
    // Windows 7 without updates does not know LOAD_LIBRARY_SEARCH_SYSTEM32.
    const std::string folder = GetSystemFolder();
    if (folder.empty()) return;
    Call(::LoadLibraryExA((folder + kViewer).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH), owner,
         file.c_str(), command, data);
}

void CloseHelp() {
    Call(::GetModuleHandleA(kViewer), nullptr, nullptr, HelpCommand::CloseAll, 0);
}

}  // namespace velbooter
