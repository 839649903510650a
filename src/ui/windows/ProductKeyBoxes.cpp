#include "src/ui/windows/ProductKeyBoxes.h"

#include <commctrl.h>

#include <algorithm>
#include <string>

namespace velbooter {

namespace {

// Returns the text in the clipboard; "" when there is none.
std::string ClipboardText(HWND asker) {
    if (::OpenClipboard(asker) == FALSE) return "";
    std::string text;
    const HANDLE block = ::GetClipboardData(CF_TEXT);
    if (const void* bytes = block != nullptr ? ::GlobalLock(block) : nullptr; bytes != nullptr) {
        text = static_cast<const char*>(bytes);
        ::GlobalUnlock(block);
    }
    ::CloseClipboard();
    return text;
}

void FocusIn(HWND frame, HWND box) {
    ::SendMessageA(frame, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(box), TRUE);
}

}  // namespace

void ProductKeyBoxes::Attach(HWND frame, const std::array<HWND, kKeyGroups>& boxes) {
    frame_ = frame;
    boxes_ = boxes;
    for (size_t i = 0; i < boxes_.size(); ++i) {
        ::SendMessageA(boxes_[i], EM_LIMITTEXT, kKeyGroupLength, 0);
        ::SetWindowSubclass(boxes_[i], Procedure, i, reinterpret_cast<DWORD_PTR>(this));
    }
}

LRESULT CALLBACK ProductKeyBoxes::Procedure(HWND box, UINT message, WPARAM wParam, LPARAM lParam,
                                            UINT_PTR index, DWORD_PTR self) {
    const auto& boxes = *reinterpret_cast<const ProductKeyBoxes*>(self);
    if (message == WM_PASTE && boxes.Paste(index)) return 0;
    if (message == WM_NCDESTROY) ::RemoveWindowSubclass(box, Procedure, index);
    const LRESULT result = ::DefSubclassProc(box, message, wParam, lParam);
    const bool isCharacter = message == WM_CHAR && wParam > L' ';
    if (isCharacter) boxes.LeaveWhenFull(index);
    return result;
}

// Puts what is more than a group into this box and those behind it. Returns false when the box can take it by
// itself. A text that does not fit at all is no key, and none of it is taken.
bool ProductKeyBoxes::Paste(size_t first) const {
    std::string key = ClipboardText(boxes_[first]);
    if (key.size() <= kKeyGroupLength) return false;
    std::erase_if(key, [](char c) { return c == '-' || c == ' ' || c == '\t' || c == '\r' || c == '\n'; });
    if (key.empty() || key.size() > (boxes_.size() - first) * kKeyGroupLength) {
        ::MessageBeep(MB_OK);
        return true;
    }
    size_t box = first;
    for (size_t begin = 0; begin < key.size(); begin += kKeyGroupLength)
        ::SetWindowTextA(boxes_[box++], key.substr(begin, kKeyGroupLength).c_str());
    FocusIn(frame_, boxes_[box - 1]);
    return true;
}

void ProductKeyBoxes::LeaveWhenFull(size_t index) const {
    DWORD begin = 0;
    DWORD end = 0;
    ::SendMessageA(boxes_[index], EM_GETSEL, reinterpret_cast<WPARAM>(&begin),
                   reinterpret_cast<LPARAM>(&end));
    const bool isAtEnd = begin == kKeyGroupLength && end == kKeyGroupLength;
    if (isAtEnd && index + 1 < boxes_.size()) FocusIn(frame_, boxes_[index + 1]);
}

}  // namespace velbooter
