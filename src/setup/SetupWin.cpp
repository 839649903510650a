#include "src/setup/SetupWin.h"

#include "src/common/Files.h"
#include "src/common/INIFile.h"
#include "src/common/TextFiles.h"
#include "src/disk/contents/Cabinets.h"
#include "src/run/ApplicationPaths.h"
#include "src/setup/SetupData.h"

namespace velbooter {

namespace {

// A file of the module that starts the setup.
std::string InModule(const std::string& name) {
    return InFiles("setupwin\\bin\\" + name);
}

// The position of "98", counted from 1, is compared with -1, which it never is: both editions get the
// template of the later one. os.bat still gets the edition itself.
std::string EditionBase(const std::string& edition) {
    const auto position = static_cast<int>(edition.find("98") + 1);
    return position == -1 ? "win98" : "winme";
}

std::string BetweenQuotes(const std::string& text) {
    return "\"" + text + "\"";
}

std::string ProductKey(FrmWizard& wizard) {
    std::string key;
    for (const TextBox* part : KeyParts(wizard)) key += "-" + part->Text;
    return key.substr(1);
}

}  // namespace

void CreateSetupInf(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard) {
    const std::string edition = wizard.LblOSType.Caption;
    const std::string answers = paths.PathOf(InFiles("inf_files\\" + EditionBase(edition) + "_template.inf"));
    CopyTemplate(paths.PathOf(InFiles("inf_files\\key_template.inf")), paths.PathOf(InModule("key.inf")));
    CopyTemplate(answers, paths.PathOf(InModule("def.inf")));
    CopyTemplate(answers, paths.PathOf(InModule("auto.inf")));
    ProcessSetupInfFile(paths, wizard, InModule("key.inf"), kKeyInf);
    ProcessSetupInfFile(paths, wizard, InModule("def.inf"), kDefaultInf);
    ProcessSetupInfFile(paths, wizard, InModule("auto.inf"), kAutomaticInf);
    const std::string osBatch = paths.PathOf(InModule("os.bat"));
    MakeWritable(osBatch);
    LineWriter(osBatch).Write("@set OSVersion= " + edition);
    std::string cabFolder = InCabs("lib");
    PackCabinet(paths, desktop, "setupwin", InFiles("setupwin"), cabFolder);
}

void ProcessSetupInfFile(const ApplicationPaths& paths, FrmWizard& wizard, const std::string& infFile,
                         std::int16_t infType) {
    const INIFile inf(paths.PathOf(infFile));
    inf.SetINIKey("Setup", "ProductKey", BetweenQuotes(ProductKey(wizard)));
    if (infType == kKeyInf) return;
    const std::string workgroup = BetweenQuotes(wizard.TxtWorkgroup.Text);
    const std::string display = std::to_string(infType);
    inf.SetINIKey("Setup", "Express", infType != kAutomaticInf ? "0" : "1");
    inf.SetINIKey("NameAndOrg", "Name", BetweenQuotes(wizard.TxtOwner.Text));
    inf.SetINIKey("NameAndOrg", "Org", BetweenQuotes(wizard.TxtOrg.Text));
    inf.SetINIKey("NameAndOrg", "Display", display);
    inf.SetINIKey("Network", "ComputerName", BetweenQuotes(wizard.TxtPCName.Text));
    inf.SetINIKey("Network", "Workgroup", workgroup);
    inf.SetINIKey("VREDIR", "LogonDomain", workgroup);
    inf.SetINIKey("Network", "Display", display);
}

}  // namespace velbooter
