#include "src/setup/SetupData.h"

#include "src/common/Files.h"
#include "src/common/INIFile.h"
#include "src/common/Registry.h"
#include "src/common/Text.h"
#include "src/run/ApplicationPaths.h"

namespace velbooter {

namespace {

// The groups are found by their positions alone; the characters between them are skipped, whatever they are.
void SetProductKey(FrmWizard& wizard, const std::string& key) {
    size_t begin = 0;
    for (TextBox* box : KeyParts(wizard)) {
        box->Text = begin < key.size() ? key.substr(begin, kKeyGroupLength) : "";
        begin += kKeyGroupLength + 1;
    }
}

}  // namespace

void FillSetupDataFromKeyFile(const ApplicationPaths& paths, FrmWizard& wizard) {
    if (!FileExists(paths.PathOf(kKeyFile))) return;
    const INIFile keyFile(paths.PathOf(kKeyFile));
    const auto read = [&](const char* key) { return TrimAtNul(keyFile.GetINIKey("Win9xInfo", key)); };
    wizard.TxtOwner.Text = read("OwnerName");
    wizard.TxtOrg.Text = read("Organization");
    wizard.LblOSType.Caption = read("OptimizedFor");
    wizard.TxtPCName.Text = read("ComputerName");
    wizard.TxtWorkgroup.Text = read("Workgroup");
    SetProductKey(wizard, read("ProductKey"));
}

void FillSetupDataFromReg(FrmWizard& wizard) {
    const auto windows = [](const char* value) {
        return ReadRegistryString(RegistryRoot::LocalMachine, "Software\\Microsoft\\Windows\\CurrentVersion",
                                  value)
            .value_or("");
    };
    const auto network = [](const char* value) {
        return ReadRegistryString(RegistryRoot::LocalMachine,
                                  "System\\CurrentControlSet\\Services\\VxD\\VNETSUP", value)
            .value_or("");
    };
    SetProductKey(wizard, windows("ProductKey"));
    wizard.TxtOwner.Text = windows("RegisteredOwner");
    wizard.TxtOrg.Text = windows("RegisteredOrganization");
    wizard.LblOSType.Caption = windows("ProductName");
    wizard.TxtPCName.Text = network("ComputerName");
    wizard.TxtWorkgroup.Text = network("Workgroup");
}

// The mere presence of the file takes precedence over the registry, whatever it holds.
void FillSetupData(const ApplicationPaths& paths, FrmWizard& wizard, bool useKeyFile) {
    if (useKeyFile || FileExists(paths.PathOf(kKeyFile))) {
        FillSetupDataFromKeyFile(paths, wizard);
    } else {
        FillSetupDataFromReg(wizard);
    }
}

void CopyTemplate(const std::string& source, const std::string& answerFile) {
    CopyFileOver(source, answerFile);
    MakeWritable(answerFile);
}

}  // namespace velbooter
