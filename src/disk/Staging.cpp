#include "src/disk/Staging.h"

#include <optional>

#include "src/common/FileSystem.h"
#include "src/common/RuntimeError.h"
#include "src/common/SetupCommon.h"
#include "src/forms/CancelApp.h"

namespace velbooter {

namespace {

// The next number of [0, 1).
double Uniform(std::minstd_rand& generator) {
    const double range = static_cast<double>(std::minstd_rand::max() - std::minstd_rand::min()) + 1;
    return static_cast<double>(generator() - std::minstd_rand::min()) / range;
}

std::string NextCandidate(Application& app) {
    constexpr double kNumbers = 100000;
    const double first = Uniform(app.StagingNumbers);
    const double second = Uniform(app.StagingNumbers);
    return app.PathOf("Temp\\Velbooter" + std::to_string(static_cast<int>(first * second * kNumbers)));
}

// Folders are not checked: a copy into a folder that could not be made reports itself.
void TryToMakeFolder(const std::string& folder) {
    try {
        MakeFolder(folder);
    } catch (const RuntimeError&) {
        return;
    }
}

std::optional<RuntimeError> CopyEntry(Application& app, const std::string& entry,
                                      const std::string& destination) {
    std::string folder;
    std::string file;
    if (SplitPath(entry, folder, file) && !FolderExists(destination + "\\" + folder)) {
        std::string path = destination + "\\" + folder;
        CreateFolderPath(path);
    }
    try {
        CopyFileOver(app.PathOf("cabs\\" + entry), destination + "\\" + entry,
                     [&] { app.Screen.PendingEvents(); });
    } catch (const RuntimeError& error) {
        return error;
    }
    return std::nullopt;
}

Answer AskAboutCopyError(Application& app, const RuntimeError& error) {
    return app.Screen.ShowMessage({"The current Error has happend :\r\n" + error.Text,
                                   "Error while Copying to Floppy", Buttons::AbortRetryIgnore,
                                   Icon::Critical});
}

}  // namespace

bool CreateDiskAsDir(Application& app) {
    do {
        app.StagingFolder = NextCandidate(app);
    } while (FolderExists(app.StagingFolder));
    if (!FolderExists(app.PathOf("Temp"))) TryToMakeFolder(app.PathOf("Temp"));
    TryToMakeFolder(app.StagingFolder);
    if (InjectFilesToDir(app, app.StagingFolder)) return true;
    CancelApp(app);
    return false;
}

bool InjectFilesToDir(Application& app, const std::string& destination) {
    ListBox& files = app.Wizard.LstFiles;
    ProgressBar& progress = app.Wizard.WorkProgress;
    progress.Max = files.SelectedCount();
    progress.Value = progress.Min;
    double freeSpace = 0;
    for (int i = 0; i < files.ListCount(); ++i) {
        if (!files.Selected(i)) continue;
        ++progress.Value;
        app.Screen.PendingEvents();
        const std::string entry = files.List(i);
        const double size = GetFileSize(app.PathOf("cabs\\" + entry));
        if (size < 0) {
            app.Screen.ShowMessage({"Error while copying the file from its Source :\r\n" + entry, "Error",
                                    Buttons::Ok, Icon::Critical});
            return false;
        }
        if (destination == "A:") {
            try {
                freeSpace = GetDriveFreeSpace("A:");
            } catch (const RuntimeError&) {
                // More than 2 GB: the reading overflowed, so the last one stands.
            }
        } else {
            freeSpace = size;
        }
        if (size > freeSpace) {
            app.Screen.ShowMessage({"The Image file doesn't have enough free space for the file \r\n" +
                                        entry + "\r\nThe file will not be copied to the floppy image.",
                                    "Not Enough Free Space", Buttons::Ok, Icon::Exclamation});
            continue;
        }
        if (const auto error = CopyEntry(app, entry, destination)) {
            const Answer answer = AskAboutCopyError(app, *error);
            if (answer == Answer::Abort) return false;
            if (answer == Answer::Retry) --i;
        }
    }
    return true;
}

}  // namespace velbooter
