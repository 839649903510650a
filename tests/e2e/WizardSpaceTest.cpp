// The line that says whether the selected files fit on the disk.

#include "tests/e2e/support/HarnessFailure.h"
#include "tests/e2e/support/Screen.h"
#include "tests/e2e/support/SelectionWindow.h"
#include "tests/e2e/support/WizardTest.h"
#include "tests/support/Patience.h"

namespace velbooter::e2e {
namespace {

class WizardSpace : public WizardTest {
 protected:
    static std::string Line(size_t bytes, const std::string& disk = "A 1.44 MB disk holds 1423 KB.") {
        return "Selected files: " + std::to_string(bytes / 1024) + " KB. " + disk;
    }
    // Whether a label is shown in the colour of warnings.
    static bool Warns(const ShownWizard& wizard, int id) {
        RECT place{};
        ::GetWindowRect(wizard.Control(id), &place);
        const std::string path = ScreenshotPath("space.ppm");
        if (!TakePictureOf(place, path)) throw HarnessFailure("no picture taken");
        const std::string picture = ReadFileAt("Z:" + path);
        const auto pixels = static_cast<size_t>((place.right - place.left) * (place.bottom - place.top));
        for (size_t at = picture.size() - pixels * 3; at < picture.size(); at += 3) {
            if (picture.compare(at, 3, std::string("\xB0\0\0", 3)) == 0) return true;
        }
        return false;
    }
    void ExpectLine(const ShownWizard& wizard, int id, const std::string& line) {
        Program().WaitUntil([&] { return wizard.Text(id) == line; },
                            "the line is \"" + wizard.Text(id) + "\" instead of \"" + line + "\"");
    }
};

TEST_F(WizardSpace, TellsWhatTheImageThenTakes) {
    SetDisk("minimal", SmallDiskWith({"[Create_CABs]", "scsi=LIB", "[DefaultDrivers]", "ASPI\\ASPI8DOS"}));
    const ShownWizard wizard = OpenAt(kDestinationPage, "minimal");
    const std::string foretold = wizard.Text(IDC_SPACE_AT_TARGET);
    wizard.Click(IDC_FINISH);
    ExpectTheEnd(wizard, "Operation completed successfully");
    wizard.Click(IDC_FINISH);
    EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
    EXPECT_EQ(foretold, Line(FloppyImage(folder_.Path("minimal.img")).UsedBytes()));
}

TEST_F(WizardSpace, FollowsTheTicksOfTheFiles) {
    folder_.Write("files\\large.bin", std::string(600 * 1024, 'x'));
    SetDisk("custom", SmallDiskWith({"files\\large.bin=LARGE.BIN"}));
    const ShownWizard wizard = OpenAt(kFilesPage);
    const std::string with = wizard.Text(IDC_SPACE_OF_FILES);
    wizard.ClickFile("LARGE.BIN");
    Program().WaitUntil([&] { return wizard.Text(IDC_SPACE_OF_FILES) != with; }, "the line stays as it was");
    const int less = std::stoi(with.substr(16)) - std::stoi(wizard.Text(IDC_SPACE_OF_FILES).substr(16));
    EXPECT_EQ(600, less);
    wizard.ClickFile("LARGE.BIN");
    ExpectLine(wizard, IDC_SPACE_OF_FILES, with);
    wizard.Next(kDestinationPage);
    EXPECT_EQ(with, wizard.Text(IDC_SPACE_AT_TARGET));
    wizard.Close();
    EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
}

TEST_F(WizardSpace, WarnsWhenTheDiskIsTooSmallAndStopsNobody) {
    folder_.Write("files\\large.bin", std::string(1500 * 1024, 'x'));
    SetDisk("custom", SmallDiskWith({"files\\large.bin=LARGE.BIN"}));
    const ShownWizard wizard = OpenAt(kFilesPage);
    EXPECT_TRUE(Eventually([&] { return Warns(wizard, IDC_SPACE_OF_FILES); }));
    wizard.ClickFile("LARGE.BIN");
    EXPECT_TRUE(Eventually([&] { return !Warns(wizard, IDC_SPACE_OF_FILES); }));
    wizard.ClickFile("LARGE.BIN");
    wizard.Next(kDestinationPage);
    EXPECT_TRUE(Eventually([&] { return Warns(wizard, IDC_SPACE_AT_TARGET); }));
    wizard.Click(IDC_IMAGE_28);
    Program().WaitUntil(
        [&] {
            return wizard.Text(IDC_SPACE_AT_TARGET).find("A 2.88 MB disk holds 2863 KB.") !=
                   std::string::npos;
        },
        "the line stays as it was");
    EXPECT_TRUE(Eventually([&] { return !Warns(wizard, IDC_SPACE_AT_TARGET); }));
    wizard.Click(IDC_IMAGE_14);
    EXPECT_TRUE(Eventually([&] { return Warns(wizard, IDC_SPACE_AT_TARGET); }));
    wizard.Click(IDC_FINISH);
    ExpectTheEnd(wizard, "Operation completed successfully");
    wizard.Click(IDC_FINISH);
    EXPECT_EQ(Number(ExitCode::NoImage), Program().ExitCode());
}

}  // namespace
}  // namespace velbooter::e2e
