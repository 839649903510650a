#include "src/drivers/DriverSelection.h"

#include "src/common/Files.h"
#include "src/common/Folders.h"
#include "src/common/INIFile.h"
#include "src/common/Text.h"
#include "src/drivers/DriverIndex.h"
#include "src/drivers/DriverStore.h"

namespace velbooter {

namespace {

constexpr const char* kNetworkCaption = "NIC";

void LoadGroup(const ApplicationPaths& paths, Desktop& desktop, FrmDrivers& form, const DriverGroup& group,
               const std::string& caption, bool clearList) {
    CreateIndex(paths, desktop, form, group.DescriptionFile, group.PciFile, group.Folder, caption, clearList);
}

}  // namespace

void CreateIndex(const ApplicationPaths& paths, Desktop& desktop, FrmDrivers& form,
                 const std::string& descFile, const std::string& /*pciFile*/, const std::string& folder,
                 const std::string& caption, bool clearList) {
    const std::string section = EndsWith(folder, "\\") ? folder.substr(0, folder.size() - 1) : folder;
    if (clearList) form.LV.ListItems.clear();
    form.LV.Tag = section;
    form.LV.Sorted = false;
    form.LV.FirstColumnTitle = caption;
    form.DriversIniExists = FileExists(paths.PathOf(kDriverIndexFile));
    const INIFile index(paths.PathOf(kDriverIndexFile));

    FolderListing listing(paths.PathOf(InDrivers(section + "\\*.cab")));
    while (const auto entry = listing.Next()) {
        const auto driver = DriverNameOf(entry->Name);
        if (entry->IsFolder || !driver) continue;
        desktop.PendingEvents();
        ListItem row;
        row.Text = *driver;
        row.SubItem = DriverDescription(paths, desktop, section, entry->Name, descFile);
        row.Checked = !form.DriversIniExists || NumericPrefix(index.GetINIKey(section, row.Text)) != 0;
        form.LV.ListItems.push_back(row);
        desktop.Repaint();
    }
    form.LV.Sorted = true;
    form.LV.SortKey = 1;
    SortRows(form.LV);
    desktop.Repaint();
}

void LoadScsiDrivers(const ApplicationPaths& paths, Desktop& desktop, FrmDrivers& form) {
    LoadGroup(paths, desktop, form, kAspiDrivers, kAspiDrivers.Section, true);
}

void LoadNetworkDrivers(const ApplicationPaths& paths, Desktop& desktop, FrmDrivers& form, NetworkMode mode) {
    if (mode == NetworkMode::Ndis) {
        LoadGroup(paths, desktop, form, kNdisDrivers, kNetworkCaption, true);
        return;
    }
    LoadGroup(paths, desktop, form, kOdi16Drivers, kNetworkCaption, true);
    LoadGroup(paths, desktop, form, kOdi32Drivers, kNetworkCaption, false);
}

void StoreTicks(const ApplicationPaths& paths, const ListView& list) {
    const INIFile index(paths.PathOf(kDriverIndexFile));
    for (const ListItem& row : list.ListItems) {
        std::string section = list.Tag;
        if (list.Tag == kOdi32Drivers.Folder) {
            const bool is16Bit = FileExists(
                paths.PathOf(InDrivers(std::string(kOdi16Drivers.Folder) + "\\" + row.Text + ".cab")));
            section = is16Bit ? kOdi16Drivers.Section : kOdi32Drivers.Section;
        }
        index.SetINIKey(section, row.Text, row.Checked ? "1" : "0");
    }
}

void TickOrUntickAll(FrmDrivers& form) {
    SetAllTicked(form, !form.AllTicked);
    for (ListItem& row : form.LV.ListItems) row.Checked = form.AllTicked;
}

void SortByColumn(FrmDrivers& form, std::int16_t column) {
    form.LV.Sorted = true;
    form.SortColumn = column;
    if (form.SortColumn == form.LastSortColumn) {
        const bool descends = form.LV.Order == SortOrder::Descending;
        form.LV.Order = descends ? SortOrder::Ascending : SortOrder::Descending;
    }
    form.LV.SortKey = form.SortColumn;
    form.LastSortColumn = form.SortColumn;
    SortRows(form.LV);
}

}  // namespace velbooter
