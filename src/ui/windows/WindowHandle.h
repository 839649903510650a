#pragma once
// Owning types for windows, menus and drawing objects: std::unique_ptr, as all of them are pointers that are
// null for none. The kernel's handles are in src/common/Handle.h.

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <memory>
#include <type_traits>

namespace velbooter {

/// Gives back what a handle stands for, each type by its own function.
struct HandleDeleter {
    void operator()(HWND window) const { ::DestroyWindow(window); }
    void operator()(HMENU menu) const { ::DestroyMenu(menu); }
    void operator()(HICON icon) const { ::DestroyIcon(icon); }
    void operator()(HIMAGELIST list) const { ::ImageList_Destroy(list); }
    void operator()(HDC context) const { ::DeleteDC(context); }
    void operator()(HFONT font) const { ::DeleteObject(font); }
    void operator()(HPEN pen) const { ::DeleteObject(pen); }
    void operator()(HBITMAP bitmap) const { ::DeleteObject(bitmap); }
};

template <typename Handle>
using Owned = std::unique_ptr<std::remove_pointer_t<Handle>, HandleDeleter>;

/// Owns a top-level window, and with it its children.
using Window = Owned<HWND>;
using Menu = Owned<HMENU>;
using IconHandle = Owned<HICON>;
using ImageList = Owned<HIMAGELIST>;
using Font = Owned<HFONT>;
using Pen = Owned<HPEN>;
using Bitmap = Owned<HBITMAP>;

/// Owns a drawing context that was created, not borrowed from a window.
using CreatedContext = Owned<HDC>;

/// The drawing context of a window, or of the screen when `window` is null; given back at the end.
class WindowContext {
 public:
    explicit WindowContext(HWND window) : window_(window), context_(::GetDC(window)) {}
    ~WindowContext() { ::ReleaseDC(window_, context_); }
    WindowContext(const WindowContext&) = delete;
    WindowContext& operator=(const WindowContext&) = delete;

    HDC get() const { return context_; }

 private:
    HWND window_;
    HDC context_;
};

/// Selects `object` into `context` as long as it lives, then the former object again. It must be destroyed
/// before both.
class SelectedObject {
 public:
    SelectedObject(HDC context, HGDIOBJ object)
        : context_(context), former_(::SelectObject(context, object)) {}
    ~SelectedObject() { ::SelectObject(context_, former_); }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

 private:
    HDC context_;
    HGDIOBJ former_;
};

}  // namespace velbooter
