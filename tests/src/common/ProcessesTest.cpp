#include "src/common/Processes.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "src/common/Files.h"
#include "tests/support/ApplicationFolder.h"
#include "tests/support/Patience.h"

namespace velbooter::testing {
namespace {

class Processes : public ::testing::Test {
 protected:
    std::string Tool(const std::string& instructions = "") {
        Folder.MakeTool("tool.exe", instructions);
        return Folder.At("tool.exe");
    }

    /// Instructs a tool to do `verb` with the event.
    std::string WithEvent(const std::string& verb) const {
        return verb + "|" + std::to_string(reinterpret_cast<std::uintptr_t>(Event.Get())) + "\n";
    }

    ApplicationFolder Folder;
    SECURITY_ATTRIBUTES Inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    /// The tools inherit it.
    const KernelHandle Event{CreateEventA(&Inheritable, TRUE, FALSE, nullptr)};
};

TEST_F(Processes, TheCommandLineReachesTheProgramToTheCharacter) {
    const std::string line = Tool() + "  -m LZX:21   \"a b\"  files\\net\\*.*  ";
    EXPECT_TRUE(RunAndWait(line, -1, false, true));
    ASSERT_EQ(1u, Folder.Calls("tool.exe").size());
    EXPECT_EQ(line, Folder.Calls("tool.exe")[0].CommandLine);
}

TEST_F(Processes, OnlyAHiddenProgramGetsAWindowState) {
    const std::string tool = Tool();
    EXPECT_TRUE(RunAndWait(tool, -1, false, true));
    EXPECT_TRUE(RunAndWait(tool, -1, false, false));
    const std::vector<ToolCall> calls = Folder.Calls("tool.exe");
    ASSERT_EQ(2u, calls.size());
    EXPECT_EQ("hidden", calls[0].Window);
    EXPECT_EQ("shown", calls[1].Window);
}

TEST_F(Processes, TheProgramStartsInTheCallersCurrentFolder) {
    const std::string tool = Tool();
    SetCurrentDirectoryA(Folder.MakeFolder("here").c_str());
    EXPECT_TRUE(RunAndWait(tool, -1, false, true));
    EXPECT_EQ(Folder.At("here"), Folder.Calls("tool.exe").at(0).WorkingFolder);
}

TEST_F(Processes, HandlesAreInherited) {
    EXPECT_TRUE(RunAndWait(Tool(WithEvent("signal")), -1, false, true));
    EXPECT_EQ(WAIT_OBJECT_0, WaitForSingleObject(Event.Get(), 0));
}

TEST_F(Processes, StartProcessReturnsTheHandleOfTheProcess) {
    const KernelHandle process = StartProcess(Tool("exit|7\n"), true);
    ASSERT_TRUE(process);
    EXPECT_EQ(WAIT_OBJECT_0, WaitForSingleObject(process.Get(), 20000));
    DWORD code = 0;
    EXPECT_TRUE(GetExitCodeProcess(process.Get(), &code));
    EXPECT_EQ(7u, code);
}

TEST_F(Processes, AProgramThatCannotStartGivesNoHandleAndFalse) {
    EXPECT_FALSE(StartProcess(Folder.At("missing.exe"), true));
    EXPECT_FALSE(RunAndWait(Folder.At("missing.exe"), -1, false, true));
    EXPECT_FALSE(RunAndWait("", -1, false, true));
}

TEST_F(Processes, ATimeOutBelowOneIsNoLimit) {
    const std::string tool = Tool("wait|300\ncreate|done\n");
    SetCurrentDirectoryA(Folder.Path().c_str());
    for (const std::int32_t timeout : {0, -1, -2147483647}) {
        EXPECT_TRUE(RunAndWait(tool, timeout, false, true)) << timeout;
        EXPECT_TRUE(Folder.HasFile("done")) << timeout;
        Folder.Remove("done");
    }
}

TEST_F(Processes, ATimeOutEndsTheWaitWithFalse) {
    EXPECT_FALSE(RunAndWait(Tool(WithEvent("await")), 150, false, true));
    SetEvent(Event.Get());
}

TEST_F(Processes, ATimeOutThatIsNotReachedIsASuccess) {
    EXPECT_TRUE(RunAndWait(Tool(), 20000, false, true));
}

TEST_F(Processes, TheExitCodeIsNotLookedAt) {
    EXPECT_TRUE(RunAndWait(Tool("exit|3\n"), -1, false, true));
}

TEST_F(Processes, TheCallerIsCalledBackWhileTheProgramRuns) {
    int calls = 0;
    EXPECT_TRUE(RunAndWait(Tool(WithEvent("await")), -1, false, true, [&] {
        if (++calls == 2) SetEvent(Event.Get());
    }));
    EXPECT_GE(calls, 2);
}

TEST_F(Processes, WaitingForInputIdleEndsWhenTheProgramWaitsForInput) {
    const std::string tool = Tool(WithEvent("idle") + "create|done\n");
    SetCurrentDirectoryA(Folder.Path().c_str());
    EXPECT_TRUE(RunAndWait(tool, -1, true, true));
    EXPECT_FALSE(Folder.HasFile("done")) << "the program was still running";
    SetEvent(Event.Get());
}

TEST_F(Processes, OpeningAMissingDocumentGivesTheSystemsErrorCode) {
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, OpenWithShell(Folder.At("missing.exe")));
}

TEST_F(Processes, ADocumentIsOpenedInTheRootOfCInTheNormalState) {
    EXPECT_GT(OpenWithShell(Tool()), 32);
    EXPECT_TRUE(Eventually([&] { return Folder.Calls("tool.exe").size() == 1; }));
    const std::vector<ToolCall> calls = Folder.Calls("tool.exe");
    ASSERT_EQ(1u, calls.size());
    EXPECT_EQ("C:\\", calls[0].WorkingFolder);
    EXPECT_EQ("state 1", calls[0].Window);
}

TEST(ProgramFolder, IsThatOfTheRunningProgram) {
    EXPECT_TRUE(FileExists(GetProgramFolder() + "\\test_common.exe"));
}

// The usual line of a batch file, "%~dp0"velbooter.exe, has quotes around the folder only.
TEST(CallText, OneSpaceOrTabAfterTheNameIsDropped) {
    struct Case {
        std::string whole, text;
    };
    const Case cases[] = {
        {"velbooter.exe", ""},
        {"velbooter.exe ", ""},
        {"velbooter.exe  ", " "},
        {"velbooter.exe mydisk", "mydisk"},
        {"velbooter.exe  mydisk ", " mydisk "},
        {"velbooter.exe\tmydisk", "mydisk"},
        {"velbooter.exe\t-t 144 mydisk", "-t 144 mydisk"},
        {"velbooter.exe \tmydisk", "\tmydisk"},
        {"C:\\App\\velbooter.exe -t 144 mydisk C:\\a b.img", "-t 144 mydisk C:\\a b.img"},
        {"\"C:\\My App\\velbooter.exe\"", ""},
        {"\"C:\\My App\\velbooter.exe\" ", ""},
        {"\"C:\\My App\\velbooter.exe\" mydisk \"x y\"", "mydisk \"x y\""},
        {"\"C:\\My App\\\"velbooter.exe -t 144 mydisk out\\b.img", "-t 144 mydisk out\\b.img"},
        {"\"C:\\My App\"\\velbooter.exe", ""},
        {"", ""},
    };
    for (const Case& c : cases) EXPECT_EQ(ArgumentsOf(c.whole), c.text) << "[" << c.whole << "]";
}

TEST(CallText, SpacesAreNoArguments) {
    EXPECT_TRUE(IsWithoutArguments(""));
    EXPECT_TRUE(IsWithoutArguments("   "));
    EXPECT_FALSE(IsWithoutArguments(" mydisk"));
    EXPECT_FALSE(IsWithoutArguments(" \"\""));
    EXPECT_FALSE(IsWithoutArguments("\t"));
}

}  // namespace
}  // namespace velbooter::testing
