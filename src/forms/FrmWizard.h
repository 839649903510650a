#pragma once
// The wizard form as plain state. It holds the run's choices in both modes: the build steps read the chosen
// disk, the target, the image type and the file list from here, whether or not the wizard is ever shown.

#include <array>
#include <cstdint>

#include "src/forms/Controls.h"
#include "src/forms/ListView.h"
#include "src/forms/ProductTexts.h"

namespace velbooter {

/// Pages of the wizard: indexes into FraMain.
enum WizardPage : std::int16_t {
    kWelcomePage = 0,
    kDiskPage = 1,
    kDriversPage = 2,
    kSetupPage = 3,
    kFilesPage = 4,
    kDestinationPage = 5,
    kFinishedPage = 6,
    kProgressPage = 7,
    kPageCount = 8,
};

struct Frame {
    bool Visible = false;
};

/// Width of ChkNDIS in twips. It is the mark by which every reader tells what the network row stands for:
/// NDIS drivers at exactly the one width, ODI drivers at exactly the other.
inline constexpr int kNdisWidth = 2655;
inline constexpr int kOdiWidth = 3015;

/// The outcomes of a run that LblFinish tells.
inline constexpr const char* kOutcomeCompleted = "Operation completed successfully";
inline constexpr const char* kOutcomeCanceled = "Operation canceled";

/// File name of the image when nobody names another.
inline constexpr const char* kDefaultImageName = "BootDisk.img";

struct FrmWizard {
    FrmWizard() {
        FraMain[kWelcomePage].Visible = true;
        LV_Disk.FirstColumnTitle = "Desc";
        LV_Disk.SecondColumnTitle = "Velbooter_file";
        LstFiles.AddItem("Return to Previous step to Populate the list");
        DlgNew = {"BootDisk", "Select where to save the Floppy Image", "*.img", "img"};
    }

    bool Visible = false;
    std::array<Frame, kPageCount> FraMain;

    ListView LV_Disk;
    Label LblStatus{"Press Next to load the disk configuration"};

    CheckBox ChkASPI{"SCSI Host adapters drivers (ASPI)"};
    CheckBox ChkNDIS{"Network adapters drivers (NDIS)", kNdisWidth};
    CommandButton CmdSelASPI{"Select which drivers to include..."};
    CommandButton CmdSelNDIS{"Select which drivers to include..."};
    Label LblNDISNote{
        "You only need the MSNET module and it requirements to make use of the NDIS drivers and load the "
        "network interface."};

    TextBox TxtOwner{"VelUser"};
    TextBox TxtOrg{"MARSH LTD."};
    TextBox TxtPCName{"VelPC"};
    TextBox TxtWorkgroup{"MARSH_LTD"};
    Label LblOSType{"Microsoft Windows 98"};
    TextBox TxtKeyPart1;
    TextBox TxtKeyPart2;
    TextBox TxtKeyPart3;
    TextBox TxtKeyPart4;
    TextBox TxtKeyPart5;

    ListBox LstFiles;
    Label LblRoom;
    ListBox LstDirs;

    OptionButton OptImage14{"&1.44 MB Floppy Image", true};
    OptionButton OptImage28{"&2.88 MB Floppy Image"};
    OptionButton OptFloppy{"1.44 MB &Floppy Disk"};
    TextBox TxtDest{"C:\\BootDisk.img"};
    CommandButton CmdBrowse{"B&rowse..."};

    ProgressBar WorkProgress;
    Label LblMsg1{"Preparing selected Drivers"};
    Label LblMsg2{"Preparing pre-built drivers cache"};
    Label LblMsg3{"Formating Floppy Disk"};
    Label LblMsg4{"Copying files to floppy disk"};
    Label LblRight1;
    Label LblRight2;
    Label LblRight3;
    Label LblRight4;

    Label LblFinish{kOutcomeCompleted};
    Label LblHomePage{kHomePage};
    Label LblFrameworkSite{kFrameworkSite};

    CommandButton CmdBack{"< &Back", false, true};
    CommandButton CmdNext{"&Next >"};
    CommandButton CmdFinish{"&Finish", true, false};
    CommandButton CmdCancel{"&Cancel"};
    CommandButton CmdHelp{"&Help"};

    /// Asks for the folder of a setup CD.
    CommonDialog DlgOpen;
    /// Asks where to save the image.
    CommonDialog DlgNew;
};

/// Chooses one of the three outputs; the other two option buttons of the group fall back.
void ChooseOption(FrmWizard& wizard, OptionButton FrmWizard::*option);

}  // namespace velbooter
