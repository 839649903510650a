#include "src/dos/DosFiles.h"

#include <algorithm>

#include "src/common/FileSystem.h"
#include "src/common/ProgramEnd.h"
#include "src/common/RuntimeError.h"
#include "src/common/SetupCommon.h"
#include "src/disk/FileCopying.h"
#include "src/dos/DosFileList.h"
#include "src/dos/ImportDOS.h"
#include "src/forms/ErrorMessage.h"
#include "src/forms/ProductTexts.h"

namespace velbooter {

namespace {

constexpr int kHelpTopic = 1420;
constexpr const char* kCdCabinet = "BASE5.CAB";

std::string HelpFile(const Application& app) {
    return app.PathOf(kHelpFileName) + ">" + kHelpWindow;
}

[[noreturn]] void EndWithoutDosFiles() {
    throw ProgramEnd{ExitCode::DosFilesMissing};
}

void AskForImport(Application& app) {
    const Answer answer = app.Screen.ShowMessage(
        {"Your current windows installation doesn't contain the required\r\n"
         "DOS files needed for the Veltrane to funtion properly.\r\n"
         "Press OK to import the needed files from the Windows 98/98SE Setup CD.",
         "DOS Files no found", Buttons::OkCancel, Icon::Exclamation, HelpFile(app), kHelpTopic});
    if (answer == Answer::Cancel) EndWithoutDosFiles();
}

// Asks until a file in the setup CD's folder is chosen; a cancelled dialog ends the program.
std::string AskForCdFolder(Application& app) {
    for (;;) {
        const auto chosen = app.Screen.ShowOpenDialog(app.Wizard.DlgOpen);
        if (!chosen) EndWithoutDosFiles();
        std::string folder = GetFolderPart(*chosen);
        if (FileExists(folder + "\\WIN.COM") || FileExists(folder + "\\" + kCdCabinet)) return folder;
        app.Wizard.DlgOpen.FileName = kCdCabinet;
    }
}

void ImportDosFiles(Application& app) {
    if (!FolderExists(app.PathOf("dos"))) {
        std::string folder = app.PathOf("dos");
        CreateFolderPath(folder);
    }
    if (FolderExists(app.WindowsFolder + "Command")) {
        CopyDOSFiles(app, app.WindowsFolder);
        return;
    }
    AskForImport(app);
    const std::string source = AskForCdFolder(app);
    if (FileExists(source + "\\win.com")) {
        CopyDOSFiles(app, source);
    } else if (FileExists(app.SystemFolder + "expand.exe") || FileExists(app.WindowsFolder + "expand.exe")) {
        ImportDOSFilesWithExpand(app, source);
    } else {
        ImportDOSFilesWithExtract(app, source);
    }
}

}  // namespace

bool VerifyDOSFiles(Application& app, bool showErrors) {
    const auto* missing = std::find_if(kDosFiles.begin(), kDosFiles.end(), [&app](const char* name) {
        return !FileExists(app.PathOf(std::string("dos\\") + name));
    });
    if (missing == kDosFiles.end()) return true;
    if (!showErrors) return false;
    app.Screen.ShowMessage({std::string("The file ") + *missing + " couldn't be extracted successfully",
                            "Critical Error", Buttons::Ok, Icon::Critical, HelpFile(app), kHelpTopic});
    EndWithoutDosFiles();
}

void CheckDOSFiles(Application& app) {
    try {
        DeleteUnfinishedDosFiles(app);
        if (VerifyDOSFiles(app, false)) return;
        ImportDosFiles(app);
    } catch (const RuntimeError& error) {
        ShowRuntimeError(app, error);
        EndWithoutDosFiles();
    }
    VerifyDOSFiles(app, true);
}

bool RefreshDosModuleFolder(Application& app) {
    DeleteFolderTree(app.PathOf("files\\dos"));
    bool copied = false;
    for (const char* tail : {"\\", "\\bin\\", "\\help\\", "\\menu\\"}) {
        std::string destination = std::string("files\\dos") + tail + "*.*";
        copied = CopyFileWithPrompt(app, app.PathOf(std::string("files\\dos_files") + tail + "*.*"),
                                    destination, false);
    }
    return copied;
}

}  // namespace velbooter
