#include "src/disk/contents/FileCopying.h"

#include <optional>

#include "src/common/Files.h"
#include "src/common/Folders.h"
#include "src/common/Paths.h"
#include "src/common/RuntimeError.h"
#include "src/common/Text.h"

namespace velbooter {

namespace {

enum class Outcome { Done, Abort, Ignore };

Answer AskAboutFailure(Desktop& desktop, const std::string& source) {
    return desktop.ShowMessage({"Error while copying the file :\r\n" + source, "Error While Copying",
                                Buttons::AbortRetryIgnore, Icon::Critical});
}

// Runs a file operation until it succeeds or the user gives up; Retry repeats only this operation.
template <typename Operation>
Outcome Attempt(Desktop& desktop, const std::string& shownSource, bool quiet, Operation operation) {
    for (;;) {
        try {
            operation();
            return Outcome::Done;
        } catch (const RuntimeError&) {
            if (quiet) return Outcome::Ignore;
        }
        const Answer answer = AskAboutFailure(desktop, shownSource);
        if (answer != Answer::Retry) return answer == Answer::Abort ? Outcome::Abort : Outcome::Ignore;
    }
}

std::string FindSource(const ApplicationPaths& paths, const std::string& source) {
    if (HasDrive(source)) return source;
    std::string path;
    if (FileExists(paths.PathOf(InDos(source)))) path = paths.PathOf(InDos(source));
    if (FileExists(paths.PathOf(source))) path = paths.PathOf(source);
    return path;
}

// A missing source is not looked up again: Retry repeats the question until the user chooses Abort or Ignore.
bool ReportMissingSource(Desktop& desktop, const std::string& source) {
    Answer answer = Answer::Retry;
    while (answer == Answer::Retry) answer = AskAboutFailure(desktop, source);
    return answer != Answer::Abort;
}

bool CopyFilesOfFolder(Desktop& desktop, const std::string& pattern, const std::string& destination,
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
    const auto repaint = [&] { desktop.PendingEvents(); };
    const auto copy = [&] { CopyFileOver(from + entry->Name, to + entry->Name, repaint); };
    Outcome outcome = Attempt(desktop, shownSource, quiet, next);
    while (outcome == Outcome::Done && entry) {
        desktop.PendingEvents();
        if (!entry->IsFolder) outcome = Attempt(desktop, shownSource, quiet, copy);
        if (outcome == Outcome::Done) outcome = Attempt(desktop, shownSource, quiet, next);
    }
    return outcome != Outcome::Abort;
}

}  // namespace

bool CopyFileWithPrompt(const ApplicationPaths& paths, Desktop& desktop, const std::string& source,
                        std::string& destination, bool quiet) {
    destination = paths.PathOf(destination);
    const std::string from = FindSource(paths, source);
    if (EndsWith(from, "*.*")) return CopyFilesOfFolder(desktop, from, destination, source, quiet);
    if (from.empty()) return quiet || ReportMissingSource(desktop, source);

    std::string folder;
    std::string file;
    if (SplitPath(destination, folder, file) && !FolderExists(folder)) {
        folder = Trim(folder);
        CreateFolderPath(folder);
    }
    return Attempt(desktop, source, quiet, [&] {
               CopyFileOver(from, destination, [&] { desktop.PendingEvents(); });
           }) != Outcome::Abort;
}

bool CopyFolderTree(Desktop& desktop, std::string& sourceFolder, std::string& destinationFolder) {
    try {
        if (!FolderExists(destinationFolder)) CreateFolderPath(destinationFolder);
        if (!EndsWith(sourceFolder, "\\")) sourceFolder += "\\";
        if (!EndsWith(destinationFolder, "\\")) destinationFolder += "\\";
        FolderListing listing(sourceFolder + "*.*");
        int subCount = 0;
        auto entry = listing.Next();
        while (entry) {
            desktop.PendingEvents();
            if (entry->Name == "." || entry->Name == "..") {
                entry = listing.Next();
            } else if (!entry->IsFolder) {
                CopyFileOver(sourceFolder + entry->Name, destinationFolder + entry->Name);
                entry = listing.Next();
            } else {
                std::string from = sourceFolder + entry->Name;
                std::string to = destinationFolder + entry->Name;
                if (!CopyFolderTree(desktop, from, to)) return false;
                // The position to resume at counts only sub-folders: files listed before them are copied
                // again, and a sub-folder may be entered more than once. "." and ".." come first.
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
