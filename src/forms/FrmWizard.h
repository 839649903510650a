#pragma once
// The wizard form as plain state. It holds the run's choices in both modes: the build steps read the chosen
// disk, the target, the image type and the file list from here, whether or not the wizard is ever shown.

#include <array>

#include "src/forms/Controls.h"

namespace velbooter {

/// Pages of the wizard that the build run itself shows; indexes into FraMain.
enum WizardPage : int {
    kWelcomePage = 0,
    kDestinationPage = 5,
    kFinishedPage = 6,
    kProgressPage = 7,
    kPageCount = 8,
};

struct Frame {
    bool Visible = false;
};

struct FrmWizard {
    FrmWizard() { FraMain[kWelcomePage].Visible = true; }

    std::array<Frame, kPageCount> FraMain;

    ListView LV_Disk;
    Label LblStatus{"Press Next to load the disk configuration"};

    ListBox LstFiles;
    ListBox LstDirs;

    OptionButton OptImage14{"&1.44 MB Floppy Image", true};
    OptionButton OptImage28{"&2.88 MB Floppy Image"};
    OptionButton OptFloppy{"1.44 MB &Floppy Disk"};
    TextBox TxtDest{"C:\\BootDisk.img"};

    ProgressBar WorkProgress;
    Label LblMsg3{"Formating Floppy Disk"};
    Label LblMsg4{"Copying files to floppy disk"};
    Label LblRight3;
    Label LblRight4;

    Label LblFinish{"Operation completed successfully"};

    CommandButton CmdBack{"< &Back", false, true};
    CommandButton CmdNext{"&Next >"};
    CommandButton CmdFinish{"&Finish", true, false};
    CommandButton CmdCancel{"&Cancel"};

    /// Asks for the folder of a setup CD.
    CommonDialog DlgOpen;
};

/// Chooses one of the three outputs; the other two option buttons of the group fall back.
void ChooseOption(FrmWizard& wizard, OptionButton FrmWizard::*option);

}  // namespace velbooter
