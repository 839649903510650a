#pragma once
// How the tests use several kinds of windows of the program: messages with an answer, rows of list views,
// clicks.

#include <windows.h>

#include <string>

#include "tests/e2e/spy/SpyProtocol.h"

namespace velbooter::e2e {

/// Sends a message and returns the answer; `pointer` is the last parameter. Throws HarnessFailure when the
/// window does not answer.
LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, const void* pointer = nullptr);

/// The text of a row of the list view `list`; row and column are 0-based.
std::string ItemText(HWND list, int row, int column);

/// The title of a column of the header `header`; the column is 0-based.
std::string TitleOf(HWND header, int column);

/// Where a row of the list view `list` is in it, in pixels. `part` is one of the system's numbers
/// (LVIR_...).
RECT ItemPlace(HWND list, int row, int part);

/// The width that `text` takes in the list view `list`, in pixels.
int TextWidthIn(HWND list, const std::string& text);

/// The size that a button needs for its caption, in pixels.
SIZE IdealSizeOfButton(HWND button);

/// The size that the text of a control takes in its font, in pixels. The spy must be in its thread.
SIZE TextSizeOf(HWND control, TextLook look);

/// Clicks the left mouse button at a place of `control`, and returns at once.
void ClickInside(HWND control, POINT place);

/// The middle of `place`.
POINT MiddleOf(const RECT& place);

/// The control of the window's thread that has the focus, or null.
HWND FocusOfThreadOf(HWND window);

}  // namespace velbooter::e2e
