#include "src/disk/output/Floppy.h"

#include <optional>

#include "src/common/Files.h"
#include "src/common/Folders.h"
#include "src/common/Text.h"
#include "src/run/Waiting.h"

namespace velbooter {

bool CreateImageFromDir(const ApplicationPaths& paths, Desktop& desktop, const FrmWizard& wizard,
                        const std::string& stagingFolder) {
    const std::string image = paths.RelativePathOf(wizard.TxtDest.Text);
    const std::string folder = paths.RelativePathOf(stagingFolder);
    const std::string size = wizard.OptImage14.Value ? "144" : "288";
    ChangeDriveAndFolder(paths.ApplicationFolder);
    const std::optional<FileStamp> former = StampOf(image);
    RunTool(desktop,
            paths.PathOf("bfi.exe") + " -b=files\\bootsect.bin -l=Velstart -t=" + size + " -f=\"" + image +
                "\" " + folder,
            ToolWindow::Hidden);
    const std::optional<FileStamp> made = StampOf(image);
    return made && made != former;
}

bool FormatFloppy(Desktop& desktop) {
    Message message{"", "", Buttons::Ok, Icon::Information};
    switch (desktop.ShowFormatDialog()) {
        case kFormatNotPossible:
            message.Text = "You have select not to format the floppy";
            message.Title = "Didn't Format";
            break;
        case kFormatCanceled:
            message.Text = "You have select to Cancel your format";
            message.Title = "Format Cancel";
            break;
        case kFormatError:
            message.Text = "Error while formating the floppy disk";
            message.Title = "Format did not Complete";
            break;
        default:
            return true;
    }
    desktop.ShowMessage(message);
    return false;
}

}  // namespace velbooter
