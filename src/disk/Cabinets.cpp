#include "src/disk/Cabinets.h"

#include "src/common/FileSystem.h"
#include "src/common/SetupCommon.h"
#include "src/common/Text.h"
#include "src/disk/ExternalTools.h"

namespace velbooter {

bool PackCabinet(Application& app, const std::string& name, const std::string& sourceFolder,
                 std::string& cabFolder) {
    if (!EndsWith(cabFolder, "\\")) cabFolder += "\\";
    const std::string cabinet = cabFolder + name + ".cab";
    // Nothing is quoted: the archiver takes a prefix that ends in a backslash only unquoted.
    const std::string arguments =
        " -m LZX:21 -p -r -P " + sourceFolder + "\\ n " + cabinet + " " + sourceFolder + "\\*.*";
    std::string folder = app.PathOf(cabFolder);
    CreateFolderPath(folder);
    ChangeDriveAndFolder(app.ApplicationFolder);
    RunTool(app, app.PathOf("cabarc.exe") + arguments, ToolWindow::Hidden);
    if (FileExists(app.PathOf(cabinet))) return true;
    app.Screen.ShowMessage(
        {"The Cabinet " + name + ".cab could not be created \r\n\r\nThe Veltrane Can't Continue !",
         "Error While Copying", Buttons::Ok, Icon::Critical});
    return false;
}

}  // namespace velbooter
