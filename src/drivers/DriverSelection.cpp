#include "src/drivers/DriverSelection.h"

#include <algorithm>

#include "src/common/FileSystem.h"
#include "src/common/INIFile.h"
#include "src/common/SetupCommon.h"
#include "src/common/Text.h"
#include "src/disk/DriverIndex.h"
#include "src/drivers/DiskRoom.h"
#include "src/drivers/DriverStore.h"

namespace velbooter {

namespace {

constexpr const char* kNetworkCaption = "NIC";

void LoadGroup(Application& app, const DriverGroup& group, const std::string& caption, bool clearList) {
    CreateIndex(app, group.DescriptionFile, group.PciFile, group.Folder, caption, clearList);
}

void Open(Application& app, void (*load)(Application&)) {
    app.Drivers.Visible = true;
    app.Screen.Repaint();
    load(app);
}

void Hide(Application& app) {
    app.Drivers.Visible = false;
    app.Screen.Repaint();
}

}  // namespace

void CreateIndex(Application& app, const std::string& descFile, const std::string& /*pciFile*/,
                 const std::string& folder, const std::string& caption, bool clearList) {
    FrmDrivers& form = app.Drivers;
    const std::string section = EndsWith(folder, "\\") ? folder.substr(0, folder.size() - 1) : folder;
    if (clearList) form.LV.ListItems.clear();
    form.LV.Tag = section;
    form.LV.Sorted = false;
    form.LV.FirstColumnTitle = caption;
    form.DriversIniExists = FileExists(app.PathOf(kDriverIndexFile));
    const INIFile index(app.PathOf(kDriverIndexFile));

    FolderListing listing(app.PathOf("drivers\\" + section + "\\*.cab"));
    while (const auto entry = listing.Next()) {
        const auto driver = DriverNameOf(entry->Name);
        if (entry->IsFolder || !driver) continue;
        app.Screen.PendingEvents();
        ListItem row;
        row.Text = *driver;
        row.SubItem = DriverDescription(app, section, entry->Name, descFile);
        row.Checked = !form.DriversIniExists || NumericPrefix(index.GetINIKey(section, row.Text)) != 0;
        form.LV.ListItems.push_back(row);
        app.Screen.Repaint();
    }
    form.LV.Sorted = true;
    form.LV.SortKey = 1;
    SortRows(form.LV);
    app.Screen.Repaint();
}

void LoadScsiDrivers(Application& app) {
    LoadGroup(app, kAspiDrivers, kAspiDrivers.Section, true);
}

void LoadNetworkDrivers(Application& app) {
    if (app.Wizard.ChkNDIS.Width != kOdiWidth) {
        LoadGroup(app, kNdisDrivers, kNetworkCaption, true);
        return;
    }
    LoadGroup(app, kOdi16Drivers, kNetworkCaption, true);
    LoadGroup(app, kOdi32Drivers, kNetworkCaption, false);
}

void CmdSelASPI_Click(Application& app) {
    Open(app, LoadScsiDrivers);
}

void CmdSelNDIS_Click(Application& app) {
    Open(app, LoadNetworkDrivers);
}

void CmdOK_Click(Application& app) {
    const ListView& list = app.Drivers.LV;
    const INIFile index(app.PathOf(kDriverIndexFile));
    for (const ListItem& row : list.ListItems) {
        std::string section = list.Tag;
        if (list.Tag == kOdi32Drivers.Folder) {
            const bool is16Bit = FileExists(app.PathOf("drivers\\odi16\\" + row.Text + ".cab"));
            section = is16Bit ? kOdi16Drivers.Section : kOdi32Drivers.Section;
        }
        index.SetINIKey(section, row.Text, row.Checked ? "1" : "0");
    }
    ShowRoom(app);
    Hide(app);
}

void CmdCancelDrivers_Click(Application& app) {
    Hide(app);
}

void CmdSelAll_Click(Application& app) {
    std::string& caption = app.Drivers.CmdSelAll.Caption;
    const bool ticked = caption == "Select All";
    if (ticked) {
        caption = "Unselect All";
    } else if (caption == "Unselect All") {
        caption = "Select All";
    }
    for (ListItem& row : app.Drivers.LV.ListItems) row.Checked = ticked;
}

void DriverColumn_Click(Application& app, std::int16_t column) {
    FrmDrivers& form = app.Drivers;
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

void DriverSelection_Resize(FrmDrivers& form) {
    constexpr int kLeastHeight = 2430;
    constexpr int kLeastWidth = 6870;
    form.Height = std::max(form.Height, kLeastHeight);
    form.LV.Height = form.Height - 1050;
    for (CommandButton* button : {&form.CmdOK, &form.CmdCancel, &form.CmdSelAll})
        button->Top = form.Height - 950;
    form.Width = std::max(form.Width, kLeastWidth);
    form.LV.Width = form.Width - 100;
    form.CmdOK.Left = form.Width - 3150;
    form.CmdCancel.Left = form.Width - 1710;
}

}  // namespace velbooter
