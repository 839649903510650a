#include "src/start/Catalogue.h"

#include <cmath>

#include "src/common/INIFile.h"
#include "src/common/RuntimeError.h"
#include "src/common/SetupCommon.h"
#include "src/common/Text.h"

namespace velbooter {

namespace {

constexpr double kLastSmallPicture = 8;
// With the custom row before them the number of a row still fits 16 bits.
constexpr int kMostDisks = 32766;

// The list's guard: an index above the last picture shows the first. Lower ones are passed on as they are.
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
    const INIFile catalogue(app.PathOf("files\\disklist.ini"));
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

}  // namespace velbooter
