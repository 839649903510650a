#include "tests/e2e/support/SelectionWindow.h"

#include <commctrl.h>

#include <algorithm>
#include <ostream>

#include "tests/e2e/support/HarnessFailure.h"
#include "tests/e2e/support/RemoteControls.h"
#include "tests/e2e/support/RemoteMemory.h"
#include "tests/e2e/support/WindowTree.h"

namespace velbooter::e2e {

namespace {

bool HasTick(HWND list, int row) {
    constexpr LRESULT kTicked = 2;
    const void* const mask = reinterpret_cast<const void*>(static_cast<UINT_PTR>(LVIS_STATEIMAGEMASK));
    return Ask(list, LVM_GETITEMSTATE, static_cast<WPARAM>(row), mask) >> 12 == kTicked;
}

}  // namespace

void PrintTo(const DriverRow& row, std::ostream* out) {
    *out << (row.Ticked ? "[x] " : "[ ] ") << row.Name << " \"" << row.Description << "\"";
}

HWND SelectionWindow::List() const {
    const HWND list = ::FindWindowExA(window_, nullptr, WC_LISTVIEWA, nullptr);
    if (list == nullptr) throw HarnessFailure("the driver selection has no list");
    return list;
}

HWND SelectionWindow::Header() const {
    return reinterpret_cast<HWND>(Ask(List(), LVM_GETHEADER, 0, nullptr));
}

std::vector<DriverRow> SelectionWindow::Rows() const {
    const HWND list = List();
    const auto count = static_cast<int>(Ask(list, LVM_GETITEMCOUNT, 0, nullptr));
    std::vector<DriverRow> rows;
    for (int row = 0; row < count; ++row)
        rows.push_back({ItemText(list, row, 0), ItemText(list, row, 1), HasTick(list, row)});
    return rows;
}

std::vector<std::string> SelectionWindow::Ticked() const {
    std::vector<std::string> names;
    for (const DriverRow& row : Rows()) {
        if (row.Ticked) names.push_back(row.Name);
    }
    return names;
}

std::vector<std::string> SelectionWindow::Names() const {
    std::vector<std::string> names;
    for (const DriverRow& row : Rows()) names.push_back(row.Name);
    return names;
}

std::string SelectionWindow::Selected() const {
    const void* const selected = reinterpret_cast<const void*>(static_cast<UINT_PTR>(LVNI_SELECTED));
    const auto row = static_cast<int>(Ask(List(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), selected));
    return row < 0 ? "" : ItemText(List(), row, 0);
}

std::string SelectionWindow::ColumnTitle(int column) const {
    return TitleOf(Header(), column);
}

Arrow SelectionWindow::ColumnArrow(int column) const {
    const HWND header = Header();
    const RemoteMemory memory(header, sizeof(HDITEMA));
    HDITEMA item{};
    item.mask = HDI_FORMAT;
    memory.Write(item);
    Ask(header, HDM_GETITEMA, static_cast<WPARAM>(column), memory.At());
    memory.Read(item);
    if ((item.fmt & HDF_SORTUP) != 0) return Arrow::Up;
    return (item.fmt & HDF_SORTDOWN) != 0 ? Arrow::Down : Arrow::None;
}

int SelectionWindow::ColumnWidth(int column) const {
    return static_cast<int>(Ask(List(), LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), nullptr));
}

int SelectionWindow::TextWidth(const std::string& text) const {
    return TextWidthIn(List(), text);
}

std::vector<std::string> SelectionWindow::Buttons() const {
    std::vector<HWND> buttons;
    for (const WindowInfo& child : ChildWindows(window_)) {
        if (child.Class == WC_BUTTONA && child.Visible) buttons.push_back(child.Handle);
    }
    std::sort(buttons.begin(), buttons.end(),
              [&](HWND a, HWND b) { return PlaceOf(a).left < PlaceOf(b).left; });
    std::vector<std::string> captions;
    for (const HWND button : buttons) captions.push_back(TextOf(button));
    return captions;
}

HWND SelectionWindow::Button(const std::string& caption) const {
    for (const WindowInfo& child : ChildWindows(window_)) {
        if (child.Class == WC_BUTTONA && TextOf(child.Handle) == caption) return child.Handle;
    }
    throw HarnessFailure("the driver selection has no button \"" + caption + "\"");
}

void SelectionWindow::Click(const std::string& button) const {
    ::PostMessageA(Button(button), BM_CLICK, 0, 0);
}

void SelectionWindow::ClickColumn(int column) const {
    ClickInside(Header(), MiddleOf(HeaderPlace(column)));
}

void SelectionWindow::ClickBox(int row) const {
    POINT place = BoxOf(row);
    ::ScreenToClient(List(), &place);
    ClickInside(List(), place);
}

void SelectionWindow::Key(WPARAM key) const {
    const HWND focus = Focus();
    ::PostMessageA(focus, WM_KEYDOWN, key, 1);
    ::PostMessageA(focus, WM_KEYUP, key, 0xC0000001);
}

HWND SelectionWindow::Focus() const {
    return FocusOfThreadOf(window_);
}

bool SelectionWindow::ShowsMenu() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    ::GetGUIThreadInfo(::GetWindowThreadProcessId(window_, nullptr), &info);
    return (info.flags & GUI_INMENUMODE) != 0;
}

SIZE SelectionWindow::IdealSizeOf(HWND button) const {
    return IdealSizeOfButton(button);
}

std::string SelectionWindow::FocusedPart() const {
    const HWND focus = Focus();
    if (focus == nullptr) return "nothing";
    return focus == List() ? "list" : TextOf(focus);
}

RECT SelectionWindow::PlaceOf(HWND part) const {
    RECT place{};
    ::GetWindowRect(part, &place);
    if (part == window_) return place;
    POINT origin{};
    ::ClientToScreen(window_, &origin);
    ::OffsetRect(&place, -origin.x, -origin.y);
    return place;
}

RECT SelectionWindow::HeaderPlace(int column) const {
    const HWND header = Header();
    const RemoteMemory memory(header, sizeof(RECT));
    RECT place{};
    Ask(header, HDM_GETITEMRECT, static_cast<WPARAM>(column), memory.At());
    memory.Read(place);
    return place;
}

// The box is between the row's left side and its label.
POINT SelectionWindow::BoxOf(int row) const {
    RECT box = ItemPlace(List(), row, LVIR_BOUNDS);
    box.right = ItemPlace(List(), row, LVIR_LABEL).left;
    POINT middle = MiddleOf(box);
    ::ClientToScreen(List(), &middle);
    return middle;
}

}  // namespace velbooter::e2e
