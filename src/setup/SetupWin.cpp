#include "src/setup/SetupWin.h"

#include "src/common/FileSystem.h"
#include "src/common/INIFile.h"
#include "src/common/LineWriter.h"
#include "src/disk/Cabinets.h"
#include "src/setup/SetupData.h"
#include "src/setup/Templates.h"

namespace velbooter {

namespace {

constexpr const char* kKeyInfFile = "files\\setupwin\\bin\\key.inf";
constexpr const char* kDefaultInfFile = "files\\setupwin\\bin\\def.inf";
constexpr const char* kAutomaticInfFile = "files\\setupwin\\bin\\auto.inf";

// The position of "98", counted from 1, is compared with -1, which no position is: both editions get the
// template of the later one. The edition's text itself still reaches os.bat.
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

void CreateSetupInf(Application& app) {
    const std::string edition = app.Wizard.LblOSType.Caption;
    const std::string answers = app.PathOf("files\\inf_files\\" + EditionBase(edition) + "_template.inf");
    CopyTemplate(app.PathOf("files\\inf_files\\key_template.inf"), app.PathOf(kKeyInfFile));
    CopyTemplate(answers, app.PathOf(kDefaultInfFile));
    CopyTemplate(answers, app.PathOf(kAutomaticInfFile));
    ProcessSetupInfFile(app, kKeyInfFile, kKeyInf);
    ProcessSetupInfFile(app, kDefaultInfFile, kDefaultInf);
    ProcessSetupInfFile(app, kAutomaticInfFile, kAutomaticInf);
    const std::string osBatch = app.PathOf("files\\setupwin\\bin\\os.bat");
    MakeWritable(osBatch);
    LineWriter(osBatch).Write("@set OSVersion= " + edition);
    std::string cabFolder = "cabs\\lib";
    PackCabinet(app, "setupwin", "files\\setupwin", cabFolder);
}

void ProcessSetupInfFile(Application& app, const std::string& infFile, std::int16_t infType) {
    FrmWizard& wizard = app.Wizard;
    const INIFile inf(app.PathOf(infFile));
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
