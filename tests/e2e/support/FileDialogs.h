#pragma once
// The system's dialogs that ask for a file, as the program under test shows them.

#include <windows.h>

#include <string>

#include "tests/e2e/support/ProgramUnderTest.h"

namespace velbooter::e2e {

/// The name that stands in the dialog's box.
std::string FileNameIn(HWND dialog);

/// Writes `path` into the box, presses the button that takes it, and waits until the dialog is gone.
void ChooseFile(ProgramUnderTest& program, HWND dialog, const std::string& path);

/// Presses Cancel and waits until the dialog is gone.
void CancelFileDialog(ProgramUnderTest& program, HWND dialog);

}  // namespace velbooter::e2e
