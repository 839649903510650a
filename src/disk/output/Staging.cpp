#include "src/disk/output/Staging.h"

#include <optional>

#include "src/common/Drives.h"
#include "src/common/Files.h"
#include "src/common/Folders.h"
#include "src/common/Paths.h"
#include "src/common/RuntimeError.h"
#include "src/disk/contents/FileCopying.h"
#include "src/run/Waiting.h"

namespace velbooter {

namespace {

// Returns the next number in [0, 1).
double Uniform(std::minstd_rand& generator) {
    const double range = static_cast<double>(std::minstd_rand::max() - std::minstd_rand::min()) + 1;
    return static_cast<double>(generator() - std::minstd_rand::min()) / range;
}

std::string NextCandidate(const ApplicationPaths& paths, StagingArea& staging) {
    constexpr double kNumbers = 100000;
    const double first = Uniform(staging.Numbers);
    const double second = Uniform(staging.Numbers);
    return paths.PathOf(std::string(kStagingTree) + "\\Velbooter" +
                        std::to_string(static_cast<int>(first * second * kNumbers)));
}

// A failure is ignored here: the copy into the missing folder reports it.
void TryToMakeFolder(const std::string& folder) {
    try {
        MakeFolder(folder);
    } catch (const RuntimeError&) {
        return;
    }
}

std::optional<RuntimeError> CopyEntry(const ApplicationPaths& paths, Desktop& desktop,
                                      const std::string& entry, const std::string& destination) {
    std::string folder;
    std::string file;
    if (SplitPath(entry, folder, file) && !FolderExists(destination + "\\" + folder)) {
        std::string path = destination + "\\" + folder;
        CreateFolderPath(path);
    }
    try {
        CopyFileOver(paths.PathOf(InCabs(entry)), destination + "\\" + entry,
                     [&] { desktop.PendingEvents(); });
    } catch (const RuntimeError& error) {
        return error;
    }
    return std::nullopt;
}

Answer AskAboutCopyError(Desktop& desktop, const RuntimeError& error) {
    return desktop.ShowMessage({"The current Error has happend :\r\n" + error.Text,
                                "Error while Copying to Floppy", Buttons::AbortRetryIgnore, Icon::Critical});
}

}  // namespace

bool CreateDiskAsDir(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard,
                     StagingArea& staging) {
    do {
        staging.Folder = NextCandidate(paths, staging);
    } while (FolderExists(staging.Folder));
    if (!FolderExists(paths.PathOf(kStagingTree))) TryToMakeFolder(paths.PathOf(kStagingTree));
    TryToMakeFolder(staging.Folder);
    return InjectFilesToDir(paths, desktop, wizard, staging.Folder);
}

bool InjectFilesToDir(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard,
                      const std::string& destination) {
    ListBox& files = wizard.LstFiles;
    ProgressBar& progress = wizard.WorkProgress;
    progress.Max = files.SelectedCount();
    progress.Value = progress.Min;
    double freeSpace = 0;
    for (int i = 0; i < files.ListCount(); ++i) {
        if (!files.Selected(i)) continue;
        ++progress.Value;
        desktop.PendingEvents();
        const std::string entry = files.List(i);
        const double size = GetFileSize(paths.PathOf(InCabs(entry)));
        if (size < 0) {
            desktop.ShowMessage({"Error while copying the file from its Source :\r\n" + entry, "Error",
                                 Buttons::Ok, Icon::Critical});
            return false;
        }
        if (destination == "A:") {
            try {
                freeSpace = GetDriveFreeSpace("A:");
            } catch (const RuntimeError&) {
                // More than 2 GB is free and the number overflowed: the previous one remains.
            }
        } else {
            freeSpace = size;
        }
        if (size > freeSpace) {
            desktop.ShowMessage({"The Image file doesn't have enough free space for the file \r\n" + entry +
                                     "\r\nThe file will not be copied to the floppy image.",
                                 "Not Enough Free Space", Buttons::Ok, Icon::Exclamation});
            continue;
        }
        if (const auto error = CopyEntry(paths, desktop, entry, destination)) {
            const Answer answer = AskAboutCopyError(desktop, *error);
            if (answer == Answer::Abort) return false;
            if (answer == Answer::Retry) --i;
        }
    }
    return true;
}

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
