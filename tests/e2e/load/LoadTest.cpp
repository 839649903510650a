// Great numbers of disks, drivers and files: all are listed, and the windows respond while they are loaded.

#include "tests/e2e/support/Load.h"

#include <windows.h>
// It needs windows.h before it.
#include <commctrl.h>

#include <algorithm>
#include <functional>

#include "tests/e2e/support/RemoteControls.h"
#include "tests/e2e/support/SelectionWindow.h"
#include "tests/e2e/support/WizardTest.h"

namespace velbooter::e2e {
namespace {

constexpr int kDisks = 200;
constexpr int kDrivers = 500;
constexpr int kFiles = 2000;

class Load : public WizardTest {
 protected:
    // Counts the answers of a window while `condition` holds.
    static int AnswersWhile(HWND window, const std::function<bool()>& condition) {
        constexpr DWORD kStep = 10;
        int answers = 0;
        while (condition()) {
            Ask(window, WM_NULL);
            ++answers;
            ::Sleep(kStep);
        }
        return answers;
    }
};

TEST_F(Load, AllOf200DisksAreListedAndTheLastIsBuilt) {
    MakeCatalogue(folder_, kDisks);
    SetDisk("disk0200", SmallDiskWith({"files\\disk0200.ini=LAST.TXT"}));
    const ShownWizard wizard = OpenAt(kDiskPage);
    std::vector<std::string> expected{"custom"};
    for (int i = 1; i <= kDisks; ++i) expected.push_back("disk" + FourDigits(i));
    EXPECT_EQ(expected, wizard.Disks());
    wizard.SelectDisk("disk0200");
    wizard.GoTo(kDestinationPage);
    wizard.Click(IDC_FINISH);
    ExpectTheEnd(wizard, "Operation completed successfully");
    wizard.Click(IDC_FINISH);
    EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
    const FloppyImage image = ExpectImage(folder_, folder_.Path("disk0200.img"), kSmallImageBytes);
    EXPECT_EQ(1U, image.Files().count("LAST.TXT"));
}

TEST_F(Load, AllOf500DriversAreListedAndWritten) {
    MakeCatalogue(folder_, 1);
    MakeDrivers(folder_, kDrivers);
    // Starting the archiver for each cabinet would take most of the time, and other tests read descriptions.
    folder_.Remove("cabarc.exe");
    const ShownWizard wizard = OpenAt(kDriversPage);
    std::vector<std::string> names;
    std::string none = "[NDIS]\r\n";
    std::string all = none;
    for (int i = 1; i <= kDrivers; ++i) {
        names.push_back("DRV" + FourDigits(i));
        none += names.back() + "=0\r\n";
        all += names.back() + "=1\r\n";
    }
    EXPECT_EQ(folder_.Read("Drivers.ini"), none);

    wizard.Click(IDC_SELECT_NDIS);
    const SelectionWindow selection(Program().DriverSelection());
    const auto count = [&] { return Ask(selection.List(), LVM_GETITEMCOUNT); };
    // The list grows while it is visible.
    Program().WaitUntil([&] { return count() > 0; }, "no driver is listed");
    EXPECT_LT(count(), kDrivers);
    for (LRESULT last = 0; last != kDrivers;) {
        Program().WaitUntil([&] { return count() > last; }, "no further driver is listed");
        last = count();
    }
    Program().WaitUntil([&] { return selection.ColumnArrow(1) == Arrow::Up; }, "the drivers are not sorted");
    std::vector<DriverRow> rows;
    for (const std::string& name : names)
        rows.push_back({name, "Description not available (NDIS Driver)", false});
    EXPECT_EQ(rows, selection.Rows());

    const auto press = [&](const std::string& button, const std::string& next) {
        selection.Click(button);
        Program().WaitUntil([&] { return selection.Buttons().front() == next; }, "the button keeps its text");
    };
    press("Unselect All", "Select All");
    press("Select All", "Unselect All");
    EXPECT_EQ(names, selection.Ticked());
    selection.Click("OK");
    Program().WaitUntilHidden(selection.Handle());
    EXPECT_EQ(folder_.Read("Drivers.ini"), all);
    wizard.Close();
    EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
}

TEST_F(Load, AllOf2000FilesAreListedTickedAndWritten) {
    MakeCatalogue(folder_, 1);
    SetDisk("custom", SmallDiskWith(MakeFiles(folder_, kFiles)));
    const ShownWizard wizard = OpenAt(kDriversPage);
    wizard.Click(IDC_NEXT);
    EXPECT_GT(AnswersWhile(wizard.Handle(), [&] { return wizard.Page() == kDriversPage; }), 0);
    wizard.WaitForPage(kFilesPage);
    const std::vector<std::string> files = wizard.SelectedFiles();
    EXPECT_EQ(static_cast<LRESULT>(files.size()), Ask(wizard.Control(IDC_FILES), LB_GETCOUNT));
    for (int i = 1; i <= kFiles; ++i)
        ASSERT_EQ(1, std::count(files.begin(), files.end(), PathOfFile(i))) << PathOfFile(i);

    const std::string left = PathOfFile(kFiles);
    wizard.ClickFile(left);
    wizard.Next(kDestinationPage);
    wizard.Click(IDC_IMAGE_28);
    wizard.Click(IDC_FINISH);
    ExpectTheEnd(wizard, "Operation completed successfully");
    wizard.Click(IDC_FINISH);
    EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
    const auto built = ExpectImage(folder_, folder_.Path("BootDisk.img"), kLargeImageBytes).Files();
    // The build adds the two lists of network drivers.
    EXPECT_EQ(built.size(), files.size() - 1 + 2);
    EXPECT_EQ(0U, built.count(left));
    for (int i = 1; i < kFiles; ++i) ASSERT_EQ(PathOfFile(i), built.at(PathOfFile(i)));
}

}  // namespace
}  // namespace velbooter::e2e
