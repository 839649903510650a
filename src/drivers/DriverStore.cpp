#include "src/drivers/DriverStore.h"

#include "src/common/Files.h"
#include "src/common/Folders.h"
#include "src/common/INIFile.h"
#include "src/common/Text.h"
#include "src/common/TextFiles.h"
#include "src/run/Waiting.h"

namespace velbooter {

std::optional<std::string> DriverNameOf(const std::string& file) {
    const std::string extension = ".CAB";
    const std::string name = UpperCase(file);
    if (!EndsWith(name, extension)) return std::nullopt;
    return name.substr(0, name.size() - extension.size());
}

bool HasDriverFolder(const ApplicationPaths& paths, const DriverGroup& group) {
    return FolderExists(paths.PathOf(InDrivers(group.Folder)));
}

void ExtractFromDriver(const ApplicationPaths& paths, Desktop& desktop, const std::string& cabinet,
                       const std::string& pattern) {
    ChangeDriveAndFolder(paths.ApplicationFolder);
    const std::string arguments = " -o x " + InDrivers(cabinet) + " " + pattern;
    RunTool(desktop, paths.PathOf("cabarc") + arguments, ToolWindow::Hidden);
}

std::string DriverDescription(const ApplicationPaths& paths, Desktop& desktop, const std::string& folder,
                              const std::string& cabinetFile, const std::string& descriptionFile) {
    constexpr size_t kDescriptionStart = 13;  // after the fixed-width field for the menu
    const std::string extracted = paths.PathOf(descriptionFile);
    if (FileExists(extracted)) DeleteFileAt(extracted);
    ExtractFromDriver(paths, desktop, folder + "\\" + cabinetFile, descriptionFile);
    if (!FileExists(extracted)) return "Description not available (" + UpperCase(folder) + " Driver)";

    std::string description = "The Driver file is corrupted";
    if (const auto line = LineReader(extracted).Next())
        description = line->size() > kDescriptionStart ? Trim(line->substr(kDescriptionStart)) : "";
    DeleteFileAt(extracted);
    return description;
}

}  // namespace velbooter
