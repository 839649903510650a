#include "src/ui/WizardForm.h"

#include "src/forms/ProductTexts.h"
#include "src/run/CancelApp.h"
#include "src/run/Help.h"
#include "src/run/ProgramEnd.h"

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
    SetOutcome(app.Wizard, RunOutcome::Canceled);
    DeleteWorkingFiles(app.Paths);
    throw ProgramEnd{code};
}

}  // namespace velbooter
