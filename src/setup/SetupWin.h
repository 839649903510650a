#pragma once
// The module setupwin: an unattended setup of Windows 98/ME from the boot disk.

#include <cstdint>
#include <string>

#include "src/forms/Forms.h"
#include "src/run/ApplicationPaths.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// The kinds of answer file.
enum SetupInfType : std::int16_t {
    kAutomaticInf = 0,  ///< auto.inf: asks nothing
    kDefaultInf = 1,    ///< def.inf: shows its answers and lets the user change them
    kKeyInf = 2,        ///< key.inf: the product key alone
};

/// Creates the answer files key.inf, def.inf and auto.inf and the batch file os.bat in files\setupwin\bin
/// from the templates and the setup page, and packs files\setupwin into cabs\lib\setupwin.cab; a message
/// reports a failed packing. Raises RuntimeError when a template is missing or a file cannot be written.
void CreateSetupInf(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard);

/// Writes the setup page's data into the answer file `infFile`, a path relative to the application folder, as
/// its kind `infType` (SetupInfType) needs them. A failure to write is not reported.
void ProcessSetupInfFile(const ApplicationPaths& paths, FrmWizard& wizard, const std::string& infFile,
                         std::int16_t infType);

}  // namespace velbooter
