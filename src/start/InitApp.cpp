#include "src/start/InitApp.h"

#include "src/common/FileSystem.h"
#include "src/common/SetupCommon.h"
#include "src/common/Text.h"
#include "src/disk/DriverIndex.h"
#include "src/disk/FileCopying.h"
#include "src/dos/DosFiles.h"
#include "src/forms/CancelApp.h"

namespace velbooter {

void InitApp(Application& app) {
    const char* const kIndexFile = "Drivers.ini";
    if (FileExists(app.PathOf(kIndexFile))) DeleteFileAt(app.PathOf(kIndexFile));
    for (const std::string group : {"ASPI", "NDIS", "ODI16", "ODI32"}) {
        if (FolderExists(app.PathOf("drivers\\" + LowerCase(group))))
            IndexDriverGroup(app, kIndexFile, group, 1);
    }
    // The build reads the index line by line, so it has to be there even when there is no driver at all.
    if (!FileExists(app.PathOf(kIndexFile))) MakeEmptyFile(app.PathOf(kIndexFile));

    app.Wizard.TxtDest.Text = app.PathOf("BootDisk.img");
    RefreshDosModuleFolder(app);
    DeleteFolderTree(app.PathOf("cabs"));

    std::string root = "cabs";
    std::string bin = "cabs\\bin";
    const bool rootCopied = CopyFileWithPrompt(app, app.PathOf("files\\base_files\\*.*"), root, false);
    const bool binCopied = CopyFileWithPrompt(app, app.PathOf("files\\base_files\\bin\\*.*"), bin, false);
    if (!rootCopied || !binCopied) CancelApp(app);
}

}  // namespace velbooter
