#pragma once
// The DOS system files that every boot disk needs, kept in the folder dos of the application folder: the
// check at start that they are there, and their import when they are not.

#include "src/forms/Forms.h"
#include "src/run/ApplicationPaths.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// Returns whether all DOS files are in the folder dos. With `showErrors`, a message reports the first
/// missing file, and the program ends (ProgramEnd).
bool VerifyDOSFiles(const ApplicationPaths& paths, Desktop& desktop, bool showErrors);

/// Returns only when all DOS files are there. If any is missing, imports them from the Windows installation,
/// or from a setup CD whose folder `cdDialog` asks for. When that fails, shows why and ends the
/// program (ProgramEnd).
void CheckDOSFiles(const ApplicationPaths& paths, Desktop& desktop, FrmWait& wait, CommonDialog& cdDialog);

/// Rebuilds the folder files\dos, the source of the dos module, from its pristine copy files\dos_files. After
/// a failed copy the user is asked (Abort, Retry, Ignore). Returns false when the last of its four copies was
/// aborted; an Abort of an earlier one does not count.
bool RefreshDosModuleFolder(const ApplicationPaths& paths, Desktop& desktop);

}  // namespace velbooter
