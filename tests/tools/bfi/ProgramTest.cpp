#include <gmock/gmock.h>
#include <gtest/gtest.h>

#ifndef _WIN32
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

extern char** environ;
#endif

#include "tests/support/BuiltFile.h"
#include "tests/support/RunProgram.h"
#include "tests/tools/bfi/ImageFixture.h"
#include "tools/shared/HostText.h"

namespace tools::bfi::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;
using tools::testing::ProgramResult;
using tools::testing::RunProgram;
using tools::testing::TestFolder;

std::string BfiPath() {
    return Utf8FromPath(tools::testing::BuiltFile("demo/bfi.exe", BFI_PROGRAM));
}

class BfiProgram : public ::testing::Test {
 protected:
    BfiProgram() {
        Files.Write("boot.bin", SampleBootSector());
        Files.Write("tree/a.txt", "hello");
    }

    std::vector<std::string> Words(const std::string& image, const std::string& type = "144") const {
        return {BfiPath(),    "-b=" + Files.Text("boot.bin"), "-l=Velstart",
                "-t=" + type, "-f=" + Files.Text(image),      Files.Text("tree")};
    }

    const TestFolder Files;
};

TEST_F(BfiProgram, IsSilentAndGives0WhenTheImageIsWritten) {
    const ProgramResult result = RunProgram(Words("a b.img"));
    EXPECT_EQ(0, result.ExitCode);
    EXPECT_EQ("", result.All());
    EXPECT_EQ((Bytes{'h', 'e', 'l', 'l', 'o'}), ReadFatImage(Files.Read("a b.img")).At("A.TXT").Content);
}

TEST_F(BfiProgram, WritesAnImageOfEachSize) {
    const std::pair<const char*, std::size_t> sizes[] = {{"144", 1440}, {"288", 2880},  {"360", 360},
                                                         {"720", 720},  {"1200", 1200}, {"1680", 1680}};
    for (const auto& [type, kilobytes] : sizes) {
        const ProgramResult result = RunProgram(Words("a.img", type));
        EXPECT_EQ(0, result.ExitCode) << type << ": " << result.All();
        EXPECT_EQ(Files.Read("a.img").size(), kilobytes * 1024) << type;
    }
}

TEST_F(BfiProgram, AWrongCallShowsTheUsageAndGives2) {
    const ProgramResult result = RunProgram({BfiPath()});
    EXPECT_EQ(2, result.ExitCode);
    EXPECT_THAT(result.All(), StartsWith("bfi: the boot sector (-b=) is missing\nUsage: bfi "));
}

TEST_F(BfiProgram, AFailureIsOneLineAndGives1) {
    Files.Write("boot.bin", "short");
    const ProgramResult result = RunProgram(Words("a.img"));
    EXPECT_EQ(1, result.ExitCode);
    EXPECT_EQ("bfi: " + Files.Text("boot.bin") + ": a boot sector file must be exactly 512 bytes long\n",
              result.All());
    EXPECT_FALSE(Files.Exists("a.img"));
}

TEST_F(BfiProgram, TakesNamesThatAreNotAscii) {
    const std::string name = "\xD0\x94\xD0\xB8\xD1\x81\xD0\xBA \xE2\x82\xAC.img";
    EXPECT_EQ(0, RunProgram(Words(name)).ExitCode);
    EXPECT_TRUE(Files.Exists(name));
}

TEST_F(BfiProgram, WildcardsInAnArgumentAreLeftAlone) {
    std::vector<std::string> words = Words("a.img");
    words.back() = Files.Text() + "/t*";
    const ProgramResult result = RunProgram(words);
    EXPECT_EQ(1, result.ExitCode);
    EXPECT_THAT(result.All(), HasSubstr("/t*: this folder cannot be read: "));
}

#ifndef _WIN32
TEST_F(BfiProgram, KilledAtAnyMomentItLeavesTheOldImageOrTheNewOne) {
    Files.Write("tree/big.bin", RandomBytes(1'400'000, 1));
    ASSERT_EQ(0, RunProgram(Words("new.img")).ExitCode);
    const Bytes complete = Files.Read("new.img");
    const Bytes old = RandomBytes(1000, 2);
    for (int run = 0; run < 60; ++run) {
        Files.Write("out.img", old);
        std::vector<std::string> words = Words("out.img");
        std::vector<char*> arguments;
        for (std::string& word : words) arguments.push_back(word.data());
        arguments.push_back(nullptr);
        pid_t process = 0;
        ASSERT_EQ(0, posix_spawn(&process, BfiPath().c_str(), nullptr, nullptr, arguments.data(), environ));
        usleep(static_cast<useconds_t>(run * 150));
        kill(process, SIGKILL);
        int status = 0;
        waitpid(process, &status, 0);
        const Bytes left = Files.Read("out.img");
        EXPECT_TRUE(left == old || left == complete) << "killed after " << run * 150 << " microseconds";
    }
    EXPECT_EQ(0, RunProgram(Words("out.img")).ExitCode);
    EXPECT_EQ(complete, Files.Read("out.img"));
    EXPECT_FALSE(Files.Exists("out.img.unfinished~"));
}
#endif

}  // namespace
}  // namespace tools::bfi::testing
