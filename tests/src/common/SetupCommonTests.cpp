#include "src/common/SetupCommon.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "src/common/FileSystem.h"
#include "src/common/RuntimeError.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

using std::string_literals::operator""s;

class SystemHelpers : public ::testing::Test {
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

TEST(PathHelpers, TrimAtNul) {
    EXPECT_EQ("", TrimAtNul(""));
    EXPECT_EQ("abc", TrimAtNul("abc"));
    EXPECT_EQ("3", TrimAtNul("3\0"s));
    EXPECT_EQ("", TrimAtNul("\0abc"s));
    EXPECT_EQ("a", TrimAtNul("a\0b\0c"s));
    EXPECT_EQ(" a ", TrimAtNul(" a \0 "s));
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
        EXPECT_EQ(c.file, file) << c.path;
        EXPECT_EQ(c.folder, GetFolderPart(c.path)) << c.path;
    }
}

TEST(PathHelpers, SplitPathWithoutASeparatorGivesTheCurrentFolderAndFalse) {
    for (const std::string path : {"b.txt", "C:b.txt"}) {
        std::string folder = "old", file = "old";
        EXPECT_FALSE(SplitPath(path, folder, file));
        EXPECT_EQ(CurrentFolder(), folder);
        EXPECT_EQ(path, file);
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
        EXPECT_EQ(c.expected, QuotePath(c.text, c.force, c.trim)) << c.text << c.force << c.trim;
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
    for (const Case& c : cases) EXPECT_EQ(c.expected, UnquotePath(c.text)) << c.text;
}

TEST_F(SystemHelpers, GetShortPathOfAnExistingFileIsTheSystemsOwn) {
    const std::string file = Folder.Write("a long folder name\\a long file name.text");
    char expected[MAX_PATH];
    ASSERT_NE(0u, GetShortPathNameA(file.c_str(), expected, MAX_PATH));
    EXPECT_EQ(expected, GetShortPath(file));
    EXPECT_EQ(std::string::npos, GetShortPath(file).find(' '));
}

TEST_F(SystemHelpers, GetShortPathOfAMissingFileIsThePathUnchanged) {
    EXPECT_EQ(Folder.At("no such file.text"), GetShortPath(Folder.At("no such file.text")));
    EXPECT_EQ("", GetShortPath(""));
}

// The system is asked for at most 299 characters.
TEST_F(SystemHelpers, GetShortPathOfATooLongPathIsThePathUnchanged) {
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

TEST(SystemFolders, EndInABackslash) {
    char buffer[MAX_PATH];
    GetWindowsDirectoryA(buffer, MAX_PATH);
    EXPECT_EQ(std::string(buffer) + "\\", GetWindowsFolder());
    GetSystemDirectoryA(buffer, MAX_PATH);
    EXPECT_EQ(std::string(buffer) + "\\", GetSystemFolder());
}

TEST(ProgramFolder, IsThatOfTheRunningProgram) {
    EXPECT_TRUE(FileExists(GetProgramFolder() + "\\test_common.exe"));
}

TEST_F(SystemHelpers, FileExistsForAFileThatCanBeRead) {
    const std::string file = Folder.Write("a b.txt");
    EXPECT_TRUE(FileExists(file));
    EXPECT_FALSE(FileExists(Folder.At("missing.txt")));
    EXPECT_FALSE(FileExists(Folder.At("nowhere\\missing.txt")));
    EXPECT_FALSE(FileExists(Folder.MakeFolder("folder")));
    EXPECT_FALSE(FileExists(""));
}

TEST_F(SystemHelpers, FileExistsIsFalseForALockedFile) {
    const std::string file = Folder.Write("a.txt");
    LockedFile lock(file);
    EXPECT_FALSE(FileExists(file));
    lock.Release();
    EXPECT_TRUE(FileExists(file));
}

TEST_F(SystemHelpers, FileExistsDropsOnePairOfQuotesAndOneTrailingBackslash) {
    const std::string file = Folder.Write("a b.txt");
    EXPECT_TRUE(FileExists("\"" + file + "\""));
    EXPECT_TRUE(FileExists("\"" + file + "\\\""));
    EXPECT_TRUE(FileExists(file + "\\"));
    EXPECT_TRUE(FileExists("  \"" + file + "\"  "));
    EXPECT_FALSE(FileExists("\"\"" + file + "\"\""));
}

TEST_F(SystemHelpers, FileExistsOfAPatternCountsFilesAndFolders) {
    Folder.Write("bin\\a.cab");
    Folder.MakeFolder("bin\\sub.dir");
    Folder.MakeFolder("empty");
    EXPECT_TRUE(FileExists(Folder.At("bin\\*.cab")));
    EXPECT_TRUE(FileExists(Folder.At("bin\\*.dir")));
    EXPECT_FALSE(FileExists(Folder.At("bin\\*.sys")));
    EXPECT_TRUE(FileExists(Folder.At("empty\\*.*"))) << "an empty folder lists itself";
    EXPECT_FALSE(FileExists(Folder.At("nowhere\\*.*")));
    EXPECT_TRUE(FileExists("\"" + Folder.At("bin\\*.cab") + "\""));
}

TEST_F(SystemHelpers, FolderExists) {
    Folder.Write("full\\a.txt");
    Folder.MakeFolder("empty");
    EXPECT_TRUE(FolderExists(Folder.At("full")));
    EXPECT_TRUE(FolderExists(Folder.At("empty")));
    EXPECT_TRUE(FolderExists(Folder.At("empty\\")));
    EXPECT_TRUE(FolderExists("C:"));
    EXPECT_TRUE(FolderExists("C:\\"));
    EXPECT_FALSE(FolderExists(Folder.At("missing")));
    EXPECT_FALSE(FolderExists(Folder.At("full\\a.txt")));
    EXPECT_FALSE(FolderExists("Q:\\x"));
    EXPECT_FALSE(FolderExists("C:\\a<b>|?"));
}

TEST_F(SystemHelpers, ABlankPathIsNoFolder) {
    EXPECT_FALSE(FolderExists(""));
    EXPECT_FALSE(FolderExists("   "));
}

TEST_F(SystemHelpers, CreateFolderPathMakesEveryMissingFolderAndShowsTheBackslash) {
    std::string path = Folder.At("a\\b\\c");
    EXPECT_TRUE(CreateFolderPath(path));
    EXPECT_EQ(Folder.At("a\\b\\c\\"), path);
    EXPECT_TRUE(Folder.HasFolder("a\\b\\c"));
    EXPECT_TRUE(CreateFolderPath(path)) << "an existing folder is a success";
    EXPECT_EQ(Folder.At("a\\b\\c\\"), path);
}

TEST_F(SystemHelpers, CreateFolderPathFailsWhereAFileIsInTheWay) {
    Folder.Write("a");
    std::string path = Folder.At("a\\b");
    EXPECT_FALSE(CreateFolderPath(path));
    EXPECT_EQ(Folder.At("a\\b\\"), path);
}

TEST_F(SystemHelpers, CreateFolderPathRefusesAPathThatIsTooLong) {
    for (const size_t length : {260, 300, 2000, 100000}) {
        std::string path = Folder.At(std::string(length, 'x'));
        EXPECT_FALSE(CreateFolderPath(path)) << length;
        EXPECT_EQ(Folder.At(std::string(length, 'x') + "\\"), path);
        std::string deep = Folder.Path();
        while (deep.size() < length) deep += "\\x";
        EXPECT_FALSE(CreateFolderPath(deep)) << length;
    }
    EXPECT_EQ((std::vector<std::string>{}), Folder.Tree(""));
    EXPECT_FALSE(Folder.HasFolder("x"));
}

TEST_F(SystemHelpers, DeleteFolderTreeRemovesReadOnlyHiddenAndSystemFiles) {
    Folder.Write("t\\a.txt");
    Folder.Write("t\\ro.txt");
    Folder.SetAttributes("t\\ro.txt", FILE_ATTRIBUTE_READONLY);
    Folder.Write("t\\sub\\hidden.txt");
    Folder.SetAttributes("t\\sub\\hidden.txt",
                         FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(DeleteFolderTree(Folder.At("t")));
    EXPECT_FALSE(Folder.HasFolder("t"));
}

TEST_F(SystemHelpers, DeleteFolderTreeRemovesFoldersBetweenFilesAndDeepTrees) {
    for (const char* name : {"a\\1.txt", "b.txt", "c\\c\\c\\c\\2.txt", "c\\d.txt", "e.txt", "f\\g\\3.txt"}) {
        Folder.Write(std::string("t\\") + name);
    }
    for (int i = 0; i < 40; ++i) {
        Folder.MakeFolder("t\\many" + std::to_string(i));
        Folder.Write("t\\file" + std::to_string(i));
    }
    Folder.MakeFolder("t\\.hidden");
    EXPECT_TRUE(DeleteFolderTree(Folder.At("t")));
    EXPECT_FALSE(Folder.HasFolder("t"));
}

TEST_F(SystemHelpers, DeleteFolderTreeOfAMissingFolderIsASuccess) {
    EXPECT_TRUE(DeleteFolderTree(Folder.At("missing")));
}

TEST_F(SystemHelpers, DeleteFolderTreeStopsAtTheFirstFailureAndLeavesTheRest) {
    Folder.Write("t\\a.txt");
    const std::string locked = Folder.Write("t\\m.txt");
    Folder.Write("t\\z.txt");
    {
        LockedFile lock(locked);
        EXPECT_FALSE(DeleteFolderTree(Folder.At("t")));
        EXPECT_FALSE(Folder.HasFile("t\\a.txt"));
        EXPECT_TRUE(Folder.HasFile("t\\z.txt"));
    }
    EXPECT_TRUE(DeleteFolderTree(Folder.At("t")));
}

TEST_F(SystemHelpers, DeleteFolderTreeReportsAFailureInASubFolder) {
    LockedFile lock(Folder.Write("t\\sub\\m.txt"));
    EXPECT_FALSE(DeleteFolderTree(Folder.At("t")));
    EXPECT_TRUE(Folder.HasFile("t\\sub\\m.txt"));
}

TEST_F(SystemHelpers, DeleteIfThere) {
    Folder.Write("a");
    DeleteIfThere(Folder.At("a"));
    EXPECT_FALSE(Folder.HasFile("a"));
    EXPECT_NO_THROW(DeleteIfThere(Folder.At("a")));
}

TEST_F(SystemHelpers, GetFileSize) {
    EXPECT_EQ(5, GetFileSize(Folder.Write("five", "12345")));
    EXPECT_EQ(0, GetFileSize(Folder.Write("none")));
    EXPECT_EQ(-1, GetFileSize(Folder.At("missing")));
    EXPECT_EQ(-1, GetFileSize(Folder.MakeFolder("folder")));
    EXPECT_EQ(-1, GetFileSize(""));
    const std::string locked = Folder.Write("locked", "x");
    LockedFile lock(locked);
    EXPECT_EQ(-1, GetFileSize(locked));
}

TEST_F(SystemHelpers, GetFileSizeOfAFileBeyond32BitsFails) {
    const std::string file = Folder.Write("huge");
    for (const LONGLONG size : {2147483647LL, 2147483648LL, 5000000000LL}) {
        HANDLE handle = CreateFileA(file.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        ASSERT_NE(INVALID_HANDLE_VALUE, handle);
        LARGE_INTEGER position;
        position.QuadPart = size;
        SetFilePointerEx(handle, position, nullptr, FILE_BEGIN);
        EXPECT_TRUE(SetEndOfFile(handle));
        CloseHandle(handle);
        EXPECT_EQ(size == 2147483647LL ? 2147483647 : -1, GetFileSize(file)) << size;
    }
}

TEST_F(SystemHelpers, GetDriveFreeSpaceMultipliesIn32Bits) {
    DWORD sectors, bytes, freeClusters, clusters;
    ASSERT_TRUE(
        GetDiskFreeSpaceA(Folder.Path().substr(0, 3).c_str(), &sectors, &bytes, &freeClusters, &clusters));
    const double product = 1.0 * sectors * bytes * freeClusters;
    if (product > 2147483647.0) {
        try {
            GetDriveFreeSpace(Folder.Path());
            ADD_FAILURE() << "no overflow";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(kOverflow, error.Number);
        }
    } else {
        EXPECT_NEAR(product, GetDriveFreeSpace(Folder.Path()), 50e6) << "other programs use the disk too";
    }
}

TEST_F(SystemHelpers, GetDriveFreeSpaceOfADriveThatIsNotThereIsMinusOne) {
    EXPECT_EQ(-1, GetDriveFreeSpace("Q:\\x"));
    EXPECT_EQ(-1, GetDriveFreeSpace(""));
}

/// A registry key of the test's own, in memory alone, removed at its end.
class RegistryKey {
 public:
    RegistryKey() : name_("Software\\VelbooterTest" + std::to_string(GetCurrentProcessId())) {
        EXPECT_EQ(ERROR_SUCCESS,
                  RegCreateKeyExA(HKEY_CURRENT_USER, name_.c_str(), 0, nullptr, REG_OPTION_VOLATILE,
                                  KEY_ALL_ACCESS, nullptr, &key_, nullptr));
    }
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;
    ~RegistryKey() {
        RegCloseKey(key_);
        RegDeleteKeyA(HKEY_CURRENT_USER, name_.c_str());
    }
    void Set(const char* value, DWORD type, const std::string& bytes) {
        EXPECT_EQ(ERROR_SUCCESS,
                  RegSetValueExA(key_, value, 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                                 static_cast<DWORD>(bytes.size())));
    }
    const std::string& Name() const { return name_; }

 private:
    std::string name_;
    HKEY key_ = nullptr;
};

TEST(Registry, AStringIsReadUpToItsFirstNul) {
    RegistryKey key;
    key.Set("plain", REG_SZ, "John Doe\0"s);
    key.Set("cut", REG_SZ, "John\0Doe\0"s);
    key.Set("open", REG_SZ, "John");
    key.Set("empty", REG_SZ, "\0"s);
    const auto read = [&](const char* value) {
        return ReadRegistryString(RegistryRoot::CurrentUser, key.Name(), value);
    };
    EXPECT_EQ("John Doe", read("plain"));
    EXPECT_EQ("John", read("cut"));
    EXPECT_EQ("John", read("open"));
    EXPECT_EQ("", read("empty"));
}

TEST(Registry, AnythingButAPlainStringIsNothing) {
    RegistryKey key;
    key.Set("expand", REG_EXPAND_SZ, "%windir%\0"s);
    key.Set("number", REG_DWORD, "\1\0\0\0"s);
    key.Set("list", REG_MULTI_SZ, "a\0b\0\0"s);
    key.Set("bytes", REG_BINARY, "abc");
    for (const char* value : {"expand", "number", "list", "bytes", "missing"}) {
        EXPECT_EQ(std::nullopt, ReadRegistryString(RegistryRoot::CurrentUser, key.Name(), value)) << value;
    }
    EXPECT_EQ(std::nullopt, ReadRegistryString(RegistryRoot::CurrentUser, key.Name() + "\\none", "plain"));
}

TEST(Registry, TheLocalMachineCanBeRead) {
    EXPECT_NE(std::nullopt,
              ReadRegistryString(RegistryRoot::LocalMachine,
                                 "Software\\Microsoft\\Windows NT\\CurrentVersion", "SystemRoot"));
}

}  // namespace
}  // namespace velbooter::testing
