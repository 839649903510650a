#include "src/dos/ImportDOS.h"

#include <functional>

#include "src/common/FileSystem.h"
#include "src/common/SetupCommon.h"
#include "src/common/Text.h"
#include "src/disk/ExternalTools.h"
#include "src/dos/DosFileList.h"
#include "src/forms/WaitStatus.h"

namespace velbooter {

namespace {

constexpr const char* kIoSys = "IO.SYS";
constexpr const char* kUnfinishedSuffix = ".unfinished~";
// The name of IO.SYS inside the setup cabinets.
constexpr const char* kIoSysMember = "WINBOOT.SYS";

bool IsPlainFileOnCd(const std::string& name) {
    return name == "SCANDISK.EXE" || name == "FORMAT.COM" || name == "SMARTDRV.EXE";
}

std::string Target(const Application& app, const std::string& name) {
    return app.PathOf("dos\\" + name);
}

void CopyToDos(Application& app, const std::string& source, const std::string& name) {
    CopyWholeFileOver(source, Target(app, name), [&] { app.Screen.PendingEvents(); });
}

std::string WithBackslash(std::string folder) {
    if (!EndsWith(folder, "\\")) folder += "\\";
    return folder;
}

// Shows the wait window as long as it lives.
class ShownWaitWindow {
 public:
    explicit ShownWaitWindow(Application& app) : app_(app) { ShowWaitWindow(app_, true); }
    ~ShownWaitWindow() { ShowWaitWindow(app_, false); }
    ShownWaitWindow(const ShownWaitWindow&) = delete;
    ShownWaitWindow& operator=(const ShownWaitWindow&) = delete;

 private:
    Application& app_;
};

void ForEachDosFile(Application& app, const std::function<void(const std::string&)>& import) {
    const ShownWaitWindow window(app);
    int number = 0;
    for (const char* name : kDosFiles) {
        SetWaitStatus(app, std::string("Please wait ... Importing ") + name + " (" +
                               std::to_string(++number) + "/" + std::to_string(kDosFiles.size()) + ")");
        import(name);
    }
    SetWaitStatus(app, "Please wait ... Checking import process");
}

// The part that both CD imports share: `extract` runs the tool for one member of the cabinets. While a tool
// writes a file, an empty file beside it says that this one may be half.
void ImportFromCd(Application& app, const std::string& folder, const std::string& name,
                  const std::function<void(const std::string&)>& extract) {
    if (IsPlainFileOnCd(name)) {
        CopyToDos(app, folder + name, name);
        return;
    }
    const std::string mark = Target(app, name + kUnfinishedSuffix);
    MakeEmptyFile(mark);
    if (name == kIoSys) {
        const std::string member = Target(app, kIoSysMember);
        for (const std::string& former : {Target(app, kIoSys), member}) DeleteIfThere(former);
        extract(kIoSysMember);
        // What the tool has not brought is missed by the check at the end.
        if (FileExists(member)) RenameFileTo(member, Target(app, kIoSys));
    } else {
        extract(name);
    }
    DeleteFileAt(mark);
}

}  // namespace

void DeleteUnfinishedDosFiles(Application& app) {
    for (const char* name : kDosFiles) {
        const std::string mark = Target(app, std::string(name) + kUnfinishedSuffix);
        if (FileExists(mark)) {
            DeleteIfThere(Target(app, name));
            DeleteFileAt(mark);
        }
        DeleteIfThere(Target(app, std::string(name) + kCopySuffix));
    }
}

void ImportDOSFilesWithExtract(Application& app, const std::string& sourceFolder) {
    const std::string folder = WithBackslash(sourceFolder);
    CopyToDos(app, folder + "EXTRACT.EXE", "EXTRACT.EXE");
    ForEachDosFile(app, [&](const std::string& name) {
        const std::string cabinet = UpperCase(GetShortPath(folder + "BASE4.CAB"));
        ChangeDriveAndFolder(app.ApplicationFolder);
        ImportFromCd(app, folder, name, [&](const std::string& member) {
            // /a goes on to the following cabinets of the set, /l extracts into dos below the current folder.
            RunTool(app, Target(app, "extract.exe") + " /y /a " + cabinet + " " + member + " /l DOS\\",
                    ToolWindow::Hidden);
        });
    });
}

void ImportDOSFilesWithExpand(Application& app, const std::string& sourceFolder) {
    const std::string folder = WithBackslash(sourceFolder);
    ForEachDosFile(app, [&](const std::string& name) {
        // The cabinets are named by a pattern relative to the CD's folder.
        ChangeDriveAndFolder(folder);
        ImportFromCd(app, folder, name, [&](const std::string& member) {
            RunTool(app, "expand.exe *.cab -f:" + member + " \"" + Target(app, "") + "\"",
                    ToolWindow::Hidden);
        });
    });
}

void CopyDOSFiles(Application& app, const std::string& sourceFolder) {
    const std::string folder = WithBackslash(sourceFolder);
    ForEachDosFile(app, [&](const std::string& name) {
        std::string source;
        for (const std::string& place : {folder.substr(0, 3), folder, folder + "command\\"}) {
            if (FileExists(place + name)) source = place + name;
        }
        if (!source.empty()) CopyToDos(app, source, name);
    });
}

}  // namespace velbooter
