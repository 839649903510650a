#pragma once
// Sizes on this screen, and the place of a window. The program uses one resolution, that of the primary
// screen at its start: on a screen with another one the system scales its windows.

#include "src/ui/windows/WindowHandle.h"

namespace velbooter {

/// Returns the resolution of the screen in dots per inch.
int ScreenDpi();

/// Returns what `pixels`, given for 96 dots per inch, are in pixels of this screen.
int ScaledPixels(int pixels);

/// Convert between twips (1440 to the inch) and the pixels of this screen, rounded to the nearest whole
/// number.
int PixelsFromTwips(int twips);
int TwipsFromPixels(int pixels);

/// Returns the font of the wizard's templates (8 points) in the size of this screen, for the windows that
/// have no template. The font of the system's messages would not do: a setting of the user's can make it too
/// large for controls of a fixed size.
Font DialogFont();

/// Returns the upper left corner for a window of `size` (pixels) in the middle of `owner`, or of the primary
/// screen when that is null, within the part of that screen that the task bar leaves. Of a window that is
/// too large the upper left part stays visible.
POINT CenteredPlace(SIZE size, HWND owner);

}  // namespace velbooter
