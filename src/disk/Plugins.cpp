#include "src/disk/Plugins.h"

#include "src/common/FileSystem.h"
#include "src/common/SetupCommon.h"
#include "src/disk/ExternalTools.h"
#include "src/disk/FileCopying.h"

namespace velbooter {

void InjectPlugin(Application& app, const std::string& name) {
    const std::string base = app.PathOf("plugins\\" + name);
    std::string program;
    // The last one found wins.
    for (const char* extension : {".bat", ".com", ".exe"}) {
        if (FileExists(base + extension)) program = base + extension;
    }
    if (!program.empty()) {
        ChangeDriveAndFolder(app.ApplicationFolder);
        RunTool(app, program, ToolWindow::Shown);
    }
    std::string source = base;
    std::string destination = app.StagingFolder;
    CopyFolderTree(app, source, destination);
}

}  // namespace velbooter
