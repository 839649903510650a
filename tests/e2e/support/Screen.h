#pragma once
// The virtual screen and its keyboard in the system below Wine.

#include <windows.h>

#include <string>

namespace velbooter::e2e {

/// Makes Wine itself manage the windows of `program`, the name of a program file: it would wait two seconds
/// for a window manager, of which there is none, whenever a window closes. Applies to processes that have
/// not shown a window yet.
void LeaveWindowsUnmanaged(const std::string& program);

/// Gives the screen another resolution as long as it lives, for programs that are started meanwhile.
class ScreenResolution {
 public:
    /// `dpi` is in dots per inch; 96 is usual.
    explicit ScreenResolution(int dpi);
    ~ScreenResolution();
    ScreenResolution(const ScreenResolution&) = delete;
    ScreenResolution& operator=(const ScreenResolution&) = delete;
};

/// Writes a picture of the whole screen to `unixPath`, whose folder is created. Returns whether that worked.
bool TakePicture(const std::string& unixPath);

/// Writes a picture of a part of the screen (pixels) in the same way.
bool TakePictureOf(const RECT& part, const std::string& unixPath);

/// Returns where the picture `name` is kept for people to look at: in build/screenshots.
std::string ScreenshotPath(const std::string& name);

/// Types `keys`, the X server's names of keys separated by spaces, into the active window of `process`.
/// Returns whether they were typed.
bool TypeKeys(DWORD process, const std::string& keys);

/// Takes the keyboard from `window`, which has it, without giving it to another one. Returns whether the
/// window has lost it.
bool TakeKeyboardAway(HWND window);

/// Clicks the left mouse button at a place of the screen (pixels). Returns whether it was clicked.
bool ClickAt(int x, int y);

}  // namespace velbooter::e2e
