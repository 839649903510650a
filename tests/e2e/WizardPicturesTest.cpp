// Takes a picture of every page of the wizard and of the driver selection, for people to look at and for the
// guide.

#include "tests/e2e/support/Programs.h"
#include "tests/e2e/support/RemoteControls.h"
#include "tests/e2e/support/Screen.h"
#include "tests/e2e/support/SelectionWindow.h"
#include "tests/e2e/support/WizardTest.h"

namespace velbooter::e2e {
namespace {

// The disks that are included, and a custom disk that needs every page.
class WizardPictures : public WizardTest, public testing::WithParamInterface<int> {
 protected:
    void SetUp() override {
        std::string custom = folder_.Read("files\\custom.ini");
        const std::string module = "scsi=LIB\r\n";
        const size_t place = custom.find(module);
        ASSERT_NE(place, std::string::npos);
        custom.insert(place, "setupwin=LIB\r\n");
        for (const char* driver : {"ASPI\\ASPI8DOS", "NDIS\\E100B", "NDIS\\EL90X", "NDIS\\RTL8139"})
            custom += std::string(driver) + "\r\n";
        folder_.Write("files\\custom.ini", custom);
        ::WritePrivateProfileStringA("Disks_List", "Count", "7", folder_.Path("files\\disklist.ini").c_str());
    }

    static void TakePictureOf(HWND window, const std::string& name) {
        RECT place{};
        ::GetWindowRect(window, &place);
        const std::string path = ScreenshotPath(name + "-" + std::to_string(GetParam()) + ".png");
        ASSERT_TRUE(e2e::TakePictureOf(place, path)) << path;
    }

    const ScreenResolution resolution_{GetParam()};
};

TEST_P(WizardPictures, OfEveryPage) {
    HeldTool tool(folder_, "bfi");
    const ShownWizard wizard = Open();
    // Wine draws the title of a program's first window as if it were inactive.
    Ask(wizard.Handle(), WM_NCACTIVATE, TRUE);
    TakePictureOf(wizard.Handle(), "wizard-0-welcome");
    wizard.Next(kDiskPage);
    TakePictureOf(wizard.Handle(), "wizard-1-disk");
    wizard.Next(kDriversPage);
    TakePictureOf(wizard.Handle(), "wizard-2-drivers");
    wizard.Click(IDC_SELECT_NDIS);
    const SelectionWindow selection(Program().DriverSelection());
    Program().WaitUntil([&] { return selection.ColumnArrow(1) == Arrow::Up; }, "not all drivers are listed");
    TakePictureOf(selection.Handle(), "select-drivers");
    selection.Click("Cancel");
    Program().WaitUntilHidden(selection.Handle());
    wizard.Next(kSetupPage);
    TakePictureOf(wizard.Handle(), "wizard-3-setup-data");
    wizard.Next(kFilesPage);
    TakePictureOf(wizard.Handle(), "wizard-4-files");
    wizard.Next(kDestinationPage);
    const std::string target = wizard.Text(IDC_TARGET);
    wizard.Enter(IDC_TARGET, "C:\\Images\\BootDisk.img");
    TakePictureOf(wizard.Handle(), "wizard-5-destination");
    wizard.Enter(IDC_TARGET, target);
    wizard.Click(IDC_IMAGE_14);
    wizard.Click(IDC_FINISH);
    Program().WaitUntil([&] { return tool.IsAtWork(); }, "the image is not written");
    TakePictureOf(wizard.Handle(), "wizard-7-progress");
    tool.Release();
    ExpectTheEnd(wizard, "Operation completed successfully");
    TakePictureOf(wizard.Handle(), "wizard-6-finished");
    wizard.Click(IDC_FINISH);
    EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
    ExpectImage(folder_, target, kSmallImageBytes);
}

INSTANTIATE_TEST_SUITE_P(Dpi, WizardPictures, testing::Values(96, 144), testing::PrintToStringParamName());

}  // namespace
}  // namespace velbooter::e2e
