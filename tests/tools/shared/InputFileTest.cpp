#include "tools/shared/InputFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>

#include "tests/support/LockedFile.h"
#else
#include <cerrno>
#endif

#include <algorithm>

#include "tests/support/TestFolder.h"
#include "tools/shared/HostText.h"
#include "tools/shared/ToolError.h"

namespace tools::testing {
namespace {

TEST(InputFile, ReadsPieceByPieceToTheEnd) {
    const TestFolder folder;
    const Bytes content = RandomBytes(1000, 1);
    folder.Write("file", content);
    InputFile file(folder.Path("file"));
    EXPECT_EQ(1000U, file.Size());
    Bytes first(400);
    Bytes rest(601);
    EXPECT_EQ(400U, file.Read(first));
    EXPECT_EQ(400U, file.Position());
    EXPECT_EQ(600U, file.Read(rest));
    EXPECT_EQ(0U, file.Read(rest)) << "at the end";
    EXPECT_TRUE(std::equal(first.begin(), first.end(), content.begin()));
    EXPECT_TRUE(std::equal(rest.begin(), rest.begin() + 600, content.begin() + 400));
}

TEST(InputFile, MovesToAnyPlace) {
    const TestFolder folder;
    folder.Write("file", "abcdef");
    InputFile file(folder.Path("file"));
    Bytes two(2);
    for (const auto& [place, expected] : {std::pair{4, Bytes{'e', 'f'}}, std::pair{0, Bytes{'a', 'b'}}}) {
        file.Seek(static_cast<std::uint64_t>(place));
        EXPECT_EQ(2U, file.Read(two));
        EXPECT_EQ(expected, two);
    }
    file.Seek(7);
    EXPECT_EQ(0U, file.Read(two)) << "beyond the end";
    EXPECT_EQ(7U, file.Position());
}

TEST(InputFile, AMissingFileIsNamedWithTheReason) {
    const TestFolder folder;
    constexpr int kNoSuchFile = 2;  // on both systems
    EXPECT_EQ(folder.Text("none") + ": cannot be opened: " + SystemReason(kNoSuchFile),
              ErrorOf([&] { InputFile(folder.Path("none")); }));
}

#ifdef _WIN32
TEST(InputFile, AFileThatIsHeldIsNamedWithTheReason) {
    const TestFolder folder;
    folder.Write("file", "x");
    const testing::LockedFile lock(folder.Path("file"));
    EXPECT_EQ(folder.Text("file") + ": cannot be opened: " + SystemReason(ERROR_SHARING_VIOLATION),
              ErrorOf([&] { InputFile(folder.Path("file")); }));
}
#else
TEST(InputFile, WhatCannotBeReadIsNamedWithTheReason) {
    const TestFolder folder;
    InputFile file(folder.Path());
    Bytes byte(1);
    EXPECT_EQ(folder.Text() + ": cannot be read: " + SystemReason(EISDIR), ErrorOf([&] { file.Read(byte); }));
}
#endif

TEST(InputFile, ReachesBeyondTheUsualLimit) {
    const TestFolder folder;
    std::string deep;
    for (int i = 0; i < 8; ++i) deep += std::string(60, static_cast<char>('a' + i)) + "/";
    folder.Write(deep + "file", "far");
    Bytes read(3);
    EXPECT_EQ(3U, InputFile(folder.Path(deep + "file")).Read(read));
    EXPECT_EQ((Bytes{'f', 'a', 'r'}), read);
}

TEST(ReadWhole, FillsTheBuffer) {
    const TestFolder folder;
    const testing::Bytes content = RandomBytes(100'000, 3);
    folder.Write("file", content);
    testing::Bytes read(content.size());
    ReadWhole(folder.Path("file"), read);
    EXPECT_EQ(content, read);
}

TEST(ReadWhole, AFileOfAnotherSizeHasChanged) {
    const TestFolder folder;
    folder.Write("file", "abc");
    for (const std::size_t size : {0U, 2U, 4U}) {
        testing::Bytes read(size);
        EXPECT_EQ(folder.Text("file") + ": changed while it was being read",
                  ErrorOf([&] { ReadWhole(folder.Path("file"), read); }));
    }
}

}  // namespace
}  // namespace tools::testing
