#include "src/drivers/DriverStore.h"

#include "src/common/FileSystem.h"
#include "src/common/INIFile.h"
#include "src/common/LineReader.h"
#include "src/common/SetupCommon.h"
#include "src/common/Text.h"
#include "src/disk/DriverIndex.h"
#include "src/disk/ExternalTools.h"

namespace velbooter {

bool HasDriverFolder(const Application& app, const DriverGroup& group) {
    return FolderExists(app.PathOf(std::string("drivers\\") + group.Folder));
}

void RenewDriverIndex(Application& app) {
    const std::string index = app.PathOf(kDriverIndexFile);
    DeleteIfThere(index);
    for (const DriverGroup& group : kDriverGroups) {
        if (HasDriverFolder(app, group)) IndexDriverGroup(app, kDriverIndexFile, group.Section, 1);
    }
    if (!FileExists(index)) MakeEmptyFile(index);
}

void GetDefaultDriversOptions(Application& app, const std::string& diskFile, const std::string& group) {
    const INIFile index(app.PathOf(kDriverIndexFile));
    bool inDefaults = false;
    LineReader file(app.PathOf("files\\" + diskFile));
    while (const auto line = file.Next()) {
        if (line->empty() || line->front() == ';') continue;
        if (*line == "[DefaultDrivers]") {
            inDefaults = true;
            IndexDriverGroup(app, kDriverIndexFile, group, 0);
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

void ExtractFromDriver(Application& app, const std::string& cabinet, const std::string& pattern) {
    ChangeDriveAndFolder(app.ApplicationFolder);
    RunTool(app, app.PathOf("cabarc -o x drivers\\" + cabinet + " " + pattern), ToolWindow::Hidden);
}

std::string DriverDescription(Application& app, const std::string& folder, const std::string& cabinetFile,
                              const std::string& descriptionFile) {
    constexpr size_t kDescriptionStart = 13;  // behind the menu's field of fixed width
    const std::string extracted = app.PathOf(descriptionFile);
    if (FileExists(extracted)) DeleteFileAt(extracted);
    ExtractFromDriver(app, folder + "\\" + cabinetFile, descriptionFile);
    if (!FileExists(extracted)) return "Description not available (" + UpperCase(folder) + " Driver)";

    std::string description = "The Driver file is corrupted";
    if (const auto line = LineReader(extracted).Next())
        description = line->size() > kDescriptionStart ? Trim(line->substr(kDescriptionStart)) : "";
    DeleteFileAt(extracted);
    return description;
}

}  // namespace velbooter
