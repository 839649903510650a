// velbooter.com, the program's twin for command prompts: it passes the command line on unchanged, reports
// the outcome in one line and returns the program's own exit code.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "console/Report.h"
#include "tests/e2e/support/ConsoleTwin.h"
#include "tests/e2e/support/DemoFolder.h"
#include "tests/e2e/support/DosFiles.h"
#include "tests/e2e/support/Expectations.h"
#include "tests/e2e/support/ProgramUnderTest.h"
#include "tests/e2e/support/Programs.h"
#include "tests/e2e/support/ShownWizard.h"

namespace velbooter::e2e {
namespace {

using testing::HasSubstr;

// In the stream a carriage return precedes each line feed.
std::string Written(std::string line) {
    return line.insert(line.size() - 1, "\r");
}

// Expects that the run has ended with `code` and has written the line about it, and nothing else.
void ExpectEnd(const ConsoleTwin& twin, unsigned long code) {
    EXPECT_EQ(code, twin.ExitCode());
    EXPECT_EQ(Written(OutcomeLine(code)), twin.Output());
    EXPECT_EQ("", twin.Errors());
}

void ExpectEnd(const ConsoleTwin& twin, ExitCode code) {
    ExpectEnd(twin, Number(code));
}

// Expects that the run has built the image at `path` and says so.
void ExpectBuilt(const DemoFolder& folder, const ConsoleTwin& twin, const std::string& path) {
    EXPECT_EQ(Number(ExitCode::Built), twin.ExitCode());
    const FloppyImage image = ExpectImage(folder, path, kSmallImageBytes);
    EXPECT_EQ(Written(BuiltLine(path, {image.UsedBytes(), kSmallImageSpace})), twin.Output());
    EXPECT_EQ("", twin.Errors());
}

class ConsoleTwinTest : public testing::Test {
 protected:
    void SetUp() override { folder_.SetCustomDisk(SmallDisk()); }

    // Puts a stand-in in the program's place, which records the command line.
    void ReplaceTheProgram() const { CopyTestProgram("e2e_note.exe", folder_.Path("velbooter.exe")); }

    const DemoFolder folder_{"my apps"};
};

TEST_F(ConsoleTwinTest, WaitsForTheBuildAndNamesTheImage) {
    const ConsoleTwin twin(folder_, " -t 144 custom");
    ExpectBuilt(folder_, twin, folder_.Path("BootDisk.img"));
    ExpectNoWorkingFiles(folder_);
}

TEST_F(ConsoleTwinTest, KeepsTheSpacesOfTheTarget) {
    const ConsoleTwin twin(folder_, "  custom my images\\a  b.img");
    ExpectBuilt(folder_, twin, folder_.Path("my images\\a  b.img"));
}

TEST_F(ConsoleTwinTest, KeepsTheQuotesOfTheTarget) {
    const ConsoleTwin twin(folder_, " -x custom \"my images\\a  b.img\"");
    ProgramUnderTest program(twin.Program(), false);
    program.Answer("OK");
    EXPECT_THAT(program.Answer("Cancel").Text, HasSubstr("\r\nTarget : \"my images\\a  b.img\"\r\n"));
    ExpectEnd(twin, ExitCode::Refused);
}

TEST_F(ConsoleTwinTest, HandsTheTextOnToTheLetter) {
    ReplaceTheProgram();
    const std::string text = "\t -x  \"a b\" 'c' \"\" \\\"d\\ \"e  ";
    const ConsoleTwin twin(folder_, text);
    ExpectEnd(twin, ExitCode::Built);
    EXPECT_EQ(folder_.Read("velbooter.txt"), "\"" + folder_.Path("velbooter.exe") + "\"" + text);
}

TEST_F(ConsoleTwinTest, CommandPromptFindsItFirst) {
    const ConsoleTwin prompt = ConsoleTwin::Typed(folder_, "velbooter custom out\\disk.img");
    ExpectBuilt(folder_, prompt, folder_.Path("out\\disk.img"));
}

TEST_F(ConsoleTwinTest, PassesACancelledBuildOn) {
    folder_.SetCustomDisk(SmallDiskWith({"nosuch.sys=NOSUCH.SYS"}));
    const ConsoleTwin twin(folder_, " custom");
    ProgramUnderTest program(twin.Program(), false);
    EXPECT_EQ(CopyQuestion("nosuch.sys"), program.Message());
    EXPECT_TRUE(twin.IsRunning());
    program.Press("Abort");
    ExpectEnd(twin, ExitCode::Canceled);
}

TEST_F(ConsoleTwinTest, PassesARefusedCommandLineOn) {
    const ConsoleTwin twin(folder_, " -t 144");
    ProgramUnderTest program(twin.Program(), false);
    EXPECT_EQ(OptionError("The disk name is not specified"), program.Answer("OK"));
    ExpectEnd(twin, ExitCode::Refused);
}

TEST_F(ConsoleTwinTest, PassesAnUnknownDiskOn) {
    const ConsoleTwin twin(folder_, " nosuch");
    ProgramUnderTest program(twin.Program(), false);
    program.Answer("OK");
    ExpectEnd(twin, ExitCode::UnknownDisk);
}

TEST_F(ConsoleTwinTest, PassesMissingDosFilesOn) {
    folder_.Remove("dos\\XCOPY32.MOD");
    const ConsoleTwin twin(folder_, " custom");
    ProgramUnderTest program(twin.Program(), false);
    EXPECT_EQ(ImportQuestion(), program.Answer("Cancel"));
    ExpectEnd(twin, ExitCode::DosFilesMissing);
}

TEST_F(ConsoleTwinTest, PassesTheRefusalOfASecondRunOn) {
    ProgramUnderTest first(folder_, " nosuch");
    first.Message();
    const ConsoleTwin twin(folder_, " custom");
    ProgramUnderTest second(twin.Program(), false);
    EXPECT_EQ("Already Running", second.Answer("OK").Title);
    ExpectEnd(twin, ExitCode::AlreadyRunning);
    first.Press("OK");
    EXPECT_EQ(Number(ExitCode::UnknownDisk), first.ExitCode());
}

TEST_F(ConsoleTwinTest, PassesAnUnexpectedErrorOn) {
    folder_.Remove("files\\custom.ini");
    const ConsoleTwin twin(folder_, " custom");
    ProgramUnderTest program(twin.Program(), false);
    program.Answer("OK");
    ExpectEnd(twin, ExitCode::InternalError);
}

TEST_F(ConsoleTwinTest, PassesAMissingImageOn) {
    folder_.Remove("bfi.exe");
    const ConsoleTwin twin(folder_, " custom");
    ExpectEnd(twin, ExitCode::NoImage);
}

TEST_F(ConsoleTwinTest, PassesTheCodeOfAKilledProgramOn) {
    const ConsoleTwin twin(folder_, " nosuch");
    ProgramUnderTest program(twin.Program(), false);
    program.Message();
    program.Kill();
    ExpectEnd(twin, program.ExitCode());
}

class WithoutArguments : public ConsoleTwinTest, public testing::WithParamInterface<const char*> {};

TEST_P(WithoutArguments, OpensTheWizardAndDoesNotWaitForIt) {
    const ConsoleTwin twin(folder_, GetParam());
    ProgramUnderTest program(twin.Program(), true);
    const ShownWizard wizard(program);
    EXPECT_EQ(Number(ExitCode::Built), twin.ExitCode());
    EXPECT_EQ("", twin.Output());
    EXPECT_EQ("", twin.Errors());
    wizard.Close();
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
}

INSTANTIATE_TEST_SUITE_P(Each, WithoutArguments, testing::Values("", "   "));

TEST_F(ConsoleTwinTest, NamesAProgramThatIsMissing) {
    folder_.Remove("velbooter.exe");
    for (const char* arguments : {"", " custom"}) {
        const ConsoleTwin twin(folder_, arguments);
        EXPECT_EQ(kNotStarted, twin.ExitCode());
        EXPECT_EQ("", twin.Output());
        EXPECT_EQ(Written(MissingLine(folder_.Path("velbooter.exe"))), twin.Errors());
    }
}

TEST_F(ConsoleTwinTest, NamesAProgramThatIsNone) {
    folder_.Write("velbooter.exe", "not a program");
    const ConsoleTwin twin(folder_, " custom");
    EXPECT_EQ(kNotStarted, twin.ExitCode());
    EXPECT_EQ("", twin.Output());
    EXPECT_EQ(Written(NotStartedLine(folder_.Path("velbooter.exe"), ERROR_BAD_EXE_FORMAT)), twin.Errors());
}

TEST(ConsoleTwin, WritesPathsInTheCodePageOfTheConsole) {
    const DemoFolder folder("Ger\xE4te");
    folder.Remove("velbooter.exe");
    std::string path = folder.Path("velbooter.exe");
    std::string shown(path.size(), '\0');
    ASSERT_TRUE(::CharToOemBuffA(path.data(), shown.data(), static_cast<DWORD>(path.size())));
    ASSERT_NE(shown, path);
    const ConsoleTwin twin(folder, " custom");
    EXPECT_EQ(Written(MissingLine(shown)), twin.Errors());
}

}  // namespace
}  // namespace velbooter::e2e
