#include "tools/cabarc/SourceFiles.h"

#include <gmock/gmock.h>

#include <fstream>

#include "tests/support/LeftPart.h"
#include "tests/tools/cabarc/InTestFolder.h"
#include "tools/shared/ToolError.h"

namespace tools::cabarc::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::ThrowsMessage;
using Names = std::vector<std::string>;

Names Found(const Names& patterns, bool recurse, const std::string& cabinet = "out.cab") {
    Names paths;
    for (const SourceFile& file : FindSourceFiles(patterns, recurse, cabinet)) paths.push_back(file.Path);
    return paths;
}

class SourceFiles : public InTestFolder {
 protected:
    SourceFiles() {
        for (const char* name : {"files/net/b.txt", "files/net/A.TXT", "files/net/c", "files/net/Sub/z.txt",
                                 "files/net/Sub/deep/y.txt", "files/net/alpha/x.bin", "top.txt"}) {
            WriteBytes(name, BytesOf(name));
        }
        std::filesystem::create_directories("files/net/empty");
    }
};

TEST_F(SourceFiles, AreFoundFolderByFolderInOrder) {
    EXPECT_THAT(
        Found({"files\\net\\*.*"}, true),
        ElementsAre("files\\net\\A.TXT", "files\\net\\b.txt", "files\\net\\c", "files\\net\\alpha\\x.bin",
                    "files\\net\\Sub\\z.txt", "files\\net\\Sub\\deep\\y.txt"));
}

TEST_F(SourceFiles, StayInTheFolderOfThePatternWithoutRecursion) {
    EXPECT_THAT(Found({"files/net/*.txt"}, false), ElementsAre("files/net/A.TXT", "files/net/b.txt"));
    EXPECT_THAT(Found({"*"}, false), ElementsAre("top.txt"));
}

TEST_F(SourceFiles, RecursionLooksForThePatternEverywhereBelow) {
    EXPECT_THAT(Found({"files\\net\\y.*"}, true), ElementsAre("files\\net\\Sub\\deep\\y.txt"));
    EXPECT_THAT(Found({"z.txt"}, true), ElementsAre("files\\net\\Sub\\z.txt"));
}

TEST_F(SourceFiles, FollowTheOrderOfThePatternsAndComeOnce) {
    EXPECT_THAT(Found({"top.txt", "files\\net\\b.*", "files/net/*.txt"}, false),
                ElementsAre("top.txt", "files\\net\\b.txt", "files/net/A.TXT"));
}

TEST_F(SourceFiles, BringSizeTimeAndAttributes) {
    SetTime("top.txt", 1999, 12, 31, 23, 58, 58);
    const std::vector<SourceFile> files = FindSourceFiles(Names{"top.txt"}, false, "out.cab");
    ASSERT_EQ(1U, files.size());
    EXPECT_EQ(7U, files[0].Size);
    EXPECT_EQ(PackDosTime(1999, 12, 31, 23, 58, 58), files[0].Modified);
}

TEST_F(SourceFiles, NeverHoldTheCabinetItself) {
    WriteBytes("files/net/net.cab", BytesOf("old"));
    for (const char* left : {"files/net/net.cab.unfinished~", "files/net/net.cab.unfinished~2"}) {
        WriteBytes(left, BytesOf("left by a killed run"));
        tools::testing::MarkAsPart(left);
    }
    WriteBytes("files/net/Sub/net.cab", BytesOf("another"));
    EXPECT_THAT(Found({"files\\net\\net*"}, true, "files/net/net.cab"),
                ElementsAre("files\\net\\Sub\\net.cab"));
    EXPECT_THAT([] { Found({"files\\net\\net.cab"}, false, "files/net/../net/net.cab"); },
                ThrowsMessage<ToolError>("files\\net\\net.cab: there is no such file"));
}

TEST_F(SourceFiles, HoldAFileThatOnlyHasTheNameOfAnUnfinishedCabinet) {
    WriteBytes("files/net/net.cab.unfinished~", BytesOf("mine"));
    EXPECT_THAT(Found({"files\\net\\net*"}, true, "files/net/net.cab"),
                ElementsAre("files\\net\\net.cab.unfinished~"));
}

TEST_F(SourceFiles, PatternThatFindsNothingIsRefused) {
    for (const char* pattern : {"nothing.*", "files\\gone\\*.*", "files\\net\\empty\\*.*", "top.txt\\x"}) {
        EXPECT_THAT(
            [&] {
                Found({"top.txt", pattern}, true);
            },
            ThrowsMessage<ToolError>(std::string(pattern) + ": there is no such file"));
    }
}

TEST_F(SourceFiles, FolderInPlaceOfAFileIsRefused) {
    for (const char* pattern : {"files\\net", "files\\net\\", "files"}) {
        EXPECT_THAT(
            [&] { Found({pattern}, true); },
            ThrowsMessage<ToolError>(std::string(pattern) +
                                     ": this is a folder; to pack its files, name them, as with *.*"));
    }
}

TEST_F(SourceFiles, WildcardInTheFolderPartIsRefused) {
    EXPECT_THAT(
        [] { Found({"f*\\net\\*.*"}, true); },
        ThrowsMessage<ToolError>("f*\\net\\*.*: wildcards may stand in the last part of a path only"));
}

#ifndef _WIN32
TEST_F(SourceFiles, LinksToFoldersAndPipesAreRefusedAndLinksToFilesFollowed) {
    std::filesystem::create_symlink("../../top.txt", "files/net/link.txt");
    EXPECT_THAT(Found({"files\\net\\link.*"}, false), ElementsAre("files\\net\\link.txt"));
    std::filesystem::create_directory_symlink("..", "files/net/Sub/up");
    EXPECT_THAT(
        [] { Found({"files\\net\\*.*"}, true); },
        ThrowsMessage<ToolError>("files\\net\\Sub\\up: this is a link to a folder; links are not followed"));
    std::filesystem::create_symlink("nowhere", "files/net/broken.txt");
    EXPECT_THAT([] { Found({"files\\net\\*.txt"}, false); },
                ThrowsMessage<ToolError>("files\\net\\broken.txt: this is not an ordinary file"));
}

TEST_F(SourceFiles, NamesWithABackslashAreRefused) {
    std::filesystem::create_directory("odd");
    std::ofstream("odd/a\\b").put('x');
    EXPECT_THAT([] { Found({"odd/*"}, false); },
                ThrowsMessage<ToolError>("odd/a\\b: this name cannot be stored: it holds the character \\"));
}
#endif

}  // namespace
}  // namespace tools::cabarc::testing
