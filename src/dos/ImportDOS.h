#pragma once
// The DOS system files that every boot disk needs, and the three ways of filling the folder dos with them.
// Each shows the wait window with its progress while it works; files that cannot be imported are left to the
// check that follows. All raise RuntimeError when a file operation of their own fails.

#include <array>
#include <string>

#include "src/forms/Forms.h"
#include "src/run/ApplicationPaths.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// The required files in the order of import.
inline constexpr std::array<const char*, 25> kDosFiles{
    "IO.SYS",     "COMMAND.COM", "ATTRIB.EXE",  "CHOICE.COM",  "DELTREE.EXE",  "DISKCOPY.COM", "EDIT.COM",
    "EMM386.EXE", "EXTRACT.EXE", "FC.EXE",      "FDISK.EXE",   "FORMAT.COM",   "HIMEM.SYS",    "LABEL.EXE",
    "MEM.EXE",    "MODE.COM",    "MORE.COM",    "MOVE.EXE",    "SCANDISK.EXE", "SMARTDRV.EXE", "SORT.EXE",
    "SYS.COM",    "XCOPY.EXE",   "XCOPY32.EXE", "XCOPY32.MOD",
};

/// Deletes what an interrupted import has left: partial files, and the marker files that identify them.
/// Raises RuntimeError when one cannot be deleted.
void DeleteUnfinishedDosFiles(const ApplicationPaths& paths);

/// Imports from the cabinets of a setup CD's folder with the CD's own extract.exe.
void ImportDOSFilesWithExtract(const ApplicationPaths& paths, Desktop& desktop, FrmWait& wait,
                               const std::string& sourceFolder);

/// Imports from the cabinets of a setup CD's folder with the system's expand.exe.
void ImportDOSFilesWithExpand(const ApplicationPaths& paths, Desktop& desktop, FrmWait& wait,
                              const std::string& sourceFolder);

/// Copies from a Windows installation. Each file is looked up in the root of its drive, in `sourceFolder` and
/// in its subfolder command; the last match wins. A file that is in none of them is skipped.
void CopyDOSFiles(const ApplicationPaths& paths, Desktop& desktop, FrmWait& wait,
                  const std::string& sourceFolder);

}  // namespace velbooter
