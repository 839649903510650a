// Cabinets of packers that people use, compared with what was packed.

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/realmode/unpack/FlatMachine.h"
#include "tests/realmode/unpack/RandomFiles.h"
#include "tests/realmode/unpack/Shell.h"
#include "tests/tools/cabarc/InTestFolder.h"

namespace realmode::unpack::testing {
namespace {

using tools::cabarc::testing::ReadBytes;
using tools::cabarc::testing::RunCabarc;
using tools::cabarc::testing::TreeOf;
using tools::cabarc::testing::WriteBytes;

class UnpackInterop : public tools::cabarc::testing::InTestFolder,
                      public ::testing::WithParamInterface<std::string> {
 protected:
    static void Compare(FlatMemory& memory, const std::string& what) {
        const Outcome outcome = Unpack(ReadBytes("out.cab"), memory);
        EXPECT_EQ(Fault::None, outcome.Result) << what << ": " << TextOf(outcome.Result);
        EXPECT_TRUE(outcome.Tree() == TreeOf("in")) << what << " gives other files or contents";
    }
};

std::string MethodName(const ::testing::TestParamInfo<std::string>& info) {
    std::string name = info.param;
    std::erase(name, ':');
    return name;
}

TEST_P(UnpackInterop, RandomFilesComeBack) {
    for (std::uint32_t seed = 1; seed <= 2; ++seed) {
        std::filesystem::remove_all("in");
        MakeRandomFiles("in", seed, 300'000);
        const auto packed = RunCabarc("-m " + GetParam() + " -p -r -P in n out.cab in\\*");
        ASSERT_EQ(0, packed.ExitCode) << packed.Errors;
        FlatMemory memory;
        Compare(memory, "seed " + std::to_string(seed));
        std::filesystem::remove_all("out");
        ASSERT_EQ(0, RunShell("cabextract -q -d out out.cab").ExitCode);
        EXPECT_TRUE(Unpack(ReadBytes("out.cab")).Tree() == TreeOf("out"))
            << "cabextract sees it in another way";
    }
}

INSTANTIATE_TEST_SUITE_P(Methods, UnpackInterop,
                         ::testing::Values("NONE", "MSZIP", "LZX:15", "LZX:16", "LZX:17", "LZX:18", "LZX:19",
                                           "LZX:20", "LZX:21"),
                         MethodName);

class UnpackWindow : public UnpackInterop {};

TEST_P(UnpackWindow, WhatDoesNotFitIsInTheStore) {
    // More data than the largest window.
    MakeRandomFiles("in", 7, 1'400'000);
    const auto packed = RunCabarc("-m " + GetParam() + " -p -r -P in n out.cab in\\*");
    ASSERT_EQ(0, packed.ExitCode) << packed.Errors;
    constexpr unsigned kDataPiece = 1;
    for (const unsigned frames : {1U, 2U, 3U, 20U, 63U, 64U}) {
        FlatMemory memory(kDataPiece + frames, 64);
        Compare(memory, std::to_string(frames) + " frames");
    }
}

TEST_P(UnpackWindow, WithoutMemoryForItNothingIsWritten) {
    MakeRandomFiles("in", 8, 100'000);
    ASSERT_EQ(0, RunCabarc("-m " + GetParam() + " -p -r -P in n out.cab in\\*").ExitCode);
    for (const auto& [pieces, fault] :
         {std::pair{0U, Fault::NoMemory}, {1U, Fault::NoMemory}, {2U, Fault::NoXms}}) {
        FlatMemory memory(pieces);
        const Outcome outcome = Unpack(ReadBytes("out.cab"), memory);
        EXPECT_EQ(fault, outcome.Result) << pieces;
        EXPECT_TRUE(outcome.Target.Created.empty());
    }
}

TEST_P(UnpackWindow, ItIsNoLongerThanTheFolder) {
    WriteBytes("in/A", tools::testing::TextLike(70'000));
    ASSERT_EQ(0, RunCabarc("-m " + GetParam() + " -p -r -P in n out.cab in\\*").ExitCode);
    FlatMemory memory;
    Compare(memory, "three frames");
    EXPECT_LE(memory.PieceCount(), 1U + 3U);
}

INSTANTIATE_TEST_SUITE_P(Methods, UnpackWindow, ::testing::Values("MSZIP", "LZX:16", "LZX:21"), MethodName);

class UnpackGcab : public tools::cabarc::testing::InTestFolder {};

TEST_F(UnpackGcab, ItsCabinetsComeBack) {
    for (const std::string options : {"-c", "-c -z"}) {
        std::filesystem::remove_all("in");
        MakeRandomFiles("in", 5, 500'000);
        const auto packed =
            RunShell("(cd in && gcab " + options + " ../out.cab $(find . -type f | cut -c3-))");
        ASSERT_EQ(0, packed.ExitCode) << packed.Errors;
        const Outcome outcome = Unpack(ReadBytes("out.cab"));
        EXPECT_EQ(Fault::None, outcome.Result) << TextOf(outcome.Result);
        EXPECT_TRUE(outcome.Tree() == TreeOf("in")) << options;
    }
}

}  // namespace
}  // namespace realmode::unpack::testing
