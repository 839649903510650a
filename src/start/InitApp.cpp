#include "src/start/InitApp.h"

#include "src/common/Folders.h"
#include "src/disk/contents/FileCopying.h"
#include "src/dos/DosFiles.h"
#include "src/drivers/DriverIndex.h"
#include "src/run/RunEnd.h"

namespace velbooter {

void InitApp(Application& app) {
    RenewDriverIndex(app.Paths, app.Screen);
    app.Wizard.TxtDest.Text = app.Paths.PathOf(kDefaultImageName);
    RefreshDosModuleFolder(app.Paths, app.Screen);
    DeleteFolderTree(app.Paths.PathOf(kCabsFolder));

    std::string root = kCabsFolder;
    std::string bin = InCabs("bin");
    const bool rootCopied =
        CopyFileWithPrompt(app.Paths, app.Screen, app.Paths.PathOf(InFiles("base_files\\*.*")), root, false);
    const bool binCopied = CopyFileWithPrompt(app.Paths, app.Screen,
                                              app.Paths.PathOf(InFiles("base_files\\bin\\*.*")), bin, false);
    if (!rootCopied || !binCopied) CancelApp(app);
}

}  // namespace velbooter
