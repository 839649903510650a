// The spy: sees the messages of the program's thread after they were handled.

#include <windows.h>

#include <cstring>
#include <string>

#include "tests/e2e/spy/SpyProtocol.h"

namespace {

using velbooter::e2e::Picture;
using velbooter::e2e::TextLook;

bool HasClass(HWND window, const char* expected) {
    char name[64] = "";
    ::GetClassNameA(window, name, sizeof name);
    return ::lstrcmpiA(name, expected) == 0;
}

void NoteStatus(HWND label) {
    char path[MAX_PATH] = "";
    if (::GetEnvironmentVariableA(velbooter::e2e::kStatusFileVariable, path, sizeof path) == 0) return;
    char text[512] = "";
    ::GetWindowTextA(label, text, sizeof text - 2);
    std::strcat(text, "\n");
    const HANDLE file = ::CreateFileA(path, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_ALWAYS, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return;
    DWORD written = 0;
    ::WriteFile(file, text, static_cast<DWORD>(std::strlen(text)), &written, nullptr);
    ::CloseHandle(file);
}

Picture PictureOf(HWND icon) {
    const auto shown = reinterpret_cast<HICON>(::SendMessageA(icon, STM_GETICON, 0, 0));
    if (shown == nullptr) return Picture::None;
    if (shown == ::LoadIcon(nullptr, IDI_ERROR)) return Picture::Critical;
    if (shown == ::LoadIcon(nullptr, IDI_WARNING)) return Picture::Exclamation;
    if (shown == ::LoadIcon(nullptr, IDI_INFORMATION)) return Picture::Information;
    return Picture::Other;
}

BOOL CALLBACK LookAtChild(HWND child, LPARAM parameter) {
    const bool showsIcon =
        HasClass(child, "Static") && (::GetWindowLongA(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON;
    if (!showsIcon) return TRUE;
    *reinterpret_cast<Picture*>(parameter) = PictureOf(child);
    return FALSE;
}

void AnswerPicture(HWND box) {
    Picture picture = Picture::None;
    ::EnumChildWindows(box, LookAtChild, reinterpret_cast<LPARAM>(&picture));
    ::SetPropA(box, velbooter::e2e::kPictureProperty,
               reinterpret_cast<HANDLE>(static_cast<INT_PTR>(picture) + 1));
}

// The control's font, or one like it in bold; the latter has to be deleted.
HFONT FontOf(HWND control, TextLook look) {
    const auto font = reinterpret_cast<HFONT>(::SendMessageA(control, WM_GETFONT, 0, 0));
    if (look != TextLook::Bold) return font;
    LOGFONTA description{};
    ::GetObjectA(font, sizeof description, &description);
    description.lfWeight = FW_BOLD;
    return ::CreateFontIndirectA(&description);
}

void AnswerTextSize(HWND control, TextLook look) {
    wchar_t text[1024] = L"";
    ::GetWindowTextW(control, text, 1024);
    RECT place{};
    ::GetClientRect(control, &place);
    const bool isPlain =
        HasClass(control, "Static") && (::GetWindowLongA(control, GWL_STYLE) & SS_NOPREFIX) != 0;
    const HDC device = ::GetDC(control);
    const HFONT font = FontOf(control, look);
    const HGDIOBJ former = ::SelectObject(device, font);
    ::DrawTextW(device, text, -1, &place,
                DT_CALCRECT | (look == TextLook::InLines ? DT_WORDBREAK : DT_SINGLELINE) |
                    (isPlain ? DT_NOPREFIX : 0));
    ::SelectObject(device, former);
    if (look == TextLook::Bold) ::DeleteObject(font);
    ::ReleaseDC(control, device);
    ::SetPropA(control, velbooter::e2e::kTextSizeProperty,
               reinterpret_cast<HANDLE>(static_cast<INT_PTR>(MAKELONG(place.right, place.bottom)) + 1));
}

}  // namespace

extern "C" __declspec(dllexport) LRESULT CALLBACK SpyProcedure(int code, WPARAM wParam, LPARAM lParam) {
    static const UINT kAsk = ::RegisterWindowMessageA(velbooter::e2e::kAskForPicture);
    static const UINT kAskSize = ::RegisterWindowMessageA(velbooter::e2e::kAskForTextSize);
    if (code == HC_ACTION) {
        const auto& message = *reinterpret_cast<const CWPRETSTRUCT*>(lParam);
        if (message.message == kAsk) AnswerPicture(message.hwnd);
        if (message.message == kAskSize) AnswerTextSize(message.hwnd, static_cast<TextLook>(message.wParam));
        if (message.message == WM_SETTEXT && HasClass(::GetParent(message.hwnd), "FrmWait")) {
            NoteStatus(message.hwnd);
        }
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}
