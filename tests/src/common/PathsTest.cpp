#include "src/common/Paths.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "src/common/Folders.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

class ShortPaths : public ::testing::Test {
 protected:
    ApplicationFolder Folder;
};

TEST(PathHelpers, AddTrailingBackslash) {
    struct Case {
        std::string path, expected;
    };
    const Case cases[] = {
        {"C:\\Temp", "C:\\Temp\\"},
        {"C:\\Temp\\", "C:\\Temp\\"},
        {"C:\\Temp/", "C:\\Temp/"},
        {"C:\\Temp  ", "C:\\Temp\\"},
        {" C:\\Temp", " C:\\Temp\\"},
        {" C:\\Temp\\  ", " C:\\Temp\\  "},
        {"", "\\"},
        {"   ", "\\"},
        {"\\", "\\"},
    };
    for (const Case& c : cases) {
        std::string path = c.path;
        AddTrailingBackslash(path);
        EXPECT_EQ(c.expected, path) << "[" << c.path << "]";
    }
}

TEST(PathHelpers, IsPathSeparator) {
    EXPECT_TRUE(IsPathSeparator("\\"));
    EXPECT_TRUE(IsPathSeparator("/"));
    EXPECT_FALSE(IsPathSeparator(":"));
    EXPECT_FALSE(IsPathSeparator("a"));
    EXPECT_FALSE(IsPathSeparator(""));
}

TEST(PathHelpers, SplitPathAtTheLastSeparator) {
    struct Case {
        std::string path, folder, file;
    };
    const Case cases[] = {
        {"C:\\a\\b.txt", "C:\\a", "b.txt"}, {"C:/a/b.txt", "C:/a", "b.txt"}, {"C:\\a/b\\c", "C:\\a/b", "c"},
        {"C:\\b.txt", "C:", "b.txt"},       {"bin\\x.cab", "bin", "x.cab"},  {"a\\\\b", "a\\", "b"},
        {"\\b.txt", "", "b.txt"},
    };
    for (const Case& c : cases) {
        std::string folder = "old", file = "old";
        EXPECT_TRUE(SplitPath(c.path, folder, file)) << c.path;
        EXPECT_EQ(c.folder, folder) << c.path;
        EXPECT_EQ(file, c.file) << c.path;
        EXPECT_EQ(GetFolderPart(c.path), c.folder) << c.path;
    }
}

TEST(PathHelpers, SplitPathWithoutASeparatorGivesTheCurrentFolderAndFalse) {
    for (const std::string path : {"b.txt", "C:b.txt"}) {
        std::string folder = "old", file = "old";
        EXPECT_FALSE(SplitPath(path, folder, file));
        EXPECT_EQ(folder, CurrentFolder());
        EXPECT_EQ(file, path);
        EXPECT_EQ(CurrentFolder(), GetFolderPart(path));
    }
}

TEST(PathHelpers, SplitPathOfAPathThatEndsInASeparatorSetsNothing) {
    for (const std::string path : {"C:\\a\\", "C:/a/", "\\"}) {
        std::string folder = "old", file = "old too";
        EXPECT_FALSE(SplitPath(path, folder, file)) << path;
        EXPECT_EQ("old", folder) << path;
        EXPECT_EQ("old too", file) << path;
        EXPECT_EQ("", GetFolderPart(path)) << path;
    }
}

TEST(PathHelpers, QuotePath) {
    struct Case {
        std::string text;
        bool force, trim;
        std::string expected;
    };
    const Case cases[] = {
        {"a b", false, false, "\"a b\""},
        {"\"a\"", false, false, "\"a\""},
        {"\"a\"", true, false, "\"\"a\"\""},
        {" a ", false, false, "\" a \""},
        {" a ", false, true, "\"a\""},
        {" \"a\" ", false, true, "\"a\""},
        {" \"a\" ", false, false, "\" \"a\" \""},
        {" \"a\" ", true, true, "\"\"a\"\""},
        {"\"a", false, false, "\"\"a\""},
        {"a\"", false, false, "\"a\"\""},
        {"", false, false, "\"\""},
        {"", true, true, "\"\""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(QuotePath(c.text, c.force, c.trim), c.expected) << c.text << c.force << c.trim;
    }
}

TEST(PathHelpers, UnquotePath) {
    struct Case {
        std::string text, expected;
    };
    const Case cases[] = {
        {"\"a b\"", "a b"},     {"  \"a b\"  ", "a b"}, {"  a b ", "a b"}, {"\"a", "\"a"},     {"a\"", "a\""},
        {"\"\"a\"\"", "\"a\""}, {"\"\"", ""},           {"", ""},          {"\" a \"", " a "},
    };
    for (const Case& c : cases) EXPECT_EQ(UnquotePath(c.text), c.expected) << c.text;
}

TEST_F(ShortPaths, GetShortPathOfAnExistingFileIsTheSystemsOwn) {
    const std::string file = Folder.Write("a long folder name\\a long file name.text");
    char expected[MAX_PATH];
    ASSERT_NE(0u, GetShortPathNameA(file.c_str(), expected, MAX_PATH));
    EXPECT_EQ(expected, GetShortPath(file));
    EXPECT_EQ(std::string::npos, GetShortPath(file).find(' '));
}

TEST_F(ShortPaths, GetShortPathOfAMissingFileIsThePathUnchanged) {
    EXPECT_EQ(Folder.At("no such file.text"), GetShortPath(Folder.At("no such file.text")));
    EXPECT_EQ("", GetShortPath(""));
}

// The buffer for the system's answer has space for 299 characters.
TEST_F(ShortPaths, GetShortPathOfATooLongPathIsThePathUnchanged) {
    std::string path = "\\\\?\\" + Folder.Path() + "\\x";
    while (path.size() < 320) {
        ASSERT_TRUE(::CreateDirectoryW(std::wstring(path.begin(), path.end()).c_str(), nullptr)) << path;
        path += "\\deep.sub";  // its short form is the name itself
    }
    path.erase(path.rfind('\\'));
    ASSERT_GE(path.size(), 300U);
    EXPECT_EQ(path, GetShortPath(path));
    EXPECT_TRUE(DeleteTree(Folder.At("x")));
}

}  // namespace
}  // namespace velbooter::testing
