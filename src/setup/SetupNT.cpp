#include "src/setup/SetupNT.h"

#include "src/common/FileSystem.h"
#include "src/common/INIFile.h"
#include "src/common/SetupCommon.h"
#include "src/common/Text.h"
#include "src/disk/Cabinets.h"
#include "src/setup/SetupData.h"
#include "src/setup/Templates.h"

namespace velbooter {

void CreateSetupNT(Application& app) {
    FillSetupDataFromKeyFileToUnattend(app, app.PathOf(kKeyFile),
                                       app.PathOf("files\\setupnt\\bin\\unattend.txt"));
    std::string cabFolder = "cabs\\lib";
    PackCabinet(app, "setupnt", "files\\setupnt", cabFolder);
}

void FillSetupDataFromKeyFileToUnattend(Application& app, const std::string& keyFile,
                                        const std::string& unattend) {
    if (!FileExists(keyFile)) return;
    if (FileExists(unattend)) DeleteFileAt(unattend);
    const INIFile answers(unattend);
    const INIFile data(keyFile);
    const auto read = [&](const char* key) { return TrimAtNul(data.GetINIKey("Win2KInfo", key)); };
    const auto quoted = [&](const char* key) { return QuotePath(read(key), false, true); };

    const std::string ownTemplate = read("TemplateFile");
    const std::string ours = app.PathOf("files\\inf_files\\win2k_template.inf");
    const bool namesOneFile = ownTemplate.find_first_of("*?") == std::string::npos;
    CopyTemplate(namesOneFile && FileExists(ownTemplate) ? ownTemplate : ours, unattend);

    answers.SetINIKey("UserData", "FullName", quoted("OwnerName"));
    answers.SetINIKey("UserData", "OrgName", quoted("Organization"));
    answers.SetINIKey("UserData", "ProductID", read("ProductKey"));
    answers.SetINIKey("UserData", "ComputerName", quoted("ComputerName"));
    const bool joinsDomain = NumericPrefix(read("JoinDomain")) != 0;
    answers.SetINIKey("Identification", joinsDomain ? "JoinDomain" : "JoinWorkgroup", quoted("Workgroup"));
    answers.SetINIKey("Identification", joinsDomain ? "JoinWorkgroup" : "JoinDomain", "");
}

}  // namespace velbooter
