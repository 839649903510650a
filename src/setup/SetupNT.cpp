#include "src/setup/SetupNT.h"

#include "src/common/Files.h"
#include "src/common/INIFile.h"
#include "src/common/Paths.h"
#include "src/common/Text.h"
#include "src/disk/contents/Cabinets.h"
#include "src/run/ApplicationPaths.h"
#include "src/setup/SetupData.h"

namespace velbooter {

void CreateSetupNT(const ApplicationPaths& paths, Desktop& desktop) {
    FillSetupDataFromKeyFileToUnattend(paths, paths.PathOf(kKeyFile),
                                       paths.PathOf(InFiles("setupnt\\bin\\unattend.txt")));
    std::string cabFolder = InCabs("lib");
    PackCabinet(paths, desktop, "setupnt", InFiles("setupnt"), cabFolder);
}

void FillSetupDataFromKeyFileToUnattend(const ApplicationPaths& paths, const std::string& keyFile,
                                        const std::string& unattend) {
    if (!FileExists(keyFile)) return;
    if (FileExists(unattend)) DeleteFileAt(unattend);
    const INIFile answers(unattend);
    const INIFile data(keyFile);
    const auto read = [&](const char* key) { return TrimAtNul(data.GetINIKey("Win2KInfo", key)); };
    const auto quoted = [&](const char* key) { return QuotePath(read(key), false, true); };

    const std::string ownTemplate = read("TemplateFile");
    const std::string ours = paths.PathOf(InFiles("inf_files\\win2k_template.inf"));
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
