#include "src/disk/FloppyDisk.h"

namespace velbooter {

bool FormatFloppy(Application& app) {
    Message message{"", "", Buttons::Ok, Icon::Information};
    switch (app.Screen.ShowFormatDialog()) {
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
    app.Screen.ShowMessage(message);
    return false;
}

}  // namespace velbooter
