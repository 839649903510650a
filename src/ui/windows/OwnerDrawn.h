#pragma once
// What the wizard draws itself, because the system has no control for it.

#include <windows.h>

namespace velbooter {

/// Draws the wizard's side picture over the whole of the control.
void DrawSideImage(const DRAWITEMSTRUCT& item);

/// Draws the mark of a finished step, a check mark, in the middle of the control when it has a text;
/// otherwise nothing.
void DrawStepMark(const DRAWITEMSTRUCT& item);

}  // namespace velbooter
