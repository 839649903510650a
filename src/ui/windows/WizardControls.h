#pragma once
// The controls of the wizard's frame and pages and the members of FrmWizard that they show. Tables in the
// .cpp are the one place that connects a control with its member.

#include <windows.h>

#include <array>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "src/forms/Forms.h"
#include "src/ui/windows/DiskList.h"
#include "src/ui/windows/ProductKeyBoxes.h"
#include "src/ui/windows/WindowHandle.h"

namespace velbooter {

/// Attach comes first, once; then Show and Read copy between the form and the controls, in one direction
/// each.
class WizardControls {
 public:
    /// Takes the controls of `frame` and its pages, which must exist as long as the object is used.
    /// `failure` gets what a control's procedure throws and must outlive them.
    void Attach(HWND frame, const std::array<HWND, kPageCount>& pages, CaughtFailure& failure);

    /// Brings the controls in line with `form`; a control that shows its value already is left alone, and so
    /// is the list of a page that is not visible.
    void Show(const FrmWizard& form);

    /// Copies into `form` what the user has entered and ticked, and what is selected in the list of the
    /// visible page.
    void Read(FrmWizard& form);

    /// Returns whether the control is an option button that `form` has chosen already. Its click must be
    /// ignored, because the system clicks an option whenever it gets the focus.
    static bool IsChosen(int id, const FrmWizard& form);

    /// Sets the colours of `context` for a label that warns (WM_CTLCOLORSTATIC). Returns the brush for its
    /// background, which the system owns; null for any other label, and in a high-contrast theme.
    HBRUSH ColorLabel(HDC context, HWND label) const;

    /// Passes on WM_SYSCOLORCHANGE, which the system sends to top-level windows only.
    void ForwardColorChange() const;

    /// Returns the control with the number `id` (WizardIds.h); null when there is none.
    HWND Control(int id) const;

 private:
    void ShowLabel(int id, const Label& label);
    void ShowFiles(const ListBox& files);
    void ShowProgress(const ProgressBar& progress);
    void ShowLink(int id, const Label& link);
    void ShowStep(int id, const Label& line);

    std::map<int, HWND> controls_;
    std::set<HWND> warnings_;  // labels that are shown in the colour of warnings
    DiskList disks_;
    ProductKeyBoxes productKey_;
    std::map<int, std::string> shownLinks_;
    std::vector<std::string> shownFiles_;
    Font normal_;
    Font bold_;
    Font large_;
};

}  // namespace velbooter
