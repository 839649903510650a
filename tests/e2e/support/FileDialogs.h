#pragma once
// The system's dialogs that ask for a file, as the program under test shows them.

#include <windows.h>

#include <string>

#include "tests/e2e/support/ProgramUnderTest.h"

namespace velbooter::e2e {

/// Returns the name in the dialog's box.
std::string FileNameIn(HWND dialog);

/// Writes `path` into the box, clicks Open or Save, and waits until the dialog is gone.
void ChooseFile(ProgramUnderTest& program, HWND dialog, const std::string& path);

/// Clicks Cancel and waits until the dialog is gone.
void CancelFileDialog(ProgramUnderTest& program, HWND dialog);

}  // namespace velbooter::e2e
