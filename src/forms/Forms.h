#pragma once
// The three forms as plain state: the wizard, the driver selection, the wait window. The wizard holds the
// run's choices in both modes: the build steps read the target, the image type and the file list from here,
// whether or not the wizard is ever shown. Captions and widths that depend on a state are set by one function
// each, below, together with the state.

#include <array>
#include <cstdint>

#include "src/forms/Controls.h"
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

/// The kind of drivers that the network row of the drivers page offers.
enum class NetworkMode { Ndis, Odi };

/// Widths of ChkNDIS in twips, one for each of its two captions.
inline constexpr int kNdisWidth = 2655;
inline constexpr int kOdiWidth = 3015;

/// How the last run ended.
enum class RunOutcome { Completed, Canceled };

/// The wizard. The members are grouped by page, in the order of WizardPage.
struct FrmWizard {
    FrmWizard();

    bool Visible = false;
    std::array<Frame, kPageCount> FraMain;

    /// The disk page: the rows of the catalogue, and what Next is doing.
    ListView LV_Disk;
    Label LblStatus{"Press Next to load the disk configuration"};

    /// The drivers page: a row for SCSI and a row for network drivers, each with the button that opens
    /// FrmDrivers.
    CheckBox ChkASPI{"SCSI Host adapters drivers (ASPI)"};
    CheckBox ChkNDIS;
    NetworkMode Network = NetworkMode::Ndis;  ///< set by SetNetworkMode
    CommandButton CmdSelASPI{"Select which drivers to include..."};
    CommandButton CmdSelNDIS{"Select which drivers to include..."};
    Label LblNDISNote;

    /// The setup page, which only a disk with setupwin has. The two flags are also read without it.
    bool SetupWinIncluded = false;  ///< the disk carries the module setupwin
    bool SetupNTIncluded = false;   ///< the disk carries the module setupnt
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

    /// The files page: the entries below cabs, of which the selected ones go onto the disk; LblSpace is
    /// shown on the destination page, too. LstDirs is no control but the folders that the walk still has to
    /// list.
    ListBox LstFiles;
    Label LblSpace;
    ListBox LstDirs;

    /// The destination page. Exactly one of the three options is set.
    OptionButton OptImage14{"&1.44 MB Floppy Image", true};
    OptionButton OptImage28{"&2.88 MB Floppy Image"};
    OptionButton OptFloppy{"1.44 MB &Floppy Disk"};
    TextBox TxtDest{"C:\\BootDisk.img"};
    CommandButton CmdBrowse{"B&rowse..."};

    /// The progress page: four step lines, and the check mark of each.
    ProgressBar WorkProgress;
    Label LblMsg1{"Preparing selected Drivers"};
    Label LblMsg2{"Preparing pre-built drivers cache"};
    Label LblMsg3;
    Label LblMsg4;
    Label LblRight1;
    Label LblRight2;
    Label LblRight3;
    Label LblRight4;

    /// The final page: how the run has ended, and two links.
    Label LblFinish;
    RunOutcome Outcome = RunOutcome::Completed;  ///< set by SetOutcome
    Label LblHomePage{kHomePage};
    Label LblFrameworkSite{kFrameworkSite};

    /// The buttons of the frame.
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

/// The driver selection, a list of one group's drivers.
struct FrmDrivers {
    FrmDrivers();

    bool Visible = false;
    int Width = 6870;   ///< of the whole window, in twips
    int Height = 4500;  ///< in twips, too

    ListView LV;  ///< Tag is the folder of the group loaded last
    CommandButton CmdOK{"OK"};
    CommandButton CmdCancel{"Cancel"};
    CommandButton CmdSelAll;
    bool AllTicked = true;  ///< whether CmdSelAll ticked last, as at the start; set by SetAllTicked

    bool DriversIniExists = false;  ///< whether Drivers.ini was there when the list was loaded
    std::int16_t LastSortColumn = 0;
    std::int16_t SortColumn = 0;  ///< 0-based; LastSortColumn is the one of the click before
};

/// The wait window of a batch run and of an import.
struct FrmWait {
    bool Visible = false;
    Label LblStatus{"Please wait ..."};
};

/// Chooses one of the three outputs; the other two option buttons are cleared.
void ChooseOption(FrmWizard& wizard, OptionButton FrmWizard::*option);

/// Sets the mode of the network row with its caption, its width and the note below it.
void SetNetworkMode(FrmWizard& wizard, NetworkMode mode);

/// Sets how the run has ended, and what the final page says about it.
void SetOutcome(FrmWizard& wizard, RunOutcome outcome);

/// Sets the texts of the last two step lines for an image file or for a real floppy.
void FloppyImageLabels(FrmWizard& wizard, bool isImage);

/// Enables the selection button of each row of the drivers page that is ticked, and disables the others.
void EnableTickedRows(FrmWizard& wizard);

/// Sets whether all drivers were ticked last; the button's caption offers the opposite.
void SetAllTicked(FrmDrivers& drivers, bool ticked);

/// The groups of a product key, and the characters of each.
inline constexpr size_t kKeyGroups = 5;
inline constexpr size_t kKeyGroupLength = 5;

/// Returns the text boxes of the groups of the product key.
std::array<TextBox*, kKeyGroups> KeyParts(FrmWizard& wizard);

}  // namespace velbooter
