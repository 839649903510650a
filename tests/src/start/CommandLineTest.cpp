#include "src/start/CommandLine.h"

#include <gtest/gtest.h>

#include "src/run/ProgramEnd.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

Message OptionError(const std::string& text) {
    return {text, "Command Line options Error", Buttons::Ok, Icon::None};
}

TEST(Usage, TheTextIsExact) {
    EXPECT_EQ(
        "Usage: velbooter [-t type] [-plugin name] [-sel] [-keyfile] name [target]\r\n"
        "\r\n"
        "name : is the name of the disk or image to build, see files\\disklist.ini for details.\r\n"
        "target : target drive or file, if it is not a full path it will be saved relevant to Velbooter "
        "current "
        "folder.\r\n"
        "-t type : Specify image type (144 or 288).\r\n"
        "-plugin name : Add a plugin to the created image (see the PlugIns folder).\r\n"
        "-sel : Show the Select Drivers window before creating the floppy image.\r\n"
        "-keyfile : Load the Windows 9x product key from the keyfile.txt file instead of the Windows "
        "Registry.\r\n",
        UsageText());
}

class CommandLine : public ApplicationTest {
 protected:
    CommandLineValues Parse(const std::string& line) { return ParseCommandLine(App.Paths, App.Screen, line); }

    void ExpectRefusal(const std::string& line) {
        Screen.Expect(OptionError("The disk name is not specified"));
        try {
            Parse(line);
            ADD_FAILURE() << "[" << line << "] did not end the program";
        } catch (const ProgramEnd& end) {
            EXPECT_EQ(ExitCode::Refused, end.Code);
        }
    }
};

TEST_F(CommandLine, ANameAloneLeavesEverythingElseUnset) {
    const CommandLineValues values = Parse("mydisk");
    EXPECT_EQ("mydisk", values.DiskName);
    EXPECT_EQ("", values.TargetPath);
    EXPECT_EQ(0, values.ImageType);
    EXPECT_FALSE(values.UseKeyFile);
    EXPECT_EQ("", values.PluginName);
    EXPECT_FALSE(values.ShowDriverDialog);
    EXPECT_FALSE(values.ParameterError);
}

TEST_F(CommandLine, AllOptionsTogether) {
    Folder.MakeFolder("plugins\\Extra");
    const CommandLineValues values =
        Parse("-t 288 -plugin Extra -sel -keyfile -d -i -os win98 MyDisk C:\\a b\\c.img ");
    EXPECT_EQ("MyDisk", values.DiskName);
    EXPECT_EQ("C:\\a b\\c.img", values.TargetPath);
    EXPECT_EQ(2, values.ImageType);
    EXPECT_TRUE(values.UseKeyFile);
    EXPECT_EQ("Extra", values.PluginName);
    EXPECT_TRUE(values.ShowDriverDialog);
    EXPECT_FALSE(values.ParameterError);
}

TEST_F(CommandLine, EveryWordOfTheTableIsKnownInAnyCase) {
    Folder.MakeFolder("plugins\\p");
    for (const std::string word : {"-k", "/k", "-keyfile", "/keyfile", "-K", "/KeyFile"}) {
        EXPECT_TRUE(Parse(word + " x").UseKeyFile) << word;
    }
    for (const std::string word : {"-sel", "/sel", "-SEL", "/Sel"}) {
        EXPECT_TRUE(Parse(word + " x").ShowDriverDialog) << word;
    }
    for (const std::string word : {"-p", "/p", "-plugin", "/plugin", "-P", "/PLUGIN"}) {
        EXPECT_EQ("p", Parse(word + " p x").PluginName) << word;
    }
    for (const std::string word : {"-t", "/t", "-T", "/T"}) {
        EXPECT_EQ(1, Parse(word + " 144 x").ImageType) << word;
        EXPECT_EQ(2, Parse(word + " 288 x").ImageType) << word;
    }
    for (const std::string word : {"-d", "/d", "-D"}) {
        EXPECT_TRUE(Parse(word + " x").DriversFlag) << word;
    }
    for (const std::string word :
         {"-d", "/d", "-D", "-i", "/i", "/I", "-o v", "/o v", "-os v", "/os v", "-OS v"}) {
        const CommandLineValues values = Parse(word + " x");
        EXPECT_EQ("x", values.DiskName) << word;
        EXPECT_FALSE(values.ParameterError) << word;
    }
}

TEST_F(CommandLine, ImageTypeAsTheLastTokenIsReportedTwice) {
    Screen.Expect(OptionError("Image type not specified"));
    Screen.Expect(OptionError("Invalid Image type"));
    ExpectRefusal("-t");
}

TEST_F(CommandLine, ImageTypeAfterTheNameIsPartOfTheWalkToo) {
    Screen.Expect(OptionError("Image type not specified"));
    Screen.Expect(OptionError("Invalid Image type"));
    const CommandLineValues values = Parse("mydisk -t");
    EXPECT_TRUE(values.ParameterError);
    EXPECT_EQ("mydisk", values.DiskName);
    EXPECT_EQ(0, values.ImageType);
}

TEST_F(CommandLine, AnOptionInPlaceOfTheImageTypeIsConsumed) {
    Screen.Expect(OptionError("Invalid Image type"));
    const CommandLineValues values = Parse("-t -sel mydisk");
    EXPECT_TRUE(values.ParameterError);
    EXPECT_FALSE(values.ShowDriverDialog);
    EXPECT_EQ("mydisk", values.DiskName);
}

TEST_F(CommandLine, AnyOtherImageTypeIsNamedInTheMessage) {
    for (const std::string type : {"360", "1440", "0144", "144k", "Big"}) {
        Screen.Expect(OptionError("Invalid Image type: " + type));
        const CommandLineValues values = Parse("-t " + type + " name");
        EXPECT_TRUE(values.ParameterError);
        EXPECT_EQ(0, values.ImageType);
        EXPECT_EQ("name", values.DiskName);
    }
}

TEST_F(CommandLine, TwoSpacesAfterTheOptionGiveItAnEmptyValue) {
    Screen.Expect(OptionError("Invalid Image type: "));
    const CommandLineValues values = Parse("-t  144");
    EXPECT_EQ("144", values.DiskName);
    EXPECT_TRUE(values.ParameterError);
}

TEST_F(CommandLine, TheLastImageTypeCounts) {
    EXPECT_EQ(2, Parse("-t 144 -t 288 x").ImageType);
}

TEST_F(CommandLine, AMissingPluginNameIsReported) {
    Screen.Expect(OptionError("Plugin not specified"));
    EXPECT_TRUE(Parse("mydisk -plugin").ParameterError);
    Screen.Expect(OptionError("Plugin not specified"));
    const CommandLineValues values = Parse("-plugin -sel mydisk");
    EXPECT_TRUE(values.ParameterError);
    EXPECT_FALSE(values.ShowDriverDialog) << "the look-alike is consumed";
    EXPECT_EQ("", values.PluginName);
    EXPECT_EQ("mydisk", values.DiskName);
}

TEST_F(CommandLine, APluginWithoutAFolderIsReported) {
    Folder.Write("plugins\\bat.bat");
    for (const std::string name : {"missing", "bat"}) {
        Screen.Expect({"The Plugin specified was not found in the PlugIns folder.", "Invalid Plugin Name",
                       Buttons::Ok, Icon::None});
        const CommandLineValues values = Parse("-plugin " + name + " mydisk");
        EXPECT_TRUE(values.ParameterError);
        EXPECT_EQ("", values.PluginName);
        EXPECT_EQ("mydisk", values.DiskName);
    }
}

TEST_F(CommandLine, APluginNameThatLeadsOutOfItsFolderIsReported) {
    Folder.MakeFolder("plugins\\a\\b");
    for (const std::string name : {".", "..", "a\\..", "a/..", "a\\..\\a", "..\\plugins\\a", ".\\a", "...",
                                   "C:", "a:b", "\\", "\\\\"}) {
        Screen.Expect({"The Plugin specified was not found in the PlugIns folder.", "Invalid Plugin Name",
                       Buttons::Ok, Icon::None});
        const CommandLineValues values = Parse("-plugin " + name + " mydisk");
        EXPECT_TRUE(values.ParameterError) << name;
        EXPECT_EQ("", values.PluginName) << name;
    }
    EXPECT_EQ("a\\b", Parse("-plugin a\\b mydisk").PluginName);
}

TEST_F(CommandLine, TwoSpacesAfterPluginAreNoPlugin) {
    Folder.MakeFolder("plugins");
    const CommandLineValues values = Parse("-plugin  mydisk");
    EXPECT_FALSE(values.ParameterError);
    EXPECT_EQ("", values.PluginName);
    EXPECT_EQ("mydisk", values.DiskName);
}

TEST_F(CommandLine, ThePluginNameIsKeptAsTyped) {
    Folder.MakeFolder("plugins\\Extra");
    EXPECT_EQ("eXTRA", Parse("-plugin eXTRA mydisk").PluginName);
}

TEST_F(CommandLine, OsAsTheLastTokenIsReportedTwiceAndIsNoParameterError) {
    Screen.Expect(OptionError("OS not specified"));
    Screen.Expect({"Invalid OS", "The Veltrane", Buttons::Ok, Icon::None});
    const CommandLineValues values = Parse("mydisk -os");
    EXPECT_FALSE(values.ParameterError);
    EXPECT_EQ("mydisk", values.DiskName);
}

TEST_F(CommandLine, AnOptionInPlaceOfTheOsIsReportedAndConsumed) {
    Screen.Expect({"Invalid OS", "The Veltrane", Buttons::Ok, Icon::None});
    const CommandLineValues values = Parse("-o -sel mydisk");
    EXPECT_FALSE(values.ParameterError);
    EXPECT_FALSE(values.ShowDriverDialog);
}

TEST_F(CommandLine, AnUnknownOptionShowsTheUsageAndTheNameIsStillTaken) {
    for (const std::string option : {"-x", "/X", "-", "/", "-tt", "--sel", "/?"}) {
        Screen.Expect(OptionError("Invalid Argument : " + option + "\r\n\r\n" + UsageText()));
        const CommandLineValues values = Parse(option + " name");
        EXPECT_TRUE(values.ParameterError);
        EXPECT_EQ("name", values.DiskName);
    }
}

TEST_F(CommandLine, TheTargetMayHoldSpaces) {
    const CommandLineValues values = Parse("name C:\\My Images\\a.img");
    EXPECT_EQ("name", values.DiskName);
    EXPECT_EQ("C:\\My Images\\a.img", values.TargetPath);
}

TEST_F(CommandLine, OptionsAfterTheTargetArePartOfIt) {
    const CommandLineValues values = Parse("name a.img -sel");
    EXPECT_EQ("a.img -sel", values.TargetPath);
    EXPECT_FALSE(values.ShowDriverDialog);
}

TEST_F(CommandLine, OptionsBetweenNameAndTargetAreParsedAndPartOfTheTargetToo) {
    const CommandLineValues values = Parse("name -sel a.img");
    EXPECT_TRUE(values.ShowDriverDialog);
    EXPECT_EQ("-sel a.img", values.TargetPath);
}

TEST_F(CommandLine, TheTargetIsTrimmed) {
    EXPECT_EQ("a  b.img", Parse("name    a  b.img   ").TargetPath);
}

TEST_F(CommandLine, ASpaceAfterTheNameStartsTheTarget) {
    EXPECT_EQ("", Parse("name ").TargetPath);
    const CommandLineValues values = Parse("name  -sel");
    EXPECT_EQ("-sel", values.TargetPath);
    EXPECT_FALSE(values.ShowDriverDialog);
}

TEST_F(CommandLine, TheNameIsSoughtFromTheFirstCharacterOn) {
    Folder.MakeFolder("plugins\\mynet");
    EXPECT_EQ("net out.img", Parse("-plugin mynet net out.img").TargetPath);
    EXPECT_EQ("e out.img", Parse("-sel e out.img").TargetPath) << "the e of -sel comes first";
}

TEST_F(CommandLine, TheNameIsSoughtWithItsCase) {
    Folder.MakeFolder("plugins\\NET");
    EXPECT_EQ("out.img", Parse("-plugin NET net out.img").TargetPath);
}

TEST_F(CommandLine, QuotesHaveNoMeaning) {
    const CommandLineValues values = Parse("\"my disk\" \"a b.img\"");
    EXPECT_EQ("\"my", values.DiskName);
    EXPECT_EQ("disk\" \"a b.img\"", values.TargetPath);
}

TEST_F(CommandLine, LeadingSpacesArePassedOver) {
    EXPECT_EQ("name", Parse("   name").DiskName);
}

TEST_F(CommandLine, WithoutANameTheProgramEnds) {
    ExpectRefusal(" ");
    ExpectRefusal("    ");
    ExpectRefusal("-sel -keyfile");
    ExpectRefusal("-t 144");
}

TEST_F(CommandLine, EveryErrorIsReportedAsItIsMet) {
    Screen.Expect(OptionError("Invalid Image type: 1"));
    Screen.Expect(OptionError("Invalid Argument : -y\r\n\r\n" + UsageText()));
    Screen.Expect(OptionError("Plugin not specified"));
    ExpectRefusal("-t 1 -y -p");
}

TEST_F(CommandLine, AVeryLongLineIsParsed) {
    const std::string target(1'000'000, 'x');
    EXPECT_EQ(target, Parse("name " + target).TargetPath);
    EXPECT_EQ("name", Parse(std::string(100'000, ' ') + "name").DiskName);
}

}  // namespace
}  // namespace velbooter::testing
