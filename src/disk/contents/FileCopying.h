#pragma once
// The copy routines of the build: one that asks the user what to do when a copy fails, and one that copies a
// whole tree without any message.

#include <string>

#include "src/run/ApplicationPaths.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// Copies one file, or, when the source ends in "*.*", all files of a folder without its sub-folders. A
/// `source` without a drive is looked up in the application folder and then in its folder "dos".
/// `destination` is relative to the application folder and is replaced by its absolute form; missing folders
/// are created, existing files overwritten. On a failure the user is asked (Abort, Retry, Ignore) unless
/// `quiet` is set, which stands for Ignore. Of a folder, Ignore leaves out the file and all those after it.
/// Returns false only after Abort.
bool CopyFileWithPrompt(const ApplicationPaths& paths, Desktop& desktop, const std::string& source,
                        std::string& destination, bool quiet);

/// Copies `sourceFolder` with its sub-folders over `destinationFolder`, which is created when missing; a
/// trailing "\" is added to both arguments. The windows repaint between files. Never shows a message; stops
/// at the first file or folder that cannot be copied and returns false; what was copied by then stays.
bool CopyFolderTree(Desktop& desktop, std::string& sourceFolder, std::string& destinationFolder);

}  // namespace velbooter
