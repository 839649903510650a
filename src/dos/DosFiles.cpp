#include "src/dos/DosFiles.h"

#include <algorithm>

#include "src/common/Files.h"
#include "src/common/Folders.h"
#include "src/common/Paths.h"
#include "src/common/RuntimeError.h"
#include "src/disk/contents/FileCopying.h"
#include "src/dos/ImportDOS.h"
#include "src/forms/ProductTexts.h"
#include "src/run/Help.h"
#include "src/run/ProgramEnd.h"
#include "src/run/RunEnd.h"

namespace velbooter {

namespace {

constexpr int kHelpTopic = 1420;
constexpr const char* kCdCabinet = "BASE5.CAB";

[[noreturn]] void EndWithoutDosFiles() {
    throw ProgramEnd{ExitCode::DosFilesMissing};
}

void AskForImport(const ApplicationPaths& paths, Desktop& desktop) {
    const Answer answer = desktop.ShowMessage(
        {"Your current windows installation doesn't contain the required\r\n"
         "DOS files needed for the Veltrane to funtion properly.\r\n"
         "Press OK to import the needed files from the Windows 98/98SE Setup CD.",
         "DOS Files no found", Buttons::OkCancel, Icon::Exclamation, HelpFileOf(paths), kHelpTopic});
    if (answer == Answer::Cancel) EndWithoutDosFiles();
}

// Asks until the user chooses a file in the setup CD's folder; a cancelled dialog ends the program.
std::string AskForCdFolder(Desktop& desktop, CommonDialog& dialog) {
    for (;;) {
        const auto chosen = desktop.ShowOpenDialog(dialog);
        if (!chosen) EndWithoutDosFiles();
        std::string folder = GetFolderPart(*chosen);
        if (FileExists(folder + "\\WIN.COM") || FileExists(folder + "\\" + kCdCabinet)) return folder;
        dialog.FileName = kCdCabinet;
    }
}

void ImportDosFiles(const ApplicationPaths& paths, Desktop& desktop, FrmWait& wait, CommonDialog& cdDialog) {
    if (!FolderExists(paths.PathOf("dos"))) {
        std::string folder = paths.PathOf("dos");
        CreateFolderPath(folder);
    }
    if (FolderExists(paths.WindowsFolder + "Command")) {
        CopyDOSFiles(paths, desktop, wait, paths.WindowsFolder);
        return;
    }
    AskForImport(paths, desktop);
    const std::string source = AskForCdFolder(desktop, cdDialog);
    if (FileExists(source + "\\win.com")) {
        CopyDOSFiles(paths, desktop, wait, source);
    } else if (FileExists(paths.SystemFolder + "expand.exe") ||
               FileExists(paths.WindowsFolder + "expand.exe")) {
        ImportDOSFilesWithExpand(paths, desktop, wait, source);
    } else {
        ImportDOSFilesWithExtract(paths, desktop, wait, source);
    }
}

}  // namespace

bool VerifyDOSFiles(const ApplicationPaths& paths, Desktop& desktop, bool showErrors) {
    const auto missing = std::find_if(kDosFiles.begin(), kDosFiles.end(), [&paths](const char* name) {
        return !FileExists(paths.PathOf(InDos(name)));
    });
    if (missing == kDosFiles.end()) return true;
    if (!showErrors) return false;
    desktop.ShowMessage({std::string("The file ") + *missing + " couldn't be extracted successfully",
                         "Critical Error", Buttons::Ok, Icon::Critical, HelpFileOf(paths), kHelpTopic});
    EndWithoutDosFiles();
}

void CheckDOSFiles(const ApplicationPaths& paths, Desktop& desktop, FrmWait& wait, CommonDialog& cdDialog) {
    try {
        DeleteUnfinishedDosFiles(paths);
        if (VerifyDOSFiles(paths, desktop, false)) return;
        ImportDosFiles(paths, desktop, wait, cdDialog);
    } catch (const RuntimeError& error) {
        ShowRuntimeError(desktop, error);
        EndWithoutDosFiles();
    }
    VerifyDOSFiles(paths, desktop, true);
}

bool RefreshDosModuleFolder(const ApplicationPaths& paths, Desktop& desktop) {
    DeleteFolderTree(paths.PathOf(InFiles("dos")));
    bool copied = false;
    for (const char* tail : {"\\", "\\bin\\", "\\help\\", "\\menu\\"}) {
        std::string destination = InFiles("dos") + tail + "*.*";
        copied = CopyFileWithPrompt(paths, desktop, paths.PathOf(InFiles("dos_files") + tail + "*.*"),
                                    destination, false);
    }
    return copied;
}

}  // namespace velbooter
