#pragma once
// The list of files that go onto the disk, taken from the finished tree cabs, and the line counters that size
// progress bars.

#include <cstdint>
#include <string>

#include "src/forms/Application.h"

namespace velbooter {

/// Fills LstFiles with every file under cabs, as paths relative to it, IO.SYS, MSDOS.SYS and COMMAND.COM
/// first whether or not the tree holds them, and selects every entry.
void FillInitialList(Application& app);

/// Lists one folder of the walk: appends its files to LstFiles and inserts its sub-folders into LstDirs at
/// position 1. `folder` is absolute and lies under cabs.
void ScanCabsFolder(Application& app, const std::string& folder, const std::string& pattern);

/// Returns how many lines of [section] in `fileName` are neither empty nor comments, the header line
/// included, counting with `useSuffix` only those that end with `suffix`. Raises RuntimeError when the file
/// cannot be read.
std::int32_t CountSectionLines(const std::string& fileName, const std::string& section, bool useSuffix,
                               const std::string& suffix);

/// Returns the number of lines of `fileName`, empty ones included. Raises RuntimeError when it cannot be
/// read.
std::int32_t CountFileLines(const std::string& fileName);

}  // namespace velbooter
