#include "src/disk/FileCopying.h"

#include <optional>

#include "src/common/FileSystem.h"
#include "src/common/RuntimeError.h"
#include "src/common/SetupCommon.h"
#include "src/common/Text.h"

namespace velbooter {

namespace {

enum class Outcome { Done, Abort, Ignore };

Answer AskAboutFailure(Application& app, const std::string& source) {
    return app.Screen.ShowMessage({"Error while copying the file :\r\n" + source, "Error While Copying",
                                   Buttons::AbortRetryIgnore, Icon::Critical});
}

// Runs one file operation until it succeeds or the user gives it up; Retry runs just this operation again.
template <typename Operation>
Outcome Attempt(Application& app, const std::string& shownSource, bool quiet, Operation operation) {
    for (;;) {
        try {
            operation();
            return Outcome::Done;
        } catch (const RuntimeError&) {
            if (quiet) return Outcome::Ignore;
        }
        const Answer answer = AskAboutFailure(app, shownSource);
        if (answer != Answer::Retry) return answer == Answer::Abort ? Outcome::Abort : Outcome::Ignore;
    }
}

std::string FindSource(const Application& app, const std::string& source) {
    if (source.size() >= 2 && source[1] == ':') return source;
    std::string path;
    if (FileExists(app.PathOf("dos\\" + source))) path = app.PathOf("dos\\" + source);
    if (FileExists(app.PathOf(source))) path = app.PathOf(source);
    return path;
}

// A source that was not found is not searched again: Retry asks again, only Abort and Ignore leave.
bool ReportMissingSource(Application& app, const std::string& source) {
    Answer answer = Answer::Retry;
    while (answer == Answer::Retry) answer = AskAboutFailure(app, source);
    return answer != Answer::Abort;
}

bool CopyFilesOfFolder(Application& app, const std::string& pattern, const std::string& destination,
                       const std::string& shownSource, bool quiet) {
    const std::string everything = "*.*";
    std::string to = EndsWith(destination, everything)
                         ? destination.substr(0, destination.size() - everything.size())
                         : destination;
    if (!EndsWith(to, "\\")) to += "\\";
    const std::string from = Trim(pattern.substr(0, pattern.size() - everything.size()));
    CreateFolderPath(to);
    FolderListing listing(from + everything);
    std::optional<FolderEntry> entry;
    const auto next = [&] { entry = listing.Next(); };
    const auto repaint = [&] { app.Screen.PendingEvents(); };
    const auto copy = [&] { CopyFileOver(from + entry->Name, to + entry->Name, repaint); };
    Outcome outcome = Attempt(app, shownSource, quiet, next);
    while (outcome == Outcome::Done && entry) {
        app.Screen.PendingEvents();
        if (!entry->IsFolder) outcome = Attempt(app, shownSource, quiet, copy);
        if (outcome == Outcome::Done) outcome = Attempt(app, shownSource, quiet, next);
    }
    return outcome != Outcome::Abort;
}

}  // namespace

bool CopyFileWithPrompt(Application& app, const std::string& source, std::string& destination, bool quiet) {
    destination = app.PathOf(destination);
    const std::string from = FindSource(app, source);
    if (EndsWith(from, "*.*")) return CopyFilesOfFolder(app, from, destination, source, quiet);
    if (from.empty()) return quiet || ReportMissingSource(app, source);

    std::string folder;
    std::string file;
    if (SplitPath(destination, folder, file) && !FolderExists(folder)) {
        folder = Trim(folder);
        CreateFolderPath(folder);
    }
    return Attempt(app, source, quiet, [&] {
               CopyFileOver(from, destination, [&] { app.Screen.PendingEvents(); });
           }) != Outcome::Abort;
}

bool CopyFolderTree(Application& app, std::string& sourceFolder, std::string& destinationFolder) {
    try {
        if (!FolderExists(destinationFolder)) CreateFolderPath(destinationFolder);
        if (!EndsWith(sourceFolder, "\\")) sourceFolder += "\\";
        if (!EndsWith(destinationFolder, "\\")) destinationFolder += "\\";
        FolderListing listing(sourceFolder + "*.*");
        int subCount = 0;
        auto entry = listing.Next();
        while (entry) {
            app.Screen.PendingEvents();
            if (entry->Name == "." || entry->Name == "..") {
                entry = listing.Next();
            } else if (!entry->IsFolder) {
                CopyFileOver(sourceFolder + entry->Name, destinationFolder + entry->Name);
                entry = listing.Next();
            } else {
                std::string from = sourceFolder + entry->Name;
                std::string to = destinationFolder + entry->Name;
                if (!CopyFolderTree(app, from, to)) return false;
                // The position after a sub-folder counts sub-folders alone: files listed before it are copied
                // again and a sub-folder may be entered more than once. "." and ".." come first.
                ++subCount;
                listing.Restart();
                for (int skipped = 0; skipped < subCount + 2; ++skipped) listing.Next();
                entry = listing.Next();
            }
        }
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

}  // namespace velbooter
