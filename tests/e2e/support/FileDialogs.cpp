#include "tests/e2e/support/FileDialogs.h"

#include "tests/e2e/support/HarnessFailure.h"
#include "tests/e2e/support/RemoteControls.h"
#include "tests/e2e/support/WindowTree.h"

namespace velbooter::e2e {

namespace {

// Windows and Wine number the box differently.
HWND NameBox(HWND dialog) {
    for (const int id : {1148, 1152}) {
        if (const HWND box = ::GetDlgItem(dialog, id)) return box;
    }
    throw HarnessFailure("the file dialog has no box for a name");
}

}  // namespace

std::string FileNameIn(HWND dialog) {
    return TextOf(NameBox(dialog));
}

void ChooseFile(ProgramUnderTest& program, HWND dialog, const std::string& path) {
    Ask(NameBox(dialog), WM_SETTEXT, 0, path.c_str());
    ::PostMessageA(dialog, WM_COMMAND, IDOK, 0);
    program.WaitUntilGone(dialog);
}

void CancelFileDialog(ProgramUnderTest& program, HWND dialog) {
    ::PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    program.WaitUntilGone(dialog);
}

}  // namespace velbooter::e2e
