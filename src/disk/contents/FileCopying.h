#pragma once
// The copy routines of the build: one that asks the user what to do when a copy fails, and one that copies a
// whole tree without a word.

#include <string>

#include "src/run/ApplicationPaths.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// Copies one file, or, when the source ends in "*.*", all files of a folder without its sub-folders.
/// `source` is a path with a drive, or else a file found in the application folder or, failing that, in its
/// folder "dos". `destination` is relative to the application folder and is replaced by its absolute form;
/// missing folders are made, existing files overwritten. A failure shows Abort, Retry, Ignore unless `quiet`.
/// Returns false only after Abort.
bool CopyFileWithPrompt(const ApplicationPaths& paths, Desktop& desktop, const std::string& source,
                        std::string& destination, bool quiet);

/// Copies `sourceFolder` with its sub-folders over `destinationFolder`, which is made when missing; both get
/// a trailing "\" that the caller sees. The windows repaint between files. Never shows a message; returns
/// false when something could not be copied, which ends the copying there.
bool CopyFolderTree(Desktop& desktop, std::string& sourceFolder, std::string& destinationFolder);

}  // namespace velbooter
