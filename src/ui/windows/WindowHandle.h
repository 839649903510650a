#pragma once
// Owning types for windows, menus and drawing objects.

#include <windows.h>

#include <memory>
#include <type_traits>

namespace velbooter {

struct WindowDeleter {
    using pointer = HWND;
    void operator()(HWND window) const { ::DestroyWindow(window); }
};

struct FontDeleter {
    using pointer = HFONT;
    void operator()(HFONT font) const { ::DeleteObject(font); }
};

struct MenuDeleter {
    using pointer = HMENU;
    void operator()(HMENU menu) const { ::DestroyMenu(menu); }
};

/// Owns a top-level window, and with it its children.
using Window = std::unique_ptr<std::remove_pointer_t<HWND>, WindowDeleter>;
using Menu = std::unique_ptr<std::remove_pointer_t<HMENU>, MenuDeleter>;
using Font = std::unique_ptr<std::remove_pointer_t<HFONT>, FontDeleter>;

}  // namespace velbooter
