#include "src/drivers/ChosenDrivers.h"

#include "src/common/Text.h"
#include "src/drivers/DriverStore.h"

namespace velbooter {

namespace {

bool IsSwitchedOn(const FrmWizard& wizard, const DriverGroup& group) {
    const std::string section = group.Section;
    if (section == kAspiDrivers.Section) return wizard.ChkASPI.Value != 0;
    const int width = section == kNdisDrivers.Section ? kNdisWidth : kOdiWidth;
    return wizard.ChkNDIS.Value != 0 && wizard.ChkNDIS.Width == width;
}

// Headers count only when they are written exactly so; any other line that begins with "[" is no header, and
// the keys behind it still belong to the group before it.
const DriverGroup* GroupOfHeader(const std::string& line) {
    for (const DriverGroup& group : kDriverGroups) {
        if (line == std::string("[") + group.Section + "]") return &group;
    }
    return nullptr;
}

}  // namespace

ChosenDrivers::ChosenDrivers(const Application& app) : app_(app), file_(app.PathOf(kDriverIndexFile)) {}

std::optional<std::string> ChosenDrivers::Next() {
    const auto line = file_.Next();
    if (!line) return std::nullopt;
    if (line->empty() || line->front() == ';') return "";
    if (const DriverGroup* group = GroupOfHeader(*line)) {
        folder_ = IsSwitchedOn(app_.Wizard, *group) ? group->Folder : "";
        return "";
    }
    const std::vector<std::string> parts = Split(*line, '=');
    if (parts.size() < 2 || folder_.empty() || NumericPrefix(parts[1]) == 0) return "";
    return folder_ + "\\" + LowerCase(parts[0]) + ".cab";
}

}  // namespace velbooter
