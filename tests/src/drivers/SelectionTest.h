#pragma once
// The fixture of the tests of the driver selection, which describes its list as text.

#include <stdexcept>
#include <string>
#include <vector>

#include "src/drivers/DriverSelection.h"
#include "tests/src/drivers/DriverFolder.h"

namespace velbooter::testing {

class SelectionTest : public DriversTest {
 protected:
    void ChooseOdi() { SetNetworkMode(App.Wizard, NetworkMode::Odi); }
    void LoadNdis() {
        CreateIndex(App.Paths, App.Screen, App.Drivers, "ndis.txt", "ndis.pci", "ndis", "NIC", true);
    }

    ListView& List() { return App.Drivers.LV; }
    /// The rows as displayed: a tick, the name, and the description if it is wanted.
    std::vector<std::string> Rows(bool withDescriptions = false) const {
        std::vector<std::string> rows;
        for (const ListItem& row : App.Drivers.LV.ListItems) {
            rows.push_back((row.Checked ? "+" : "-") + row.Text +
                           (withDescriptions ? ": " + row.SubItem : ""));
        }
        return rows;
    }
    ListItem& Row(const std::string& name) {
        for (ListItem& row : List().ListItems) {
            if (row.Text == name) return row;
        }
        throw std::runtime_error("there is no row " + name);
    }
    void AddRow(const std::string& name, const std::string& description, bool checked) {
        ListItem row;
        row.Text = name;
        row.SubItem = description;
        row.Checked = checked;
        List().ListItems.push_back(row);
    }
};

}  // namespace velbooter::testing
