#include "src/disk/contents/Cabinets.h"

#include "src/common/Files.h"
#include "src/common/Folders.h"
#include "src/common/Text.h"
#include "src/run/Waiting.h"

namespace velbooter {

bool PackCabinet(const ApplicationPaths& paths, Desktop& desktop, const std::string& name,
                 const std::string& sourceFolder, std::string& cabFolder) {
    if (!EndsWith(cabFolder, "\\")) cabFolder += "\\";
    const std::string cabinet = cabFolder + name + ".cab";
    // Nothing is quoted: the archiver accepts a prefix that ends in a backslash only unquoted.
    const std::string arguments =
        " -m LZX:21 -p -r -P " + sourceFolder + "\\ n " + cabinet + " " + sourceFolder + "\\*.*";
    std::string folder = paths.PathOf(cabFolder);
    CreateFolderPath(folder);
    ChangeDriveAndFolder(paths.ApplicationFolder);
    RunTool(desktop, paths.PathOf("cabarc.exe") + arguments, ToolWindow::Hidden);
    if (FileExists(paths.PathOf(cabinet))) return true;
    desktop.ShowMessage(
        {"The Cabinet " + name + ".cab could not be created \r\n\r\nThe Veltrane Can't Continue !",
         "Error While Copying", Buttons::Ok, Icon::Critical});
    return false;
}

}  // namespace velbooter
