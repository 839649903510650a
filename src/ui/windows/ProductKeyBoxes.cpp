#include "src/ui/windows/ProductKeyBoxes.h"

#include <algorithm>
#include <string>

namespace velbooter {

namespace {

// The text of the clipboard, which stays open for as long as this lives.
class Clipboard {
 public:
    explicit Clipboard(HWND asker) : isOpen_(::OpenClipboard(asker) != FALSE) {
        if (isOpen_) block_ = ::GetClipboardData(CF_TEXT);
        if (block_ != nullptr) bytes_ = ::GlobalLock(block_);
    }
    ~Clipboard() {
        if (bytes_ != nullptr) ::GlobalUnlock(block_);
        if (isOpen_) ::CloseClipboard();
    }
    Clipboard(const Clipboard&) = delete;
    Clipboard& operator=(const Clipboard&) = delete;

    /// "" when there is no text.
    std::string Text() const { return bytes_ != nullptr ? static_cast<const char*>(bytes_) : ""; }

 private:
    bool isOpen_;
    HANDLE block_ = nullptr;
    const void* bytes_ = nullptr;
};

void FocusIn(HWND frame, HWND box) {
    ::SendMessageA(frame, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(box), TRUE);
}

}  // namespace

void ProductKeyBoxes::Attach(HWND frame, const std::array<HWND, kKeyGroups>& boxes, CaughtFailure& failure) {
    frame_ = frame;
    failure_ = &failure;
    boxes_ = boxes;
    for (size_t i = 0; i < boxes_.size(); ++i) {
        ::SendMessageA(boxes_[i], EM_LIMITTEXT, kKeyGroupLength, 0);
        ::SetWindowLongPtrW(boxes_[i], GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        // Not SetWindowSubclass, which looks up its data by name for each message. The wizard asks the boxes
        // for their texts whenever a file is done, and under Wine the lookups took most of that time.
        edit_ = reinterpret_cast<WNDPROC>(
            ::SetWindowLongPtrW(boxes_[i], GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Procedure)));
    }
}

LRESULT CALLBACK ProductKeyBoxes::Procedure(HWND box, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto& boxes = *reinterpret_cast<const ProductKeyBoxes*>(::GetWindowLongPtrW(box, GWLP_USERDATA));
    const auto index = static_cast<size_t>(std::ranges::find(boxes.boxes_, box) - boxes.boxes_.begin());
    const auto paste = [&] { return boxes.Paste(index); };
    if (message == WM_PASTE && boxes.failure_->Guard(paste, true)) return 0;
    const LRESULT result = ::CallWindowProcW(boxes.edit_, box, message, wParam, lParam);
    const bool isCharacter = message == WM_CHAR && wParam > L' ';
    if (isCharacter) boxes.LeaveWhenFull(index);
    return result;
}

// Puts what is more than a group into this box and those after it. Returns false when the box can take it by
// itself. A text that does not fit at all is no key, and none of it is taken.
bool ProductKeyBoxes::Paste(size_t first) const {
    std::string key = Clipboard(boxes_[first]).Text();
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
