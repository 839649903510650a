#pragma once
// The DOS system files that every boot disk needs, and the three ways of filling the folder dos with them.
// Each shows the wait window with its progress while it works; what could not be had is left to the check
// that follows. All raise RuntimeError when a file operation of their own fails.

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

/// Deletes what an import that was cut off has left: half files, and the marks beside them that tell of
/// these. Raises RuntimeError when one cannot be deleted.
void DeleteUnfinishedDosFiles(const ApplicationPaths& paths);

/// Imports from the cabinets of a setup CD's folder with the CD's own extract.exe.
void ImportDOSFilesWithExtract(const ApplicationPaths& paths, Desktop& desktop, FrmWait& wait,
                               const std::string& sourceFolder);

/// Imports from the cabinets of a setup CD's folder with the system's expand.exe.
void ImportDOSFilesWithExpand(const ApplicationPaths& paths, Desktop& desktop, FrmWait& wait,
                              const std::string& sourceFolder);

/// Copies from a Windows installation's folder (its drive's root, the folder, its folder command; the last
/// one that has the file wins). A file found nowhere is passed over.
void CopyDOSFiles(const ApplicationPaths& paths, Desktop& desktop, FrmWait& wait,
                  const std::string& sourceFolder);

}  // namespace velbooter
