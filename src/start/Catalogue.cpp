#include "src/start/Catalogue.h"

#include <cmath>

#include "src/common/INIFile.h"
#include "src/common/RuntimeError.h"
#include "src/common/Text.h"

namespace velbooter {

namespace {

constexpr double kLastSmallPicture = 8;
// With the custom row before them, the last row number still fits in 16 bits.
constexpr int kMostDisks = 32766;

// An index above the last picture shows the first one. All others are passed on unchanged.
int SmallPicture(double icon) {
    constexpr double kLowest = -32768;
    if (std::nearbyint(icon) > kLastSmallPicture) return 1;
    return static_cast<int>(std::nearbyint(std::fmax(icon, kLowest)));
}

}  // namespace

void Fill_DiskList(Application& app) {
    std::vector<ListItem>& rows = app.Wizard.LV_Disk.ListItems;
    rows.clear();
    rows.push_back({"Custom, load default configuration", "custom", 1, 1});
    const INIFile catalogue(app.Paths.PathOf(kCatalogueFile));
    const int count = WholeNumber(catalogue.GetINIKey("Disks_List", "Count"), catalogue.FileName);
    if (count > kMostDisks) throw RuntimeError(kOverflow, catalogue.FileName);
    for (int i = 1; i <= count; ++i) {
        const std::string section = std::to_string(i);
        const auto read = [&](const char* key) { return TrimAtNul(catalogue.GetINIKey(section, key)); };
        const double icon = NumericPrefix(read("Icon"));
        rows.push_back({read("Desc"), read("Name"), icon, SmallPicture(icon)});
    }
    rows.front().Selected = true;
}

std::int16_t FindDisk(const FrmWizard& wizard, const std::string& name) {
    const auto& rows = wizard.LV_Disk.ListItems;
    std::int16_t found = 0;
    for (size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].SubItem == name) found = static_cast<std::int16_t>(i + 1);
    }
    return found;
}

DiskEntry ChosenDisk(const Application& app) {
    const int number = app.SelectedDiskIndex - 1;
    const INIFile catalogue(app.Paths.PathOf(kCatalogueFile));
    const std::string section = std::to_string(number);
    const auto isSet = [&](const char* key) { return NumericPrefix(catalogue.GetINIKey(section, key)) != 0; };
    return {app.Wizard.LV_Disk.ListItems.at(static_cast<size_t>(number)).SubItem,
            TrimAtNul(catalogue.GetINIKey(section, "file")), isSet("aspi"), isSet("ndis"), isSet("netw")};
}

}  // namespace velbooter
