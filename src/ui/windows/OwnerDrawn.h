#pragma once
// What the wizard draws itself, because the system has no control for it.

#include <windows.h>

namespace velbooter {

/// Draws the wizard's side picture over the whole control (WM_DRAWITEM): the smallest of the pictures that
/// covers it, cut at the edges, or the largest one stretched.
void DrawSideImage(const DRAWITEMSTRUCT& item);

/// Draws the check mark of a finished step when the control has a text, else only its background.
void DrawStepMark(const DRAWITEMSTRUCT& item);

}  // namespace velbooter
