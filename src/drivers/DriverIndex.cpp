#include "src/drivers/DriverIndex.h"

#include "src/common/Files.h"
#include "src/common/Folders.h"
#include "src/common/INIFile.h"
#include "src/common/Text.h"

namespace velbooter {

namespace {

// Only these exact lines are headers. The keys after any other line that begins with "[" still belong to the
// previous group.
const DriverGroup* GroupOfHeader(const std::string& line) {
    for (const DriverGroup& group : kDriverGroups) {
        if (line == std::string("[") + group.Section + "]") return &group;
    }
    return nullptr;
}

}  // namespace

bool IsGroupEnabled(const FrmWizard& wizard, const DriverGroup& group) {
    const std::string section = group.Section;
    if (section == kAspiDrivers.Section) return wizard.ChkASPI.Value != 0;
    const NetworkMode mode = section == kNdisDrivers.Section ? NetworkMode::Ndis : NetworkMode::Odi;
    return wizard.ChkNDIS.Value != 0 && wizard.Network == mode;
}

void IndexDriverGroup(const ApplicationPaths& paths, Desktop& desktop, const std::string& indexFile,
                      const std::string& group, int value) {
    const std::string section = EndsWith(group, "\\") ? group.substr(0, group.size() - 1) : group;
    const std::string folder = paths.PathOf(InDrivers(section + "\\"));
    const INIFile index(paths.PathOf(indexFile));
    FolderListing listing(folder + "*.cab");
    while (const auto entry = listing.Next()) {
        const auto driver = DriverNameOf(entry->Name);
        if (entry->IsFolder || !driver) continue;
        desktop.PendingEvents();
        index.SetINIKey(section, *driver, std::to_string(value));
    }
}

void RenewDriverIndex(const ApplicationPaths& paths, Desktop& desktop) {
    const std::string index = paths.PathOf(kDriverIndexFile);
    DeleteIfThere(index);
    for (const DriverGroup& group : kDriverGroups) {
        if (HasDriverFolder(paths, group))
            IndexDriverGroup(paths, desktop, kDriverIndexFile, group.Section, 1);
    }
    if (!FileExists(index)) MakeEmptyFile(index);
}

void GetDefaultDriversOptions(const ApplicationPaths& paths, Desktop& desktop, const std::string& diskFile,
                              const std::string& group) {
    const INIFile index(paths.PathOf(kDriverIndexFile));
    bool inDefaults = false;
    LineReader file(paths.PathOf(InFiles(diskFile)));
    while (const auto line = file.Next()) {
        if (line->empty() || line->front() == ';') continue;
        if (*line == "[DefaultDrivers]") {
            inDefaults = true;
            IndexDriverGroup(paths, desktop, kDriverIndexFile, group, 0);
            continue;
        }
        if (line->front() == '[') inDefaults = false;
        if (!inDefaults) continue;
        const std::vector<std::string> parts = Split(*line, '\\');
        if (parts.size() < 2 || UpperCase(Trim(parts[0])) != group) continue;
        const std::string driver = UpperCase(Trim(parts[1]));
        index.SetINIKey(group, Trim(driver.substr(0, driver.find(".CAB"))), "1");
    }
}

ChosenDrivers::ChosenDrivers(const ApplicationPaths& paths, const FrmWizard& wizard)
    : wizard_(wizard), file_(paths.PathOf(kDriverIndexFile)) {}

std::optional<std::string> ChosenDrivers::Next() {
    const auto line = file_.Next();
    if (!line) return std::nullopt;
    if (line->empty() || line->front() == ';') return "";
    if (const DriverGroup* group = GroupOfHeader(*line)) {
        folder_ = IsGroupEnabled(wizard_, *group) ? group->Folder : "";
        return "";
    }
    const std::vector<std::string> parts = Split(*line, '=');
    if (parts.size() < 2 || folder_.empty() || NumericPrefix(parts[1]) == 0) return "";
    return folder_ + "\\" + LowerCase(parts[0]) + ".cab";
}

std::int32_t CountSectionLines(const std::string& fileName, const std::string& section, bool useSuffix,
                               const std::string& suffix) {
    const std::string header = "[" + section + "]";
    bool inSection = false;
    std::int32_t count = 0;
    LineReader file(fileName);
    while (const auto line = file.Next()) {
        if (line->starts_with("[")) inSection = *line == header;
        if (!inSection || line->empty() || line->front() == ';') continue;
        if (!useSuffix || EndsWith(*line, suffix)) ++count;
    }
    return count;
}

std::int32_t CountFileLines(const std::string& fileName) {
    std::int32_t count = 0;
    LineReader file(fileName);
    while (file.Next()) ++count;
    return count;
}

}  // namespace velbooter
