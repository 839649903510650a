#pragma once
// The list of disks on the wizard's second page: a report of the catalogue with a picture for each disk.

#include "src/ui/windows/ReportList.h"
#include "src/ui/windows/WindowHandle.h"

namespace velbooter {

class DiskList : public ReportList {
 public:
    /// Takes the list view `list`, which must outlive the object's use, and gives it columns and pictures.
    /// The pictures stay this object's: the list has to have the style LVS_SHAREIMAGELISTS.
    void Attach(HWND list);

    /// Brings the list in line with `form`.
    void Show(const ListView& form);

 private:
    ImageList pictures_;
};

}  // namespace velbooter
