#pragma once
// The virtual screen and its keyboard, as the system below Wine has them.

#include <windows.h>

#include <string>

namespace velbooter::e2e {

/// Makes Wine care for the windows of `program`, the name of a program file, itself: without a window manager
/// it would wait two seconds for one whenever a window goes away. Counts for processes that have shown no
/// window yet.
void LeaveWindowsUnmanaged(const std::string& program);

/// Gives the screen another resolution while it lives, for programs that are started meanwhile.
class ScreenResolution {
 public:
    /// `dpi` is in dots per inch; 96 is the usual.
    explicit ScreenResolution(int dpi);
    ~ScreenResolution();
    ScreenResolution(const ScreenResolution&) = delete;
    ScreenResolution& operator=(const ScreenResolution&) = delete;
};

/// Writes a picture of the whole screen to `unixPath`, whose folder is made. Returns whether it was taken.
bool TakePicture(const std::string& unixPath);

/// Writes a picture of a part of the screen.
bool TakePictureOf(const RECT& part, const std::string& unixPath);

/// Where the picture `name` is kept for a person to look at: in build/screenshots.
std::string ScreenshotPath(const std::string& name);

/// Types `keys`, names of the X server's keys divided by blanks, into the active window of `process`. Returns
/// whether they were typed.
bool TypeKeys(DWORD process, const std::string& keys);

/// Takes the keyboard from `window`, which has it, and leaves it to none. Returns whether the window has lost
/// it.
bool TakeKeyboardAway(HWND window);

/// Clicks the left mouse button at a place of the screen. Returns whether it was clicked.
bool ClickAt(int x, int y);

}  // namespace velbooter::e2e
