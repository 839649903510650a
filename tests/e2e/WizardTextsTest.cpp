// The texts and the pictures of the wizard: people look for them, and so do programs.

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include "tests/e2e/support/RemoteControls.h"
#include "tests/e2e/support/RemoteMemory.h"
#include "tests/e2e/support/WindowTree.h"
#include "tests/e2e/support/WizardTest.h"

namespace velbooter::e2e {
namespace {

using Texts = std::vector<std::string>;

struct PageTexts {
    int Page;
    Texts Expected;  ///< in the order of the Tab key; controls without a text are left out
};

const std::vector<PageTexts> kPages{
    {kWelcomePage,
     {"Welcome to The Veltrane v1.5",
      "The wizard will assist you in the process of creating ModBoot-compatible bootable floppy disks.",
      "It will create either a real floppy disk or a floppy image file that can be used in bootable CDs.",
      "Press Next to start the wizard"}},
    {kDiskPage,
     {"Select the disk configuration you want to Build :", "Press Next to load the disk configuration"}},
    {kDriversPage,
     {"Select the drivers you want in the disk, remember that you need extra modules to make use of these "
      "drivers",
      "Network adapters drivers (NDIS)", "Select which drivers to include...",
      "You only need the MSNET module and it requirements to make use of the NDIS drivers and load the "
      "network interface.",
      "SCSI Host adapters drivers (ASPI)", "Select which drivers to include...",
      "You need at least the ASPI module to load the ASPI drivers, for SCSI CDROM Drives you also need ASPI "
      "CD and CDROM which have their own requirements."}},
    {kSetupPage,
     {"Customize the Windows Setup Assistant", "Owner Name : ", "VelUser", "Organization : ", "MARSH LTD.",
      "Computer Name : ", "VelPC", "Workgroup : ", "MARSH_LTD", "Optimized for : ", "Microsoft Windows 98",
      "Product Key : ", "Product Key, group 2 : ", "Product Key, group 3 : ", "Product Key, group 4 : ",
      "Product Key, group 5 : "}},
    {kFilesPage,
     {"The files listed below are all the files that will be included in the floppy disk generated at the "
      "end, Select which files you want to include : "}},
    {kFinishedPage,
     {"Operation completed successfully",
      "Visit the Corvane homepage for updated versions of the Veltrane at : ",
      "<a>https://www.example.com/veltrane</a>",
      "To stay in-touch with the latest ModBoot modules and disks visit the official website : ",
      "<a>https://www.example.org/modboot</a>"}},
    {kProgressPage,
     {"Please Wait", "Preparing selected Drivers", "Preparing pre-built drivers cache",
      "Formating Floppy Disk", "Copying files to floppy disk"}}};

class WizardTexts : public WizardTest {
 protected:
    static Texts TextsOf(HWND parent) {
        Texts texts;
        for (HWND child = ::GetWindow(parent, GW_CHILD); child != nullptr;
             child = ::GetWindow(child, GW_HWNDNEXT)) {
            const std::string text = TextOf(child);
            if (!text.empty()) texts.push_back(text);
        }
        return texts;
    }

    static int PictureOf(HWND list, int row) {
        const RemoteMemory memory(list, sizeof(LVITEMA));
        LVITEMA item{};
        item.mask = LVIF_IMAGE;
        item.iItem = row;
        memory.Write(item);
        Ask(list, LVM_GETITEMA, 0, memory.At());
        memory.Read(item);
        return item.iImage;
    }

    // A catalogue whose disks have these pictures.
    void SetPictures(const std::vector<int>& icons) const {
        std::string catalogue = "[Disks_List]\r\nCount=" + std::to_string(icons.size()) + "\r\n";
        for (size_t i = 0; i < icons.size(); ++i) {
            catalogue += "[" + std::to_string(i + 1) +
                         "]\r\nName=minimal\r\nDesc=A disk\r\nIcon=" + std::to_string(icons[i]) + "\r\n";
        }
        folder_.Write("files\\disklist.ini", catalogue);
    }
};

TEST_F(WizardTexts, OfEachPage) {
    const ShownWizard wizard = Open();
    for (const PageTexts& page : kPages)
        EXPECT_EQ(page.Expected, TextsOf(wizard.PageWindow(page.Page))) << "on page " << page.Page;
    EXPECT_EQ((Texts{"Choose how to save your generated floppy disk : ", "How to save your ModBoot Disk ?",
                     "&1.44 MB Floppy Image", "&2.88 MB Floppy Image", "1.44 MB &Floppy Disk", "Destination",
                     "Destination : ", folder_.Path("BootDisk.img"), "B&rowse..."}),
              TextsOf(wizard.PageWindow(kDestinationPage)));
    EXPECT_EQ("The Veltrane", TextOf(wizard.Handle()));
    Leave(wizard);
}

TEST_F(WizardTexts, OfTheButtons) {
    const ShownWizard wizard = Open();
    for (const auto& [id, caption] :
         {std::pair{IDC_BACK, "< &Back"}, std::pair{IDC_NEXT, "&Next >"}, std::pair{IDC_FINISH, "&Finish"},
          std::pair{IDCANCEL, "&Cancel"}, std::pair{IDC_HELP_BUTTON, "&Help"}})
        EXPECT_EQ(caption, wizard.Text(id));
    Leave(wizard);
}

TEST_F(WizardTexts, OfTheColumns) {
    const ShownWizard wizard = OpenAt(kDiskPage);
    const auto header = reinterpret_cast<HWND>(Ask(wizard.Control(IDC_DISKS), LVM_GETHEADER));
    EXPECT_EQ("Desc", TitleOf(header, 0));
    EXPECT_EQ("Velbooter_file", TitleOf(header, 1));
    EXPECT_NE(::GetWindowLongA(header, GWL_STYLE) & WS_VISIBLE, 0);
    EXPECT_EQ(0, ::GetWindowLongA(header, GWL_STYLE) & HDS_BUTTONS) << "a click on a title does nothing";
    Leave(wizard);
}

TEST_F(WizardTexts, PicturesOfTheDisksAreTheCatalogues) {
    SetPictures({8, 7, 6, 5, 4, 3, 2, 1, 9});
    const ShownWizard wizard = Open();
    wizard.Next(kDiskPage);
    const HWND list = wizard.Control(IDC_DISKS);
    std::vector<int> pictures;
    for (int row = 0; row < static_cast<int>(wizard.Disks().size()); ++row)
        pictures.push_back(PictureOf(list, row));
    // Pictures are counted from 0 here; the custom disk and a disk whose number is too high have the first.
    EXPECT_EQ((std::vector<int>{0, 7, 6, 5, 4, 3, 2, 1, 0, 0}), pictures);
    Leave(wizard);
}

TEST_F(WizardTexts, OnePictureListServesRowsAndTitles) {
    const ShownWizard wizard = OpenAt(kDiskPage);
    const HWND list = wizard.Control(IDC_DISKS);
    const LRESULT pictures = Ask(list, LVM_GETIMAGELIST, LVSIL_SMALL);
    EXPECT_NE(pictures, 0);
    EXPECT_EQ(pictures, Ask(list, LVM_GETIMAGELIST, LVSIL_NORMAL));
    EXPECT_EQ(pictures, Ask(reinterpret_cast<HWND>(Ask(list, LVM_GETHEADER)), HDM_GETIMAGELIST));
    EXPECT_NE(::GetWindowLongA(list, GWL_STYLE) & LVS_SHAREIMAGELISTS, 0) << "the program destroys it";
    Leave(wizard);
}

TEST_F(WizardTexts, LongNamesOfFilesCanBeReached) {
    const std::string name = "FOLDER\\" + std::string(120, 'W') + "\\FILE.TXT";
    SetDisk("custom", SmallDiskWith({"io.sys=" + name}));
    const ShownWizard wizard = OpenAt(kFilesPage);
    const HWND list = wizard.Control(IDC_FILES);
    RECT inner{};
    ::GetClientRect(list, &inner);
    EXPECT_GT(Ask(list, LB_GETHORIZONTALEXTENT), inner.right);
    Leave(wizard);
}

}  // namespace
}  // namespace velbooter::e2e
