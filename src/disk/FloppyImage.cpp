#include "src/disk/FloppyImage.h"

#include <optional>

#include "src/common/FileSystem.h"
#include "src/common/Text.h"
#include "src/disk/ExternalTools.h"

namespace velbooter {

namespace {

// The prefix is compared as text alone, so a folder whose name merely begins like the application folder is
// cut too. A target of a command line that begins with a backslash stands behind two of them; it is relative
// all the same, so it must not reach the tool as a path from the drive's root.
std::string RelativeToApplication(const Application& app, const std::string& path) {
    if (!StartsWithIgnoringCase(path, app.ApplicationFolder)) return path;
    size_t begin = app.PathOf("").size();
    if (path.compare(begin - 1, 1, "\\") == 0) begin = path.find_first_not_of('\\', begin);
    return begin < path.size() ? path.substr(begin) : "";
}

}  // namespace

void CreateImageFromDir(Application& app) {
    const std::string image = RelativeToApplication(app, app.Wizard.TxtDest.Text);
    const std::string folder = RelativeToApplication(app, app.StagingFolder);
    const std::string size = app.Wizard.OptImage14.Value ? "144" : "288";
    ChangeDriveAndFolder(app.ApplicationFolder);
    const std::optional<FileVersion> former = VersionOf(image);
    RunTool(app,
            app.PathOf("bfi.exe") + " -b=files\\bootsect.bin -l=Velstart -t=" + size + " -f=\"" + image +
                "\" " + folder,
            ToolWindow::Hidden);
    const std::optional<FileVersion> made = VersionOf(image);
    app.ImageMissing = !made || made == former;
}

void FloppyImageLabels(Application& app, bool isImage) {
    app.Wizard.LblMsg3.Caption = isImage ? "Preparing new floppy image" : "Formating Floppy Disk";
    app.Wizard.LblMsg4.Caption = isImage ? "Copying files to floppy image" : "Copying files to floppy disk";
}

}  // namespace velbooter
