#include "src/ui/WizardForm.h"

#include "src/common/ProgramEnd.h"
#include "src/forms/CancelApp.h"
#include "src/forms/Help.h"
#include "src/forms/ProductTexts.h"

namespace velbooter {

void CmdHelp_Click(Application& app) {
    ShowHelp(app, kCurrentPage, true);
}

void LblHomePage_Click(Application& app) {
    app.Screen.OpenAddress(kHomePage);
}

void LblFrameworkSite_Click(Application& app) {
    app.Screen.OpenAddress(kFrameworkSite);
}

void Form_Unload(Application& app) {
    const ExitCode code = CodeOfLastRun(app);
    app.Wizard.LblFinish.Caption = kOutcomeCanceled;
    DeleteWorkingFiles(app);
    throw ProgramEnd{code};
}

}  // namespace velbooter
