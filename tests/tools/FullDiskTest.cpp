// What the companions do when a write fails half-way. Only this test program is linked with the full disk;
// all others write by the system's own calls.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/FullDisk.h"
#include "tests/tools/bfi/ImageFixture.h"
#include "tests/tools/cabarc/InTestFolder.h"
#include "tools/cabarc/Cabarc.h"
#include "tools/cabarc/Extractor.h"
#include "tools/shared/OutputFile.h"
#include "tools/shared/ToolError.h"
#include "tools/shared/ToolMain.h"

namespace tools::testing {
namespace {

using cabarc::testing::ReadBytes;
using cabarc::testing::TreeOf;
using cabarc::testing::WriteBytes;
using ::testing::ElementsAre;
using ::testing::ThrowsMessage;
using Words = std::vector<std::string>;

TEST(FileOnAFullDisk, AFullDiskIsReportedAndLeavesTheOldFile) {
    const TestFolder folder;
    folder.Write("target", "old");
    {
        const FullDisk disk(5000);
        OutputFile file(folder.Path("target"));
        file.Write(RandomBytes(5000));
        const std::string refusal = folder.Text("target") + ": cannot be written: " + FullDisk::Reason();
        EXPECT_EQ(refusal, ErrorOf([&] { file.Write(RandomBytes(1)); }));
        EXPECT_EQ(refusal, ErrorOf([&] { file.WriteAt(4999, RandomBytes(2)); }));
        EXPECT_EQ(refusal, ErrorOf([&] { file.Resize(5001); }));
    }
    EXPECT_EQ((Bytes{'o', 'l', 'd'}), folder.Read("target"));
    EXPECT_THAT(folder.Names(), ElementsAre("target"));
}

TEST(FileOnAFullDisk, WhatFillsADiskToItsLastByteIsWritten) {
    const TestFolder folder;
    const FullDisk disk(5000);
    OutputFile file(folder.Path("target"));
    file.Write(RandomBytes(5000));
    file.Commit();
    EXPECT_EQ(folder.Read("target"), RandomBytes(5000));
}

class ImageOnAFullDisk : public bfi::testing::ImageTest {
 protected:
    ImageOnAFullDisk() {
        Files.Write("tree/a.txt", "a");
        Files.Write("out.img", "older image");
    }

    void ExpectOldImage() const {
        EXPECT_EQ(BytesOf("older image"), Files.Read("out.img"));
        EXPECT_THAT(Files.Names(), ElementsAre("boot.bin", "out.img", "tree")) << "no part is left";
    }
};

// A disk that is full at the start, in the middle of the files, and at the last byte.
TEST_P(ImageOnAFullDisk, AFullDiskIsNamedAndLeavesTheOldImage) {
    const std::size_t size = Format().ImageBytes();
    Files.Write("tree/big", RandomBytes(size / 3 * 2));
    for (const std::size_t bytes : {std::size_t{0}, size / 2, size - 1}) {
        const FullDisk disk(bytes);
        EXPECT_EQ(Files.Text("out.img") + ": cannot be written: " + FullDisk::Reason(), Refusal());
        ExpectOldImage();
    }
}

TEST_P(ImageOnAFullDisk, AnImageThatFillsTheDiskIsWritten) {
    const FullDisk disk(Format().ImageBytes());
    EXPECT_EQ(Bytes{'a'}, Build().At("A.TXT").Content);
}

TEST_P(ImageOnAFullDisk, AFullDiskEndsTheProgramWithTheExitCodeOfAFailure) {
    const FullDisk disk(1000);
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(1, RunTool("bfi", [&] { bfi::BuildImage(Request()); }));
    EXPECT_EQ("bfi: " + Files.Text("out.img") + ": cannot be written: " + FullDisk::Reason() + "\n",
              ::testing::internal::GetCapturedStderr());
    ExpectOldImage();
}

VELBOOTER_EVERY_FORMAT(ImageOnAFullDisk);

class CabinetOnAFullDisk : public cabarc::testing::InTestFolder {};

TEST_F(CabinetOnAFullDisk, AFullDiskIsNamedAndLeavesTheOldCabinet) {
    WriteBytes("in/a", RandomBytes(100'000));
    WriteBytes("out.cab", BytesOf("older cabinet"));
    // Full at the start, within the directory, and in the middle of the data.
    for (const std::uint64_t bytes : {0, 20, 50'000}) {
        const FullDisk disk(bytes);
        EXPECT_THAT(
            [] {
                cabarc::Run(Words{"-m", "NONE", "n", "out.cab", "in\\*.*"});
            },
            ThrowsMessage<ToolError>("out.cab: cannot be written: " + FullDisk::Reason()));
        EXPECT_EQ(BytesOf("older cabinet"), ReadBytes("out.cab"));
        EXPECT_EQ(2U, TreeOf(".").size()) << "no part is left";
    }
}

TEST_F(CabinetOnAFullDisk, AFullDiskEndsTheProgramWithTheExitCodeOfAFailure) {
    WriteBytes("in/a", RandomBytes(100'000));
    const FullDisk disk(50'000);
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(1, RunTool("cabarc", [] { cabarc::Run(Words{"n", "out.cab", "in\\*.*"}); }));
    EXPECT_EQ("cabarc: out.cab: cannot be written: " + FullDisk::Reason() + "\n",
              ::testing::internal::GetCapturedStderr());
    EXPECT_EQ(1U, TreeOf(".").size()) << "neither a cabinet nor a part of one";
}

TEST_F(CabinetOnAFullDisk, AMemberIsNamedAndLeavesTheOldFile) {
    WriteBytes("a", BytesOf("old"));
    cabarc::CabinetDirectory directory;
    directory.Members.resize(1);
    const std::vector<cabarc::PlannedMember> plan{{0, "a"}};
    {
        const FullDisk disk(1000);
        cabarc::MemberFiles files(directory, plan, true);
        EXPECT_TRUE(files.Begin(0));
        files.Write(RandomBytes(600));
        EXPECT_THAT([&] { files.Write(RandomBytes(600)); },
                    ThrowsMessage<ToolError>("a: cannot be written: " + FullDisk::Reason()));
    }
    EXPECT_EQ(BytesOf("old"), ReadBytes("a"));
    EXPECT_EQ(1U, TreeOf(".").size()) << "no part is left";
}

}  // namespace
}  // namespace tools::testing
