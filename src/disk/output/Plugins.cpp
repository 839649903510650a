#include "src/disk/output/Plugins.h"

#include "src/common/Files.h"
#include "src/common/Folders.h"
#include "src/disk/contents/FileCopying.h"
#include "src/run/Waiting.h"

namespace velbooter {

void InjectPlugin(const ApplicationPaths& paths, Desktop& desktop, const std::string& stagingFolder,
                  const std::string& name) {
    const std::string base = paths.PathOf(InPlugins(name));
    std::string program;
    // The last one found wins.
    for (const char* extension : {".bat", ".com", ".exe"}) {
        if (FileExists(base + extension)) program = base + extension;
    }
    if (!program.empty()) {
        ChangeDriveAndFolder(paths.ApplicationFolder);
        RunTool(desktop, program, ToolWindow::Shown);
    }
    std::string source = base;
    std::string destination = stagingFolder;
    CopyFolderTree(desktop, source, destination);
}

}  // namespace velbooter
