// The command line: every message it can cause, in full and in order, and what is built from it.

#include <gtest/gtest.h>

#include "tests/e2e/support/DemoFolder.h"
#include "tests/e2e/support/Expectations.h"
#include "tests/e2e/support/ProgramUnderTest.h"

namespace velbooter::e2e {
namespace {

struct Values {
    std::string Disk = "custom";
    std::string Target;
    std::string Plugin = "None";
    std::string Type = "1.44 MB";
    std::string SelectDrivers = "False";
    std::string KeyFile = "False";
};

ShownMessage Summary(const Values& values) {
    return {
        "There has been an invalid parameter,\r\n"
        "check your settings before starting the batch mode :\r\n"
        "\r\n"
        "Disk Name : " +
            values.Disk + "\r\nTarget : " + values.Target + "\r\nPlugin to Apply : " + values.Plugin +
            "\r\nImage Type : " + values.Type + "\r\nSelect Drivers : " + values.SelectDrivers +
            "\r\nLoad Product key from keyfile.txt : " + values.KeyFile + "\r\n",
        "Check your Command Line Parameters",
        {"OK", "Cancel"},
        Picture::Exclamation};
}

const ShownMessage kNoDiskName = OptionError("The disk name is not specified");

struct BadLine {
    const char* Name;
    std::string Arguments;
    std::vector<ShownMessage> Messages;  ///< a summary at the end is answered with Cancel
};

void PrintTo(const BadLine& line, std::ostream* out) {
    *out << line.Arguments;
}

class BadCommandLine : public testing::TestWithParam<BadLine> {};

TEST_P(BadCommandLine, ShowsItsMessagesInOrderAndBuildsNothing) {
    const DemoFolder folder;
    ProgramUnderTest program(folder, GetParam().Arguments);
    for (const ShownMessage& expected : GetParam().Messages) {
        const ShownMessage shown = program.Message();
        ASSERT_EQ(expected, shown);
        program.Press(shown.Buttons.back());
    }
    EXPECT_EQ(Number(ExitCode::Refused), program.ExitCode());
    EXPECT_FALSE(program.SawWaitWindow());
    EXPECT_FALSE(folder.Exists("BootDisk.img"));
}

const ShownMessage kInvalidType = OptionError("Invalid Image type");
const ShownMessage kNoType = OptionError("Image type not specified");
const ShownMessage kNoPlugin = OptionError("Plugin not specified");
const ShownMessage kUnknownPlugin =
    OptionError("The Plugin specified was not found in the PlugIns folder.", "Invalid Plugin Name");
const ShownMessage kNoSystem = OptionError("OS not specified");
const ShownMessage kInvalidSystem = OptionError("Invalid OS", "The Veltrane");

ShownMessage InvalidArgument(const std::string& token) {
    return OptionError("Invalid Argument : " + token + "\r\n\r\n" + Usage());
}

INSTANTIATE_TEST_SUITE_P(
    Each, BadCommandLine,
    testing::Values(
        BadLine{"OneSpaceIsNoDiskName", "  ", {kNoDiskName}},
        BadLine{"OptionsAloneAreNoDiskName", " -t 144", {kNoDiskName}},
        BadLine{"TypeAsLastTokenGivesBothMessages", " -t", {kNoType, kInvalidType, kNoDiskName}},
        BadLine{"TypeConsumesAnOptionAsItsValue", " -t -sel custom", {kInvalidType, Summary({})}},
        BadLine{"TypeShowsAValueItDoesNotKnow",
                " -t 360 custom",
                {OptionError("Invalid Image type: 360"), Summary({})}},
        BadLine{"TypeIsComparedExactly",
                " -t 0144 custom",
                {OptionError("Invalid Image type: 0144"), Summary({})}},
        BadLine{"TypeTakesAnEmptyToken", " -t  custom", {OptionError("Invalid Image type: "), Summary({})}},
        BadLine{"PluginAsLastToken", " -plugin", {kNoPlugin, kNoDiskName}},
        BadLine{"PluginConsumesAnOptionAsItsValue", " -p -sel custom", {kNoPlugin, Summary({})}},
        BadLine{"PluginThatDoesNotExist", " /plugin nosuch custom", {kUnknownPlugin, Summary({})}},
        BadLine{"UnknownOptionShowsTheUsage", " -x custom", {InvalidArgument("-x"), Summary({})}},
        BadLine{"UnknownOptionKeepsItsLetters", " /Q custom", {InvalidArgument("/Q"), Summary({})}},
        BadLine{"EveryErrorIsReported",
                " -x -t 99 -y",
                {InvalidArgument("-x"), OptionError("Invalid Image type: 99"), InvalidArgument("-y"),
                 kNoDiskName}},
        BadLine{"SystemAsLastTokenGivesBothMessages", " -os", {kNoSystem, kInvalidSystem, kNoDiskName}},
        BadLine{"SummaryTellsAllValues",
                " -x -t 288 -SEL /keyfile custom out\\my disk.img",
                {InvalidArgument("-x"),
                 Summary({"custom", "out\\my disk.img", "None", "2.88 MB", "True", "True"})}},
        BadLine{"SummaryHidesTheNameOfAPlugin",
                " -plugin stamp -x custom",
                {InvalidArgument("-x"), Summary({"custom", "", ""})}},
        BadLine{"TargetTakesTheOptionsAfterIt",
                " -x custom a.img -sel",
                {InvalidArgument("-x"), Summary({"custom", "a.img -sel"})}}),
    [](const auto& line) { return std::string(line.param.Name); });

TEST(CommandLine, SummaryAnsweredWithOkBuildsWithTheValuesAsTheyStand) {
    const DemoFolder folder;
    folder.SetCustomDisk(SmallDisk());
    ProgramUnderTest program(folder, " -t 360 custom");
    EXPECT_EQ(OptionError("Invalid Image type: 360"), program.Answer("OK"));
    EXPECT_EQ(Summary({}), program.Answer("OK"));
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    ExpectImage(folder, folder.Path("BootDisk.img"), kSmallImageBytes);
    ExpectNoWorkingFiles(folder);
}

TEST(CommandLine, ErrorsOfTheSystemOptionAreNoParameterErrors) {
    const DemoFolder folder;
    folder.SetCustomDisk(SmallDisk());
    ProgramUnderTest program(folder, " custom -os");
    EXPECT_EQ(kNoSystem, program.Answer("OK"));
    EXPECT_EQ(kInvalidSystem, program.Answer("OK"));
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    ExpectImage(folder, folder.Path("BootDisk.img"), kSmallImageBytes);
}

TEST(CommandLine, WordsThatNothingUsesAreAccepted) {
    const DemoFolder folder;
    folder.SetCustomDisk(SmallDisk());
    ProgramUnderTest program(folder, " -OS 98 /d -i -k /T 288 custom");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    ExpectImage(folder, folder.Path("BootDisk.img"), kLargeImageBytes);
}

TEST(CommandLine, UnknownDiskEndsTheProgramWithoutCleaningUp) {
    const DemoFolder folder;
    ProgramUnderTest program(folder, " Custom");
    EXPECT_EQ(
        (ShownMessage{"The disk \"Custom\" doesn't exist", "Critical error", {"OK"}, Picture::Critical}),
        program.Message());
    EXPECT_EQ("Getting Disk Configuration INI file ...", program.Status());
    program.Press("OK");
    EXPECT_EQ(Number(ExitCode::UnknownDisk), program.ExitCode());
    EXPECT_TRUE(folder.Exists("Drivers.ini"));
    EXPECT_TRUE(folder.Exists("cabs\\bin"));
    EXPECT_FALSE(folder.Exists("BootDisk.img"));
}

struct Target {
    const char* Name;
    std::string Arguments;
    std::string File;
};

void PrintTo(const Target& target, std::ostream* out) {
    *out << target.Arguments;
}

class RelativeTarget : public testing::TestWithParam<Target> {};

TEST_P(RelativeTarget, IsMadeBelowTheApplicationFolder) {
    const DemoFolder folder;
    folder.SetCustomDisk(SmallDisk());
    folder.Write("plugins\\mycustom\\PLUGIN.TXT", "here");
    ProgramUnderTest program(folder, GetParam().Arguments);
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    ExpectImage(folder, folder.Path(GetParam().File), kSmallImageBytes);
    ExpectNoWorkingFiles(folder);
}

INSTANTIATE_TEST_SUITE_P(
    Each, RelativeTarget,
    testing::Values(Target{"InMissingFolders", " custom images\\deep\\boot.img", "images\\deep\\boot.img"},
                    Target{"BeginningWithABackslash", " custom \\images\\boot.img", "images\\boot.img"},
                    Target{"WithSpaces", " custom my images\\a b.img ", "my images\\a b.img"},
                    Target{"WithOptionsAfterIt", " custom a.img -sel", "a.img -sel"},
                    // The target is cut off after the first "custom", which is in the plugin's name.
                    Target{"ShiftedByANameThatComesEarlier", " -plugin mycustom custom boot.img",
                           "custom boot.img"}),
    [](const auto& target) { return std::string(target.param.Name); });

TEST(CommandLine, TargetWithADriveIsTakenAsItIs) {
    const DemoFolder folder;
    folder.SetCustomDisk(SmallDisk());
    const std::string target = folder.OutsidePath("My Images\\a b.img");
    ProgramUnderTest program(folder, " custom " + target);
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    ExpectImage(folder, target, kSmallImageBytes);
    EXPECT_FALSE(folder.Exists("BootDisk.img"));
}

}  // namespace
}  // namespace velbooter::e2e
