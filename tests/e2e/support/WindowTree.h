#pragma once
// Finds the windows of another process: by process and class, never by position on the screen.

#include <windows.h>

#include <string>
#include <vector>

namespace velbooter::e2e {

struct WindowInfo {
    HWND Handle = nullptr;
    std::string Class;
    int Id = 0;  ///< of a child; 0 for a top-level window
    bool Visible = false;
    bool Enabled = false;
};

/// The top-level windows of a process, from the topmost down, hidden ones included.
std::vector<WindowInfo> TopLevelWindows(DWORD process);

/// All windows below `parent`, children of children included.
std::vector<WindowInfo> ChildWindows(HWND parent);

/// A window's text as the window itself returns it; "" when it does not answer or is gone.
std::string TextOf(HWND window);

/// A window's text as the system keeps it, which works even when the window is busy.
std::string KeptTextOf(HWND window);

/// The windows of a process as an indented tree, for people to read.
std::string DescribeWindows(DWORD process);

}  // namespace velbooter::e2e
