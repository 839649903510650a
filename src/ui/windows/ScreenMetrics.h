#pragma once
// How large things are on this screen, and where a window goes. The whole screen has one resolution: the
// system scales the program itself when it is moved to a screen with another one.

#include "src/ui/windows/WindowHandle.h"

namespace velbooter {

/// Returns the resolution of the screen in dots per inch.
int ScreenDpi();

/// Returns the pixels that `pixels` at 96 dots per inch are on this screen.
int ScaledPixels(int pixels);

/// Convert between twips (1440 to the inch) and the pixels of this screen, to the nearest whole number.
int PixelsFromTwips(int twips);
int TwipsFromPixels(int pixels);

/// Returns the font of the wizard's templates, as large as this screen needs it: all windows have one. That
/// of the system's messages grows with a setting of its own, out of boxes whose sizes are given.
Font DialogFont();

/// Returns where a window of `size` (pixels) has its left upper corner: in the middle of `owner`, or of the
/// screen when that is null, and within the part of the owner's screen that the task bar leaves.
POINT CenteredPlace(SIZE size, HWND owner);

}  // namespace velbooter
