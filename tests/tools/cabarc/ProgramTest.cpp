// The program as its users start it: its exit codes, and what it prints to which stream.

#include <gmock/gmock.h>

#include "tests/tools/cabarc/InTestFolder.h"
#include "tests/tools/cabarc/ParsedCabinet.h"

namespace tools::cabarc::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

const std::string kPattern = "files\\net\\*.*";

class Program : public InTestFolder {
 protected:
    Program() { WriteBytes("files/net/a.txt", BytesOf("hello")); }
};

TEST_F(Program, PacksAndSaysSoOnStandardOutput) {
    const ProgramResult result = RunCabarc("-m NONE n out.cab " + kPattern);
    EXPECT_EQ(0, result.ExitCode);
    EXPECT_EQ("", result.Errors);
    const std::size_t size = ReadBytes("out.cab").size();
    EXPECT_EQ("out.cab: 1 file, 5 bytes packed into " + std::to_string(size) + "\n", result.Output);
    EXPECT_EQ(BytesOf("hello"), Parse(ReadBytes("out.cab")).Members[0].Contents);
}

TEST_F(Program, ListsOnStandardOutput) {
    RunCabarc("n out.cab " + kPattern);
    const ProgramResult result = RunCabarc("l out.cab");
    EXPECT_EQ(0, result.ExitCode);
    EXPECT_THAT(result.Output, HasSubstr("  a.txt"));
    EXPECT_EQ("", result.Errors);
}

TEST_F(Program, FailureIsOneLineOnStandardErrorAndExitCodeOne) {
    const ProgramResult result = RunCabarc("n out.cab gone.txt");
    EXPECT_EQ(1, result.ExitCode);
    EXPECT_EQ("", result.Output);
    EXPECT_EQ("cabarc: gone.txt: there is no such file\n", result.Errors);
    EXPECT_FALSE(std::filesystem::exists("out.cab"));
}

TEST_F(Program, WrongCallPrintsTheUsageAndExitsWithTwo) {
    for (const char* arguments : {"", "q", "-z n a b", "n out.cab", "-m LZX:22 n a b"}) {
        const ProgramResult result = RunCabarc(arguments);
        EXPECT_EQ(2, result.ExitCode) << arguments;
        EXPECT_EQ("", result.Output) << arguments;
        EXPECT_THAT(result.Errors, StartsWith("cabarc: ")) << arguments;
        EXPECT_THAT(result.Errors, HasSubstr("usage: cabarc [options] n CABINET FILE...")) << arguments;
    }
}

TEST_F(Program, HelpGoesToStandardOutput) {
    const ProgramResult result = RunCabarc("--help");
    EXPECT_EQ(0, result.ExitCode);
    EXPECT_THAT(result.Output, StartsWith("usage: cabarc"));
    EXPECT_EQ("", result.Errors);
}

TEST_F(Program, NoCabinetIsRefused) {
    WriteBytes("text.cab", BytesOf("this is a text"));
    const ProgramResult result = RunCabarc("l text.cab");
    EXPECT_EQ(1, result.ExitCode);
    EXPECT_EQ("cabarc: text.cab: this is not a cabinet\n", result.Errors);
}

#ifndef _WIN32
TEST_F(Program, ExtractionIsLeftToTheWindowsBuild) {
    RunCabarc("n out.cab " + kPattern);
    const ProgramResult result = RunCabarc("x out.cab");
    EXPECT_EQ(1, result.ExitCode);
    EXPECT_EQ("cabarc: only the Windows build of cabarc extracts files; this one packs and lists\n",
              result.Errors);
}
#endif

}  // namespace
}  // namespace tools::cabarc::testing
