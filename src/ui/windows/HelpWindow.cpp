#include "src/ui/windows/HelpWindow.h"

namespace velbooter {

void CallHtmlHelp(HWND owner, const std::string& file, unsigned command, std::uintptr_t data) {
    using HtmlHelpFunction = HWND(WINAPI*)(HWND, LPCSTR, UINT, DWORD_PTR);
    // Loaded when it is needed and then kept: the viewer's window lives in this library.
    const HMODULE viewer = ::LoadLibraryA("hhctrl.ocx");
    if (viewer == nullptr) return;
    const auto htmlHelp =
        reinterpret_cast<HtmlHelpFunction>(reinterpret_cast<void*>(::GetProcAddress(viewer, "HtmlHelpA")));
    if (htmlHelp != nullptr) htmlHelp(owner, file.c_str(), command, data);
}

}  // namespace velbooter
