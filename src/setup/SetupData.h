#pragma once
// The setup data: owner, organisation, computer, workgroup, product key and Windows edition, which the setup
// page of the wizard holds. They come from the key file in the application folder or from the registry, and
// go into answer files that begin as copies of templates.

#include <string>

#include "src/forms/Forms.h"
#include "src/run/ApplicationPaths.h"

namespace velbooter {

/// Fills the setup page from [Win9xInfo] of the key file; a missing key empties its field. Without the file
/// nothing changes. A value is cut to 99 characters.
void FillSetupDataFromKeyFile(const ApplicationPaths& paths, FrmWizard& wizard);

/// Fills the setup page from the registry of the running Windows; a missing value empties its field.
void FillSetupDataFromReg(FrmWizard& wizard);

/// Fills the setup page from the key file when that exists or `useKeyFile` is set, else from the registry.
void FillSetupData(const ApplicationPaths& paths, FrmWizard& wizard, bool useKeyFile);

/// Copies `source` over `answerFile` and makes the copy writable even if the template is read-only, because
/// the profile functions silently leave a read-only file unchanged. Raises RuntimeError when the template is
/// missing or the copy fails.
void CopyTemplate(const std::string& source, const std::string& answerFile);

}  // namespace velbooter
