#pragma once
// The wizard as a user sees and uses it, from outside the program: which page is visible, what its controls
// show, and the clicks that a user could make. Controls are named by their numbers (WizardIds.h).

#include <windows.h>

#include <map>
#include <string>
#include <vector>

#include "src/forms/Forms.h"
#include "src/ui/windows/WizardIds.h"
#include "tests/e2e/support/ProgramUnderTest.h"

namespace velbooter::e2e {

class ShownWizard {
 public:
    /// Waits for the wizard of `program`, which must live longer, and for its page `page`.
    explicit ShownWizard(ProgramUnderTest& program, int page = kWelcomePage);

    HWND Handle() const { return window_; }

    /// The visible page; -1 when there is none or more than one.
    int Page() const;

    /// Waits until only `page` is visible and the program waits for input.
    void WaitForPage(int page) const;

    /// The window of a page, visible or not.
    HWND PageWindow(int page) const;

    /// A control of the frame or of any page. Throws HarnessFailure when there is none.
    HWND Control(int id) const;

    /// Whether a user can see the control, and whether it would accept a click.
    bool Shows(int id) const;
    bool Takes(int id) const;

    std::string Text(int id) const;
    bool IsTicked(int id) const;

    /// The numbers of the visible buttons below the pages that accept a click, from left to right.
    std::vector<int> Buttons() const;

    /// Clicks a control and returns at once. Throws HarnessFailure when a user could not click it.
    void Click(int id) const;

    /// Clicks Next or Back and waits for the page that it leads to.
    void Next(int page) const;
    void Back(int page) const;

    /// Clicks Next on one page after another until `page` is visible.
    void GoTo(int page) const;

    /// Presses the mouse button on a control, whether or not it accepts a click, and returns at once.
    void PressMouseOn(int id) const;

    /// Writes into a text box.
    void Enter(int id, const std::string& text) const;

    /// The disks of the list by their second column, and the row that is selected; -1 for none.
    std::vector<std::string> Disks() const;
    int SelectedDisk() const;

    /// Selects the disk whose second column is `name`. Throws HarnessFailure when there is none.
    void SelectDisk(const std::string& name) const;

    /// The rows of the list of files that are selected, and all rows.
    std::vector<std::string> SelectedFiles() const;
    std::vector<std::string> Files() const;

    /// Clicks a row of the list of files.
    void ClickFile(const std::string& file) const;

    /// The number of the control with the focus; 0 when no control of this window has it.
    int Focus() const;

    /// Asks the window to close, as its close button does, and returns at once.
    void Close() const;

 private:
    ProgramUnderTest& program_;
    HWND window_ = nullptr;
    std::vector<HWND> pages_;
    std::map<int, HWND> controls_;  ///< by their numbers
};

}  // namespace velbooter::e2e
