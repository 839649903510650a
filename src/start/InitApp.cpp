#include "src/start/InitApp.h"

#include "src/common/SetupCommon.h"
#include "src/disk/FileCopying.h"
#include "src/dos/DosFiles.h"
#include "src/drivers/DriverStore.h"
#include "src/forms/CancelApp.h"

namespace velbooter {

void InitApp(Application& app) {
    RenewDriverIndex(app);
    app.Wizard.TxtDest.Text = app.PathOf(kDefaultImageName);
    RefreshDosModuleFolder(app);
    DeleteFolderTree(app.PathOf("cabs"));

    std::string root = "cabs";
    std::string bin = "cabs\\bin";
    const bool rootCopied = CopyFileWithPrompt(app, app.PathOf("files\\base_files\\*.*"), root, false);
    const bool binCopied = CopyFileWithPrompt(app, app.PathOf("files\\base_files\\bin\\*.*"), bin, false);
    if (!rootCopied || !binCopied) CancelApp(app);
}

}  // namespace velbooter
