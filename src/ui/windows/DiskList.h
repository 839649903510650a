#pragma once
// The list of disks on the wizard's second page: a report of the catalogue with a picture for each disk.

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <memory>
#include <string>
#include <vector>

#include "src/forms/ListView.h"

namespace velbooter {

struct ImageListDeleter {
    using pointer = HIMAGELIST;
    void operator()(HIMAGELIST list) const { ::ImageList_Destroy(list); }
};

class DiskList {
 public:
    /// Takes the list view `list`, which must outlive the object's use, and gives it columns and pictures.
    /// The pictures stay this object's: the list has to have the style LVS_SHAREIMAGELISTS.
    void Attach(HWND list);

    /// Brings the list in line with `form`.
    void Show(const ListView& form);

    /// Takes over which rows are selected.
    void Read(ListView& form) const;

 private:
    void ShowRows(const std::vector<ListItem>& rows);
    void FitColumns(const std::string& nameTitle);
    int FitColumn(int column);

    HWND list_ = nullptr;
    std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, ImageListDeleter> pictures_;
    std::vector<ListItem> shown_;
};

}  // namespace velbooter
