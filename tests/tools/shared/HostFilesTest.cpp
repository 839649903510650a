#include "tools/shared/HostFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>

#ifdef _WIN32
#include <cwchar>
#else
#include <sys/stat.h>
#endif

#include "tests/support/TestFolder.h"
#include "tools/shared/ToolError.h"

namespace tools::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST(ListFolder, SortsByNameWithoutCase) {
    const TestFolder folder;
    for (const char* name : {"b.txt", "A.txt", "c", "_"}) folder.Write(name, "");
    EXPECT_THAT(folder.Names(), ElementsAre("A.txt", "b.txt", "c", "_"));
}

TEST(ListFolder, TellsFilesFromFoldersAndTheirSizes) {
    const TestFolder folder;
    folder.MakeFolder("inner");
    folder.Write("some", RandomBytes(1234, 1));
    const std::vector<HostFile> found = ListFolder(folder.Path());
    ASSERT_EQ(2U, found.size());
    EXPECT_TRUE(found[0].IsFolder);
    EXPECT_FALSE(found[0].IsLink);
    EXPECT_EQ(0U, found[0].Size);
    EXPECT_FALSE(found[1].IsFolder);
    EXPECT_FALSE(found[1].IsSpecial);
    EXPECT_EQ(1234U, found[1].Size);
}

TEST(ListFolder, GivesLocalTimesOfSummerAndWinter) {
    const TestFolder folder;
    const DosTime winter = PackDosTime(1999, 1, 15, 12, 34, 56);
    const DosTime summer = PackDosTime(1999, 7, 15, 0, 2, 4);
    folder.Write("summer", RandomBytes(1, 1), summer, kArchive);
    folder.Write("winter", RandomBytes(1, 1), winter, kArchive);
    const std::vector<HostFile> found = ListFolder(folder.Path());
    ASSERT_EQ(2U, found.size());
    EXPECT_EQ(found[0].Modified, summer);
    EXPECT_EQ(found[1].Modified, winter);
}

TEST(ListFolder, GivesAttributes) {
    const TestFolder folder;
    folder.Write("locked", RandomBytes(1, 1), DosTime{}, kReadOnly);
    folder.Write("plain", RandomBytes(1, 1), DosTime{}, kArchive);
    const std::vector<HostFile> found = ListFolder(folder.Path());
    ASSERT_EQ(2U, found.size());
    // Wine gives every file the archive attribute.
    EXPECT_EQ(kReadOnly, found[0].Attributes & ~kArchive);
    EXPECT_EQ(kArchive, found[1].Attributes);
}

#ifdef _WIN32
TEST(ListFolder, GivesHiddenAndSystemAttributes) {
    const TestFolder folder;
    folder.Write("all", RandomBytes(1, 1), DosTime{}, kReadOnly | kHidden | kSystem | kArchive);
    EXPECT_EQ(kReadOnly | kHidden | kSystem | kArchive, ListFolder(folder.Path()).at(0).Attributes);
}
#endif

TEST(ListFolder, NamesAreUtf8) {
    const TestFolder folder;
    folder.Write("\xC3\xA4\xD0\x96\xE2\x82\xAC.txt", "x");
    EXPECT_THAT(folder.Names(), ElementsAre("\xC3\xA4\xD0\x96\xE2\x82\xAC.txt"));
}

TEST(ListFolder, AMissingFolderIsNamed) {
    const TestFolder folder;
    EXPECT_THAT(ErrorOf([&] { ListFolder(folder.Path("none")); }),
                StartsWith(folder.Text("none") + ": this folder cannot be read: "));
}

TEST(ListFolder, AFileIsNoFolder) {
    const TestFolder folder;
    folder.Write("file", "x");
    EXPECT_THAT(ErrorOf([&] { ListFolder(folder.Path("file")); }), HasSubstr("this folder cannot be read"));
}

#ifndef _WIN32
TEST(ListFolder, MarksWhatIsReachedThroughLinksAndWhatIsNoFile) {
    const TestFolder folder;
    folder.Write("file", RandomBytes(77, 1));
    std::filesystem::create_symlink("file", folder.Path("link to file"));
    std::filesystem::create_directory_symlink(".", folder.Path("link to folder"));
    std::filesystem::create_symlink("nowhere", folder.Path("lost link"));
    ASSERT_EQ(0, mkfifo(folder.Path("pipe").c_str(), 0600));
    const std::vector<HostFile> found = ListFolder(folder.Path());
    ASSERT_EQ(5U, found.size());
    EXPECT_EQ(77U, found[1].Size);
    EXPECT_FALSE(found[1].IsLink || found[1].IsFolder || found[1].IsSpecial);
    EXPECT_TRUE(found[2].IsFolder && found[2].IsLink);
    EXPECT_TRUE(found[3].IsSpecial);
    EXPECT_TRUE(found[4].IsSpecial);
}

TEST(ListFolder, ANameThatIsNotUtf8IsShownInBytes) {
    const TestFolder folder;
    std::filesystem::create_directory(folder.Path() / "bad\xE4");
    EXPECT_THAT(ErrorOf([&] { ListFolder(folder.Path()); }), HasSubstr("a name that is not UTF-8: bad\\xE4"));
}
#endif

TEST(KindOf, TellsWhatStandsUnderAName) {
    const TestFolder folder;
    folder.MakeFolder("folder");
    folder.Write("file", "x");
    folder.Write("locked", "x");
    folder.SetReadOnly("locked", true);
    EXPECT_EQ(FileKind::Missing, KindOf(folder.Path("none")));
    EXPECT_EQ(FileKind::Folder, KindOf(folder.Path("folder")));
    EXPECT_EQ(FileKind::Writable, KindOf(folder.Path("file")));
    EXPECT_EQ(FileKind::ReadOnly, KindOf(folder.Path("locked")));
}

TEST(LiesBelow, LooksAtPlacesAndNotAtNames) {
    const TestFolder folder;
    folder.Write("tree/sub/file", "x");
    folder.Write("tree2/file", "x");
    const std::filesystem::path tree = folder.Path("tree");
    for (const char* name : {"tree/new", "tree/sub/file", "tree/none/new", "tree2/../tree/new"})
        EXPECT_TRUE(LiesBelow(folder.Path(name), tree)) << name;
    for (const char* name : {"tree", "tree2/file", "tree/../new", "none/new"})
        EXPECT_FALSE(LiesBelow(folder.Path(name), tree)) << name;
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(tree);
    for (const char* name : {"new", "sub/new", "none/new", "./new"})
        EXPECT_TRUE(LiesBelow(name, ".")) << name;
    EXPECT_FALSE(LiesBelow("../new", "."));
    std::filesystem::current_path(before);
    EXPECT_TRUE(LiesBelow(tree, tree.root_path()));
    EXPECT_FALSE(LiesBelow(tree, folder.Path("none")));
}

TEST(FreeSpace, IsThatOfTheDriveOfAFolderThatNeedNotExist) {
    const TestFolder folder;
    const std::uint64_t there = FreeSpace(folder.Path());
    const std::uint64_t missing = FreeSpace(folder.Path("none/deeper"));
    EXPECT_GT(there, 0U);
    EXPECT_LT(there, std::uint64_t{1} << 60) << "a number that the system gave";
    // Other programs may write to the drive meanwhile.
    EXPECT_NEAR(static_cast<double>(missing), static_cast<double>(there), 0.5 * static_cast<double>(there));
    EXPECT_LT(FreeSpace(""), std::uint64_t{1} << 60);
}

TEST(SizeOf, IsThatOfAFile) {
    const TestFolder folder;
    folder.Write("file", RandomBytes(1234, 1));
    EXPECT_EQ(1234U, SizeOf(folder.Path("file")));
    EXPECT_EQ(0U, SizeOf(folder.Path("none")));
    EXPECT_EQ(0U, SizeOf(folder.Path()));
}

TEST(IsSame, KnowsAFileByAnyOfItsNames) {
    const TestFolder folder;
    folder.Write("sub/file", "x");
    folder.Write("other", "x");
    EXPECT_TRUE(IsSame(folder.Path("sub/file"), folder.Path("sub/../sub/file")));
    EXPECT_TRUE(IsSame(folder.Path("sub"), folder.Path("sub") / ""));
    EXPECT_FALSE(IsSame(folder.Path("sub/file"), folder.Path("other")));
    EXPECT_FALSE(IsSame(folder.Path("none"), folder.Path("none")));
}

TEST(CreateFolders, MakesParentsAndAcceptsWhatIsThere) {
    const TestFolder folder;
    CreateFolders(folder.Path("a/b/c"));
    CreateFolders(folder.Path("a/b/c"));
    EXPECT_EQ(FileKind::Folder, KindOf(folder.Path("a/b/c")));
}

TEST(CreateFolders, AFileInTheWayIsAnError) {
    const TestFolder folder;
    folder.Write("a", "x");
    EXPECT_THAT(ErrorOf([&] { CreateFolders(folder.Path("a/b")); }),
                HasSubstr("this folder cannot be created: "));
    EXPECT_THAT(ErrorOf([&] { CreateFolders(folder.Path("a")); }),
                HasSubstr("this folder cannot be created: "));
}

#ifdef _WIN32
// A folder in the root of the tests' drive that does not exist.
class CreateFoldersBelowARoot : public ::testing::Test {
 protected:
    CreateFoldersBelowARoot() {
        std::random_device random;
        do {
            folder_ =
                std::filesystem::current_path().root_path() / ("velbooter test " + std::to_string(random()));
        } while (KindOf(folder_) != FileKind::Missing);
    }
    ~CreateFoldersBelowARoot() override {
        _wrmdir((folder_ / "inner").c_str());
        _wrmdir(folder_.c_str());
    }
    CreateFoldersBelowARoot(const CreateFoldersBelowARoot&) = delete;
    CreateFoldersBelowARoot& operator=(const CreateFoldersBelowARoot&) = delete;

    const std::filesystem::path& Folder() const { return folder_; }

 private:
    std::filesystem::path folder_;
};

TEST_F(CreateFoldersBelowARoot, AreMade) {
    EXPECT_EQ("(no error)", ErrorOf([&] { CreateFolders(Folder()); }));
    EXPECT_EQ(FileKind::Folder, KindOf(Folder()));
}

TEST_F(CreateFoldersBelowARoot, AreMadeWithWhatIsBelowThem) {
    EXPECT_EQ("(no error)", ErrorOf([&] { CreateFolders(Folder() / "inner" / ""); }));
    EXPECT_EQ(FileKind::Folder, KindOf(Folder() / "inner"));
}

TEST(CreateFolders, OnAShareThatIsMissingTheFolderIsNamed) {
    EXPECT_THAT(ErrorOf([] { CreateFolders("\\\\velbooter-no-server\\share\\a\\b"); }),
                StartsWith("\\\\velbooter-no-server\\share\\a\\b: this folder cannot be created: "));
}
#endif

}  // namespace
}  // namespace tools::testing
