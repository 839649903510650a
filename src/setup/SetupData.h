#pragma once
// The setup data: owner, organisation, computer, workgroup, product key and Windows edition, which the setup
// page of the wizard holds. They come from the key file beside the program or from the registry.

#include <array>
#include <string>

#include "src/forms/Application.h"

namespace velbooter {

/// The key file's name, in the application folder.
inline constexpr const char* kKeyFile = "keyfile.txt";

/// Fills the setup page from [Win9xInfo] of the key file; a missing key empties its field. Without the file
/// nothing changes. A value is cut to 99 characters.
void FillSetupDataFromKeyFile(Application& app);

/// Fills the setup page from the registry of the running Windows; a missing value empties its field.
void FillSetupDataFromReg(Application& app);

/// Fills the setup page: from the key file when that is there or `useKeyFile` asks for it, else from the
/// registry.
void FillSetupData(Application& app, bool useKeyFile);

/// The groups of a product key, and the characters of each.
inline constexpr size_t kKeyGroups = 5;
inline constexpr size_t kKeyGroupLength = 5;

/// Returns the text boxes of the groups of the product key.
std::array<TextBox*, kKeyGroups> KeyParts(FrmWizard& wizard);

}  // namespace velbooter
