#pragma once
// The window classes of the forms: their own names, by which other programs find them, and what they have in
// common.

#include <windows.h>

namespace velbooter {

/// Registers the class `name` of a form, whose windows `procedure` serves with `extraBytes` bytes of their
/// own and whose mouse pointer is `cursor`, one of the system's (IDC_ARROW). That it is registered already
/// does no harm.
inline void RegisterFormClass(const char* name, WNDPROC procedure, int extraBytes, LPCSTR cursor) {
    const HINSTANCE program = ::GetModuleHandleA(nullptr);
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = procedure;
    windowClass.cbWndExtra = extraBytes;
    windowClass.hInstance = program;
    windowClass.hCursor = ::LoadCursorA(nullptr, cursor);
    windowClass.hIcon = ::LoadIconA(program, MAKEINTRESOURCEA(1));
    windowClass.hbrBackground = ::GetSysColorBrush(COLOR_BTNFACE);
    windowClass.lpszClassName = name;
    ::RegisterClassA(&windowClass);
}

}  // namespace velbooter
