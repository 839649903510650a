#include "src/common/Files.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <vector>

#include "src/common/RuntimeError.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

class FileFunctions : public ::testing::Test {
 protected:
    /// Returns the number of the error that `action` raises; 0 when it raises none.
    static int NumberOf(const std::function<void()>& action) {
        try {
            action();
        } catch (const RuntimeError& error) {
            return error.Number;
        }
        return 0;
    }

    ApplicationFolder Folder;
};

TEST_F(FileFunctions, AVersionChangesWithTheContentsAndWithTheFile) {
    EXPECT_FALSE(StampOf(Folder.At("a.img")).has_value());
    EXPECT_FALSE(StampOf(Folder.At("none\\a.img")).has_value());
    EXPECT_FALSE(StampOf("").has_value());
    Folder.Write("a.img", "1");
    const auto first = StampOf(Folder.At("a.img"));
    ASSERT_TRUE(first.has_value());
    EXPECT_EQ(first, StampOf(Folder.At("a.img"))) << "looking changes nothing";
    const LockedFile held(Folder.At("a.img"));
    EXPECT_EQ(first, StampOf(Folder.At("a.img"))) << "a file in use";
}

TEST_F(FileFunctions, TheListedSizeNeedsNoOpening) {
    Folder.Write("a", "12345");
    const LockedFile held(Folder.At("a"));
    EXPECT_EQ(5U, ListedSize(Folder.At("a")).value_or(99));
    EXPECT_FALSE(ListedSize(Folder.At("none")).has_value());
    EXPECT_FALSE(ListedSize(Folder.Path()).has_value()) << "a folder";
}

TEST_F(FileFunctions, AFileInThePlaceOfAnotherIsAnotherVersion) {
    Folder.Write("a.img", "1");
    const auto first = StampOf(Folder.At("a.img"));
    CopyFileOver(Folder.At("a.img"), Folder.At("b.img"));  // the copy has the original's time
    DeleteFileAt(Folder.At("a.img"));
    RenameFileTo(Folder.At("b.img"), Folder.At("a.img"));
    EXPECT_NE(first, StampOf(Folder.At("a.img")));
}

TEST_F(FileFunctions, AWholeCopyOfAFileOfACdCanBeWritten) {
    const std::string source = Folder.Write("a", "new");
    Folder.SetAttributes("a", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    CopyWholeFileOver(source, Folder.At("b"));
    EXPECT_EQ("new", Folder.Read("b"));
    EXPECT_EQ(0u, ::GetFileAttributesA(Folder.At("b").c_str()) &
                      (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM));
    Folder.SetAttributes("a", FILE_ATTRIBUTE_NORMAL);
}

TEST_F(FileFunctions, AWholeCopyReplacesAndLeavesNothingBeside) {
    const std::string source = Folder.Write("a", "new");
    Folder.Write("b", "old and longer");
    Folder.SetAttributes("b", FILE_ATTRIBUTE_READONLY);
    CopyWholeFileOver(source, Folder.At("b"));
    EXPECT_EQ("new", Folder.Read("b"));
    EXPECT_EQ((std::vector<std::string>{"a", "b"}), Folder.Tree(""));
    {
        LockedFile lock(Folder.At("b"));
        EXPECT_EQ(kPermissionDenied, NumberOf([&] { CopyWholeFileOver(source, Folder.At("b")); }));
        EXPECT_EQ(kFileNotFound, NumberOf([&] { CopyWholeFileOver(Folder.At("none"), Folder.At("b")); }));
    }
    EXPECT_EQ("new", Folder.Read("b"));
    EXPECT_EQ((std::vector<std::string>{"a", "b"}), Folder.Tree(""));
}

TEST_F(FileFunctions, CopyingReplacesAProtectedDestination) {
    const std::string source = Folder.Write("a", "new");
    for (const DWORD attributes : {FILE_ATTRIBUTE_READONLY, FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_SYSTEM,
                                   FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM}) {
        Folder.Write("b" + std::to_string(attributes), "old and longer");
        Folder.SetAttributes("b" + std::to_string(attributes), attributes);
        CopyFileOver(source, Folder.At("b" + std::to_string(attributes)));
        EXPECT_EQ("new", Folder.Read("b" + std::to_string(attributes))) << attributes;
    }
}

TEST_F(FileFunctions, CopyingRaisesTheFileErrors) {
    const std::string source = Folder.Write("a", "new");
    EXPECT_EQ(kFileNotFound, NumberOf([&] { CopyFileOver(Folder.At("missing"), Folder.At("b")); }));
    EXPECT_EQ(kPathNotFound, NumberOf([&] { CopyFileOver(source, Folder.At("nowhere\\b")); }));
    EXPECT_NE(0, NumberOf([&] { CopyFileOver(source, Folder.MakeFolder("folder")); }));
    EXPECT_NE(0, NumberOf([&] { CopyFileOver(Folder.At("*.cab"), Folder.At("b")); }));
    const std::string locked = Folder.Write("locked", "old");
    {
        LockedFile lock(locked);
        EXPECT_EQ(kPermissionDenied, NumberOf([&] { CopyFileOver(source, locked); }));
        EXPECT_EQ(kPermissionDenied, NumberOf([&] { CopyFileOver(locked, Folder.At("b")); }));
    }
    EXPECT_EQ("old", Folder.Read("locked")) << "a failed copy keeps the destination";
    EXPECT_FALSE(Folder.HasFile("b"));
}

TEST_F(FileFunctions, AFailedCopyNamesTheFileThatIsToBlame) {
    const std::string source = Folder.Write("a", "new");
    const auto fileOf = [](const std::string& from, const std::string& to) -> std::string {
        try {
            CopyFileOver(from, to);
        } catch (const RuntimeError& error) {
            return error.File;
        }
        return "no error";
    };
    EXPECT_EQ(Folder.At("missing"), fileOf(Folder.At("missing"), Folder.At("b")));
    EXPECT_EQ(Folder.At("nowhere\\b"), fileOf(source, Folder.At("nowhere\\b")));
    const std::string locked = Folder.Write("locked", "old");
    LockedFile lock(locked);
    EXPECT_EQ(locked, fileOf(source, locked));
    EXPECT_EQ(locked, fileOf(locked, Folder.At("b")));
}

TEST_F(FileFunctions, DeletingIgnoresAttributes) {
    Folder.Write("a");
    Folder.SetAttributes("a", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    DeleteFileAt(Folder.At("a"));
    EXPECT_FALSE(Folder.HasFile("a"));
    EXPECT_EQ(kFileNotFound, NumberOf([&] { DeleteFileAt(Folder.At("a")); }));
    const std::string locked = Folder.Write("locked");
    LockedFile lock(locked);
    EXPECT_EQ(kPermissionDenied, NumberOf([&] { DeleteFileAt(locked); }));
}

TEST_F(FileFunctions, MakeWritableClearsTheProtectionAndKeepsTheRest) {
    for (const DWORD attributes : {FILE_ATTRIBUTE_READONLY, FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_SYSTEM,
                                   FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM}) {
        Folder.Write("a", "text");
        Folder.SetAttributes("a", attributes);
        ASSERT_EQ(attributes, Folder.Attributes("a") & attributes);
        MakeWritable(Folder.At("a"));
        EXPECT_EQ(0u, Folder.Attributes("a") & attributes) << attributes;
        EXPECT_EQ("text", Folder.Read("a"));
        Folder.Remove("a");
    }
}

TEST_F(FileFunctions, MakeWritableOfAMissingFileDoesNothing) {
    EXPECT_EQ(0, NumberOf([&] { MakeWritable(Folder.At("missing")); }));
    EXPECT_EQ(0, NumberOf([&] { MakeWritable(Folder.At("nowhere\\missing")); }));
    EXPECT_FALSE(Folder.HasFile("missing"));
}

TEST_F(FileFunctions, RenamingOntoAnExistingFileIsError58) {
    Folder.Write("a", "a");
    Folder.Write("b", "b");
    EXPECT_EQ(kFileAlreadyExists, NumberOf([&] { RenameFileTo(Folder.At("a"), Folder.At("b")); }));
    RenameFileTo(Folder.At("a"), Folder.At("c"));
    EXPECT_EQ("a", Folder.Read("c"));
    EXPECT_FALSE(Folder.HasFile("a"));
    EXPECT_EQ(kFileNotFound, NumberOf([&] { RenameFileTo(Folder.At("a"), Folder.At("d")); }));
}

TEST_F(FileFunctions, MakeEmptyFileEmptiesAnOldOne) {
    Folder.Write("a", "text");
    MakeEmptyFile(Folder.At("a"));
    MakeEmptyFile(Folder.At("b"));
    EXPECT_EQ("", Folder.Read("a"));
    EXPECT_EQ("", Folder.Read("b"));
    EXPECT_EQ(kPathNotFound, NumberOf([&] { MakeEmptyFile(Folder.At("nowhere\\b")); }));
}

TEST_F(FileFunctions, FileExistsForAFileThatCanBeRead) {
    const std::string file = Folder.Write("a b.txt");
    EXPECT_TRUE(FileExists(file));
    EXPECT_FALSE(FileExists(Folder.At("missing.txt")));
    EXPECT_FALSE(FileExists(Folder.At("nowhere\\missing.txt")));
    EXPECT_FALSE(FileExists(Folder.MakeFolder("folder")));
    EXPECT_FALSE(FileExists(""));
}

TEST_F(FileFunctions, FileExistsIsFalseForALockedFile) {
    const std::string file = Folder.Write("a.txt");
    LockedFile lock(file);
    EXPECT_FALSE(FileExists(file));
    lock.Release();
    EXPECT_TRUE(FileExists(file));
}

TEST_F(FileFunctions, FileExistsDropsOnePairOfQuotesAndOneTrailingBackslash) {
    const std::string file = Folder.Write("a b.txt");
    EXPECT_TRUE(FileExists("\"" + file + "\""));
    EXPECT_TRUE(FileExists("\"" + file + "\\\""));
    EXPECT_TRUE(FileExists(file + "\\"));
    EXPECT_TRUE(FileExists("  \"" + file + "\"  "));
    EXPECT_FALSE(FileExists("\"\"" + file + "\"\""));
}

TEST_F(FileFunctions, FileExistsOfAPatternCountsFilesAndFolders) {
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

TEST_F(FileFunctions, DeleteIfThere) {
    Folder.Write("a");
    DeleteIfThere(Folder.At("a"));
    EXPECT_FALSE(Folder.HasFile("a"));
    EXPECT_NO_THROW(DeleteIfThere(Folder.At("a")));
}

TEST_F(FileFunctions, GetFileSize) {
    EXPECT_EQ(5, GetFileSize(Folder.Write("five", "12345")));
    EXPECT_EQ(0, GetFileSize(Folder.Write("none")));
    EXPECT_EQ(-1, GetFileSize(Folder.At("missing")));
    EXPECT_EQ(-1, GetFileSize(Folder.MakeFolder("folder")));
    EXPECT_EQ(-1, GetFileSize(""));
    const std::string locked = Folder.Write("locked", "x");
    LockedFile lock(locked);
    EXPECT_EQ(-1, GetFileSize(locked));
}

TEST_F(FileFunctions, GetFileSizeOfAFileBeyond32BitsFails) {
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

}  // namespace
}  // namespace velbooter::testing
