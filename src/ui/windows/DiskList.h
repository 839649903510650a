#pragma once
// The list of disks on the wizard's second page: a list view in report style with a picture for each disk of
// the catalogue.

#include "src/ui/windows/ReportList.h"
#include "src/ui/windows/WindowHandle.h"

namespace velbooter {

/// Attach comes first, once. Unlike CheckList it does not create its control, which the dialog template has.
class DiskList : public ReportList {
 public:
    /// Takes the list view `list`, which must exist as long as the object is used, and gives it columns and
    /// pictures. This object owns the pictures, so the list must have the style LVS_SHAREIMAGELISTS.
    void Attach(HWND list);

    /// Brings titles, rows and selection in line with `form`, and fits the columns when the rows have
    /// changed.
    void Show(const ListView& form);

 private:
    ImageList pictures_;
};

}  // namespace velbooter
