#include "src/dos/ImportDOS.h"

#include <functional>

#include "src/common/Files.h"
#include "src/common/Folders.h"
#include "src/common/Paths.h"
#include "src/common/Text.h"
#include "src/run/Waiting.h"

namespace velbooter {

namespace {

constexpr const char* kIoSys = "IO.SYS";
constexpr const char* kUnfinishedSuffix = ".unfinished~";
// The name of IO.SYS inside the setup cabinets.
constexpr const char* kIoSysMember = "WINBOOT.SYS";

bool IsPlainFileOnCd(const std::string& name) {
    return name == "SCANDISK.EXE" || name == "FORMAT.COM" || name == "SMARTDRV.EXE";
}

std::string Target(const ApplicationPaths& paths, const std::string& name) {
    return paths.PathOf(InDos(name));
}

void CopyToDos(const ApplicationPaths& paths, Desktop& desktop, const std::string& source,
               const std::string& name) {
    CopyWholeFileOver(source, Target(paths, name), [&] { desktop.PendingEvents(); });
}

std::string WithBackslash(std::string folder) {
    if (!EndsWith(folder, "\\")) folder += "\\";
    return folder;
}

void ForEachDosFile(Desktop& desktop, FrmWait& wait, const std::function<void(const std::string&)>& import) {
    const ShownWaitWindow window(wait, desktop);
    int number = 0;
    for (const char* name : kDosFiles) {
        SetWaitStatus(wait, desktop,
                      std::string("Please wait ... Importing ") + name + " (" + std::to_string(++number) +
                          "/" + std::to_string(kDosFiles.size()) + ")");
        import(name);
    }
    SetWaitStatus(wait, desktop, "Please wait ... Checking import process");
}

// The part that both CD imports share; `extract` runs the tool for one member of the cabinets. While a tool
// writes a file, an empty marker file next to it says that it may be incomplete.
void ImportFromCd(const ApplicationPaths& paths, Desktop& desktop, const std::string& folder,
                  const std::string& name, const std::function<void(const std::string&)>& extract) {
    if (IsPlainFileOnCd(name)) {
        CopyToDos(paths, desktop, folder + name, name);
        return;
    }
    const std::string mark = Target(paths, name + kUnfinishedSuffix);
    MakeEmptyFile(mark);
    if (name == kIoSys) {
        const std::string member = Target(paths, kIoSysMember);
        for (const std::string& former : {Target(paths, kIoSys), member}) DeleteIfThere(former);
        extract(kIoSysMember);
        // The check at the end reports a file that the tool did not extract.
        if (FileExists(member)) RenameFileTo(member, Target(paths, kIoSys));
    } else {
        extract(name);
    }
    DeleteFileAt(mark);
}

}  // namespace

void DeleteUnfinishedDosFiles(const ApplicationPaths& paths) {
    for (const char* name : kDosFiles) {
        const std::string mark = Target(paths, std::string(name) + kUnfinishedSuffix);
        if (FileExists(mark)) {
            DeleteIfThere(Target(paths, name));
            DeleteFileAt(mark);
        }
        DeleteIfThere(Target(paths, std::string(name) + kCopySuffix));
    }
}

void ImportDOSFilesWithExtract(const ApplicationPaths& paths, Desktop& desktop, FrmWait& wait,
                               const std::string& sourceFolder) {
    const std::string folder = WithBackslash(sourceFolder);
    CopyToDos(paths, desktop, folder + "EXTRACT.EXE", "EXTRACT.EXE");
    ForEachDosFile(desktop, wait, [&](const std::string& name) {
        const std::string cabinet = UpperCase(GetShortPath(folder + "BASE4.CAB"));
        ChangeDriveAndFolder(paths.ApplicationFolder);
        ImportFromCd(paths, desktop, folder, name, [&](const std::string& member) {
            // /a continues with the following cabinets of the set, /l extracts into dos below the current
            // folder.
            RunTool(desktop, Target(paths, "extract.exe") + " /y /a " + cabinet + " " + member + " /l DOS\\",
                    ToolWindow::Hidden);
        });
    });
}

void ImportDOSFilesWithExpand(const ApplicationPaths& paths, Desktop& desktop, FrmWait& wait,
                              const std::string& sourceFolder) {
    const std::string folder = WithBackslash(sourceFolder);
    ForEachDosFile(desktop, wait, [&](const std::string& name) {
        // The cabinets are named by a pattern relative to the CD's folder.
        ChangeDriveAndFolder(folder);
        ImportFromCd(paths, desktop, folder, name, [&](const std::string& member) {
            RunTool(desktop, "expand.exe *.cab -f:" + member + " \"" + Target(paths, "") + "\"",
                    ToolWindow::Hidden);
        });
    });
}

void CopyDOSFiles(const ApplicationPaths& paths, Desktop& desktop, FrmWait& wait,
                  const std::string& sourceFolder) {
    const std::string folder = WithBackslash(sourceFolder);
    ForEachDosFile(desktop, wait, [&](const std::string& name) {
        std::string source;
        for (const std::string& place : {folder.substr(0, 3), folder, folder + "command\\"}) {
            if (FileExists(place + name)) source = place + name;
        }
        if (!source.empty()) CopyToDos(paths, desktop, source, name);
    });
}

}  // namespace velbooter
