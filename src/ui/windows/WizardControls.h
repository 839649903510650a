#pragma once
// The controls of the wizard's frame and pages and the members of FrmWizard that they show, in tables: one
// place tells which control stands for which member.

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

class WizardControls {
 public:
    /// Takes the controls of `frame` and its pages, which must outlive the object's use. `failure` gets what
    /// a control's procedure throws.
    void Attach(HWND frame, const std::array<HWND, kPageCount>& pages, CaughtFailure& failure);

    /// Brings the controls in line with `form`; a control that shows its value already is left alone, and so
    /// is the list of a page that does not stand.
    void Show(const FrmWizard& form);

    /// Takes over what the user has entered and ticked, and what is selected in the list of the page that
    /// stands.
    void Read(FrmWizard& form);

    /// Returns whether the control is an option that `form` has chosen already. A press on it changes
    /// nothing: the system presses one whenever it gets the focus.
    static bool IsChosen(int id, const FrmWizard& form);

    /// Prepares `context` for a label that warns. Returns the brush behind it, which is the system's; null
    /// for any other label.
    HBRUSH ColorLabel(HDC context, HWND label) const;

    /// Hands on that the system has other colours, which it tells only the windows that stand by themselves.
    void TellOfNewColors() const;

    /// Returns the control with this number; null when there is none.
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
