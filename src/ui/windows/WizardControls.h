#pragma once
// The controls of the wizard's frame and pages and the members of FrmWizard that they show, in tables: one
// place tells which control stands for which member.

#include <windows.h>

#include <array>
#include <map>
#include <string>
#include <vector>

#include "src/forms/FrmWizard.h"
#include "src/ui/windows/DiskList.h"
#include "src/ui/windows/WindowHandle.h"

namespace velbooter {

class WizardControls {
 public:
    /// Takes the controls of `frame` and its pages, which must outlive the object's use.
    void Attach(HWND frame, const std::array<HWND, kPageCount>& pages);

    /// Brings the controls in line with `form`; a control that shows its value already is left alone.
    void Show(const FrmWizard& form);

    /// Takes over what the user has entered, ticked and selected.
    void Read(FrmWizard& form) const;

    /// Returns the control with this number; null when there is none.
    HWND Control(int id) const;

 private:
    void ShowFiles(const ListBox& files);
    void ShowProgress(const ProgressBar& progress);
    void ShowStep(int id, const Label& line);

    std::map<int, HWND> controls_;
    DiskList disks_;
    std::vector<std::string> shownFiles_;
    Font normal_;
    Font bold_;
    Font large_;
};

}  // namespace velbooter
