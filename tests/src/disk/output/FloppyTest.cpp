#include "src/disk/output/Floppy.h"

#include <gtest/gtest.h>

#include "src/common/Text.h"
#include "src/forms/Forms.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

class FloppyImages : public ApplicationTest {
 protected:
    FloppyImages() {
        App.Staging.Folder = Folder.At("Temp\\Velbooter12");
        Folder.MakeTool("bfi.exe");
    }

    /// Creates the image for a target; returns the image tool's command line after the program's name.
    std::string Arguments(const std::string& target) {
        App.Wizard.TxtDest.Text = target;
        isNew_ = CreateImageFromDir(App.Paths, App.Screen, App.Wizard, App.Staging.Folder);
        const auto calls = Folder.Calls("bfi.exe");
        if (calls.empty()) return "not run";
        const std::string program = Folder.At("bfi.exe");
        EXPECT_TRUE(calls.back().CommandLine.starts_with(program)) << calls.back().CommandLine;
        return calls.back().CommandLine.substr(program.size());
    }
    static std::string Expected(const std::string& image, const std::string& size = "144") {
        return " -b=files\\bootsect.bin -l=Velstart -t=" + size + " -f=\"" + image + "\" Temp\\Velbooter12";
    }

    bool isNew_ = false;  ///< what the last call of Arguments has returned
};

TEST_F(FloppyImages, TheCommandLineIsExact) {
    EXPECT_EQ(" -b=files\\bootsect.bin -l=Velstart -t=144 -f=\"BootDisk.img\" Temp\\Velbooter12",
              Arguments(Folder.At("BootDisk.img")));
}

TEST_F(FloppyImages, ATargetUnderTheApplicationFolderIsGivenRelativeToIt) {
    EXPECT_EQ(Expected("out\\a.img"), Arguments(Folder.At("out\\a.img")));
    EXPECT_EQ(Expected("out\\A b.img"), Arguments(UpperCase(Folder.Path()) + "\\out\\A b.img"))
        << "case does not count";
}

TEST_F(FloppyImages, ATargetElsewhereIsGivenWholeAndQuoted) {
    EXPECT_EQ(Expected("D:\\a b.img"), Arguments("D:\\a b.img"));
    EXPECT_EQ(Expected("x" + Folder.At("a.img")), Arguments("x" + Folder.At("a.img")))
        << "only at the first character";
    EXPECT_EQ(Expected(""), Arguments(""));
}

// Only text is compared, so a folder whose name begins like the application folder's loses a character, too.
TEST_F(FloppyImages, ALongerFolderNameIsCutAsIfItWereOurs) {
    EXPECT_EQ(Expected("le\\a.img"), Arguments(Folder.Path() + "xle\\a.img"));
}

// The target \boot.img of a command line follows the application folder and its backslash.
TEST_F(FloppyImages, ATargetThatBeganWithABackslashStaysInTheApplicationFolder) {
    EXPECT_EQ(Expected("boot.img"), Arguments(Folder.Path() + "\\\\boot.img"));
    EXPECT_EQ(Expected("out\\boot.img"), Arguments(Folder.Path() + "\\\\\\out\\boot.img"));
}

TEST_F(FloppyImages, TheApplicationFolderItselfLeavesNothing) {
    EXPECT_EQ(Expected(""), Arguments(Folder.Path()));
    EXPECT_EQ(Expected(""), Arguments(Folder.Path() + "\\"));
}

TEST_F(FloppyImages, AStagingFolderElsewhereIsGivenWhole) {
    App.Staging.Folder = "D:\\Temp\\Velbooter1";
    EXPECT_EQ(" -b=files\\bootsect.bin -l=Velstart -t=144 -f=\"a.img\" D:\\Temp\\Velbooter1",
              Arguments(Folder.At("a.img")));
}

TEST_F(FloppyImages, OnlyTheSmallImagesOptionGives144) {
    ChooseOption(App.Wizard, &FrmWizard::OptImage28);
    EXPECT_EQ(Expected("a.img", "288"), Arguments(Folder.At("a.img")));
    ChooseOption(App.Wizard, &FrmWizard::OptFloppy);
    EXPECT_EQ(Expected("a.img", "288"), Arguments(Folder.At("a.img")));
    ChooseOption(App.Wizard, &FrmWizard::OptImage14);
    EXPECT_EQ(Expected("a.img", "144"), Arguments(Folder.At("a.img")));
}

TEST_F(FloppyImages, TheImageToolRunsHiddenInTheApplicationFolder) {
    Arguments(Folder.At("a.img"));
    const auto calls = Folder.Calls("bfi.exe");
    ASSERT_EQ(1u, calls.size());
    EXPECT_EQ("hidden", calls[0].Window);
    EXPECT_EQ(Folder.Path(), calls[0].WorkingFolder);
    EXPECT_EQ(Folder.Path(), CurrentFolder());
}

TEST_F(FloppyImages, NothingIsSaidAboutAFailingOrMissingTool) {
    Folder.MakeTool("bfi.exe", "exit|1\n");
    Arguments(Folder.At("a.img"));
    Folder.Remove("bfi.exe");
    EXPECT_FALSE(CreateImageFromDir(App.Paths, App.Screen, App.Wizard, App.Staging.Folder));
    EXPECT_TRUE(Screen.Messages.empty());
    EXPECT_FALSE(App.RunEnded);
}

TEST_F(FloppyImages, ANewImageIsToldFromNoneAndFromAnOldOne) {
    const std::string target = Folder.At("out\\a.img");
    Arguments(target);
    EXPECT_FALSE(isNew_) << "none";
    Folder.MakeTool("bfi.exe", "image\n");
    Arguments(target);
    EXPECT_TRUE(isNew_) << "the first one";
    Arguments(target);
    EXPECT_TRUE(isNew_) << "written again";
    Folder.MakeTool("bfi.exe", "exit|1\n");
    Arguments(target);
    EXPECT_FALSE(isNew_) << "the old one";
    const std::string elsewhere = Folder.Write("elsewhere\\b.img");
    App.Paths.ApplicationFolder = Folder.MakeFolder("app");
    App.Wizard.TxtDest.Text = elsewhere;
    EXPECT_FALSE(CreateImageFromDir(App.Paths, App.Screen, App.Wizard, App.Staging.Folder))
        << "an old one outside the application folder";
}

TEST_F(FloppyImages, TheEndOfTheToolIsAwaited) {
    Folder.MakeTool("bfi.exe", "wait|500\ncreate|a.img\n");
    Arguments(Folder.At("a.img"));
    EXPECT_TRUE(Folder.HasFile("a.img"));
}

TEST_F(FloppyImages, TheStepLinesNameTheOutput) {
    FloppyImageLabels(App.Wizard, true);
    EXPECT_EQ("Preparing new floppy image", App.Wizard.LblMsg3.Caption);
    EXPECT_EQ("Copying files to floppy image", App.Wizard.LblMsg4.Caption);
    FloppyImageLabels(App.Wizard, false);
    EXPECT_EQ("Formating Floppy Disk", App.Wizard.LblMsg3.Caption);
    EXPECT_EQ("Copying files to floppy disk", App.Wizard.LblMsg4.Caption);
}

class FloppyFormat : public ApplicationTest {
 protected:
    bool Format(std::int32_t result, const std::string& text, const std::string& title) {
        Screen.ExpectFormatDialog(result);
        if (!text.empty()) Screen.Expect({text, title, Buttons::Ok, Icon::Information});
        return FormatFloppy(App.Screen);
    }
};

TEST_F(FloppyFormat, ClosedWithoutFormatting) {
    EXPECT_FALSE(Format(-3, "You have select not to format the floppy", "Didn't Format"));
}

TEST_F(FloppyFormat, Canceled) {
    EXPECT_FALSE(Format(-2, "You have select to Cancel your format", "Format Cancel"));
}

TEST_F(FloppyFormat, Failed) {
    EXPECT_FALSE(Format(-1, "Error while formating the floppy disk", "Format did not Complete"));
}

TEST_F(FloppyFormat, AnyOtherResultIsASuccessWithoutAMessage) {
    for (const std::int32_t result : {0, 1, 6, -4, 2147483647}) EXPECT_TRUE(Format(result, "", "")) << result;
}

}  // namespace
}  // namespace velbooter::testing
