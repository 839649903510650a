#pragma once
// The driver selection as plain state: a list of drivers with ticks, and three buttons.

#include <cstdint>

#include "src/forms/Controls.h"
#include "src/forms/ListView.h"

namespace velbooter {

struct FrmDrivers {
    FrmDrivers() {
        LV.FirstColumnTitle = "DriverName";
        LV.SecondColumnTitle = "Description";
    }

    bool Visible = false;
    int Width = 6870;   ///< of the whole window, in twips
    int Height = 4500;  ///< the same

    ListView LV;  ///< Tag is the folder of the group loaded last
    CommandButton CmdOK{"OK"};
    CommandButton CmdCancel{"Cancel"};
    CommandButton CmdSelAll{"Unselect All"};

    bool DriversIniExists = false;  ///< whether Drivers.ini was there when the list was loaded
    std::int16_t LastSortColumn = 0;
    std::int16_t SortColumn = 0;
};

}  // namespace velbooter
