#include "tests/e2e/support/WindowTree.h"
#include "tests/support/Patience.h"

#include <sstream>

namespace velbooter::e2e {

namespace {

struct Search {
    DWORD Process = 0;
    std::vector<WindowInfo> Found;
};

WindowInfo Look(HWND window) {
    WindowInfo info;
    info.Handle = window;
    char name[128] = "";
    ::GetClassNameA(window, name, sizeof name);
    info.Class = name;
    info.Visible = ::IsWindowVisible(window) != FALSE;
    info.Enabled = ::IsWindowEnabled(window) != FALSE;
    return info;
}

BOOL CALLBACK AddTopLevel(HWND window, LPARAM parameter) {
    Search& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    if (process == search.Process) search.Found.push_back(Look(window));
    return TRUE;
}

BOOL CALLBACK AddChild(HWND window, LPARAM parameter) {
    WindowInfo info = Look(window);
    info.Id = ::GetDlgCtrlID(window);
    reinterpret_cast<Search*>(parameter)->Found.push_back(info);
    return TRUE;
}

// Returns "" when the window does not answer in time.
std::string AskForText(HWND window, DWORD patienceMs) {
    std::string text(8192, '\0');
    DWORD_PTR length = 0;
    const LRESULT answered =
        ::SendMessageTimeoutA(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                              SMTO_NORMAL, patienceMs, &length);
    if (answered == 0) return "";
    text.resize(static_cast<size_t>(length));
    return text;
}

// A window that does not answer is described without its text.
void Describe(std::ostream& out, const WindowInfo& info, const char* indent) {
    constexpr DWORD kMomentMs = 1000;
    out << indent << info.Class << " id " << info.Id << (info.Visible ? " visible" : " hidden")
        << (info.Enabled ? "" : " disabled") << " text \"" << AskForText(info.Handle, kMomentMs) << "\"\n";
}

}  // namespace

std::vector<WindowInfo> TopLevelWindows(DWORD process) {
    Search search{process, {}};
    ::EnumWindows(AddTopLevel, reinterpret_cast<LPARAM>(&search));
    return search.Found;
}

std::vector<WindowInfo> ChildWindows(HWND parent) {
    Search search;
    ::EnumChildWindows(parent, AddChild, reinterpret_cast<LPARAM>(&search));
    return search.Found;
}

std::string TextOf(HWND window) {
    return AskForText(window, kPatienceMs);
}

std::string KeptTextOf(HWND window) {
    wchar_t wide[512] = L"";
    const int length = ::InternalGetWindowText(window, wide, 512);
    std::string text(static_cast<size_t>(length) * 2, '\0');
    const int bytes = ::WideCharToMultiByte(CP_ACP, 0, wide, length, text.data(),
                                            static_cast<int>(text.size()), nullptr, nullptr);
    text.resize(static_cast<size_t>(bytes));
    return text;
}

std::string DescribeWindows(DWORD process) {
    std::ostringstream out;
    for (const WindowInfo& window : TopLevelWindows(process)) {
        Describe(out, window, "");
        for (const WindowInfo& child : ChildWindows(window.Handle)) Describe(out, child, "    ");
    }
    return out.str();
}

}  // namespace velbooter::e2e
