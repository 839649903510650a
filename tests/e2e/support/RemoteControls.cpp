#include "tests/e2e/support/RemoteControls.h"

#include <commctrl.h>

#include <array>

#include "tests/e2e/support/HarnessFailure.h"
#include "tests/e2e/support/RemoteMemory.h"
#include "tests/support/Patience.h"

namespace velbooter::e2e {

// The system regards a window as hung after five seconds, which a program that works on a busy machine may
// easily need.
LRESULT Ask(HWND window, UINT message, WPARAM wParam, const void* pointer) {
    DWORD_PTR answer = 0;
    if (::SendMessageTimeoutA(window, message, wParam, reinterpret_cast<LPARAM>(pointer), SMTO_NORMAL,
                              kPatienceMs, &answer) == 0) {
        throw HarnessFailure("a window of the program does not answer");
    }
    return static_cast<LRESULT>(answer);
}

namespace {

// Asks for the text of the item that `item` describes: an LVITEMA or an HDITEMA.
template <typename Item>
std::string TextByItem(HWND control, UINT message, int index, Item item) {
    const RemoteMemory memory(control, sizeof item + kRemoteTextBytes);
    item.pszText = memory.At(sizeof item);
    item.cchTextMax = static_cast<int>(kRemoteTextBytes);
    memory.Write(item);
    Ask(control, message, static_cast<WPARAM>(index), memory.At());
    return memory.Text(sizeof item, kRemoteTextBytes);
}

}  // namespace

std::string ItemText(HWND list, int row, int column) {
    LVITEMA item{};
    item.iSubItem = column;
    return TextByItem(list, LVM_GETITEMTEXTA, row, item);
}

std::string TitleOf(HWND header, int column) {
    HDITEMA item{};
    item.mask = HDI_TEXT;
    return TextByItem(header, HDM_GETITEMA, column, item);
}

RECT ItemPlace(HWND list, int row, int part) {
    const RemoteMemory memory(list, sizeof(RECT));
    RECT place{};
    place.left = part;
    memory.Write(place);
    Ask(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), memory.At());
    memory.Read(place);
    return place;
}

int TextWidthIn(HWND list, const std::string& text) {
    const RemoteMemory memory(list, kRemoteTextBytes);
    std::array<char, kRemoteTextBytes> bytes{};
    text.copy(bytes.data(), bytes.size() - 1);
    memory.Write(bytes);
    return static_cast<int>(Ask(list, LVM_GETSTRINGWIDTHA, 0, memory.At()));
}

SIZE IdealSizeOfButton(HWND button) {
    const RemoteMemory memory(button, sizeof(SIZE));
    SIZE size{};
    memory.Write(size);
    Ask(button, BCM_GETIDEALSIZE, 0, memory.At());
    memory.Read(size);
    return size;
}

// The spy answers a moment after the window itself.
SIZE TextSizeOf(HWND control, TextLook look) {
    ::RemovePropA(control, kTextSizeProperty);
    ::SendNotifyMessageA(control, ::RegisterWindowMessageA(kAskForTextSize), static_cast<WPARAM>(look), 0);
    INT_PTR answer = 0;
    const auto hasReported = [&] {
        answer = reinterpret_cast<INT_PTR>(::GetPropA(control, kTextSizeProperty));
        return answer != 0;
    };
    if (!Eventually(hasReported)) throw HarnessFailure("the spy did not report the size of a text");
    return {LOWORD(answer - 1), HIWORD(answer - 1)};
}

void ClickInside(HWND control, POINT place) {
    const LPARAM at = MAKELPARAM(place.x, place.y);
    ::PostMessageA(control, WM_LBUTTONDOWN, MK_LBUTTON, at);
    ::PostMessageA(control, WM_LBUTTONUP, 0, at);
}

POINT MiddleOf(const RECT& place) {
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

HWND FocusOfThreadOf(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    ::GetGUIThreadInfo(::GetWindowThreadProcessId(window, nullptr), &info);
    return info.hwndFocus;
}

}  // namespace velbooter::e2e
