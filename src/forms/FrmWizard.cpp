#include "src/forms/FrmWizard.h"

namespace velbooter {

void ChooseOption(FrmWizard& wizard, OptionButton FrmWizard::*option) {
    wizard.OptImage14.Value = false;
    wizard.OptImage28.Value = false;
    wizard.OptFloppy.Value = false;
    (wizard.*option).Value = true;
}

}  // namespace velbooter
