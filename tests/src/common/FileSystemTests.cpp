#include "src/common/FileSystem.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
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

    void WriteWide(const std::string& folder, const wchar_t* name) const {
        const std::string path = Folder.At(folder);
        const std::wstring wide = std::wstring(path.begin(), path.end()) + L"\\" + name;
        const HANDLE file = ::CreateFileW(wide.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
        ASSERT_NE(INVALID_HANDLE_VALUE, file);
        ::CloseHandle(file);
    }

    ApplicationFolder Folder;
};

TEST_F(FileFunctions, AVersionChangesWithTheContentsAndWithTheFile) {
    EXPECT_FALSE(VersionOf(Folder.At("a.img")).has_value());
    EXPECT_FALSE(VersionOf(Folder.At("none\\a.img")).has_value());
    EXPECT_FALSE(VersionOf("").has_value());
    Folder.Write("a.img", "1");
    const auto first = VersionOf(Folder.At("a.img"));
    ASSERT_TRUE(first.has_value());
    EXPECT_EQ(first, VersionOf(Folder.At("a.img"))) << "looking changes nothing";
    const LockedFile held(Folder.At("a.img"));
    EXPECT_EQ(first, VersionOf(Folder.At("a.img"))) << "a file in use";
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
    const auto first = VersionOf(Folder.At("a.img"));
    CopyFileOver(Folder.At("a.img"), Folder.At("b.img"));  // the copy has the original's time
    DeleteFileAt(Folder.At("a.img"));
    RenameFileTo(Folder.At("b.img"), Folder.At("a.img"));
    EXPECT_NE(first, VersionOf(Folder.At("a.img")));
}

TEST_F(FileFunctions, AListingGivesHiddenEntriesAndTheFolderItself) {
    Folder.Write("t\\b.txt");
    Folder.Write("t\\a.txt");
    Folder.SetAttributes("t\\a.txt", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    Folder.MakeFolder("t\\sub");
    FolderListing listing(Folder.At("t\\*.*"));
    std::vector<std::string> names;
    while (const auto entry = listing.Next()) {
        names.push_back(entry->Name);
        EXPECT_EQ(entry->Name == "sub" || entry->Name[0] == '.', entry->IsFolder) << entry->Name;
    }
    std::sort(names.begin(), names.end());
    EXPECT_EQ((std::vector<std::string>{".", "..", "a.txt", "b.txt", "sub"}), names);
    EXPECT_FALSE(listing.Next());
}

TEST_F(FileFunctions, AListingRestartsAtItsBeginning) {
    Folder.Write("t\\a.txt");
    FolderListing listing(Folder.At("t\\*.txt"));
    EXPECT_EQ("a.txt", listing.Next()->Name);
    EXPECT_FALSE(listing.Next());
    Folder.Write("t\\0.txt");
    listing.Restart();
    EXPECT_TRUE(listing.Next());
    EXPECT_TRUE(listing.Next());
    EXPECT_FALSE(listing.Next());
}

TEST_F(FileFunctions, AListingOfNothingIsEmpty) {
    EXPECT_FALSE(FolderListing(Folder.At("nowhere\\*.*")).Next());
    EXPECT_FALSE(FolderListing(Folder.At("*.none")).Next());
}

// U+03A9 and U+FF3C: a code page that lacks them shows them as an O and a backslash.
constexpr const wchar_t* kOmega = L"\x3A9.txt";
constexpr const wchar_t* kLeadsAway =
    L"..\xFF3C"
    L"victim.txt";

TEST_F(FileFunctions, AListingRefusesANameThatTheCodePageCannotHold) {
    Folder.Write("t\\a.txt");
    Folder.Write("t\\O.txt");
    WriteWide("t", kOmega);
    FolderListing listing(Folder.At("t\\*.*"));
    std::vector<std::string> names;
    std::string refused;
    try {
        while (const auto entry = listing.Next()) names.push_back(entry->Name);
    } catch (const RuntimeError& error) {
        EXPECT_EQ(kBadFileName, error.Number);
        refused = error.File;
    }
    EXPECT_EQ(0U, refused.find(Folder.At("t\\"))) << refused;
    EXPECT_EQ(kBadFileName, NumberOf([&] { listing.Next(); })) << "asked again it is not passed over";
    EXPECT_LE(names.size(), 4U);
}

TEST_F(FileFunctions, ATreeIsDeletedByItsOwnNamesAlone) {
    Folder.Write("victim.txt", "precious");
    Folder.Write("t\\a.txt");
    WriteWide("t", kOmega);
    WriteWide("t", kLeadsAway);
    EXPECT_TRUE(DeleteTree(Folder.At("t")));
    EXPECT_FALSE(Folder.HasFolder("t"));
    EXPECT_EQ("precious", Folder.Read("victim.txt"));
}

TEST_F(FileFunctions, ATreeIsDeletedAtAnyDepth) {
    std::wstring path = L"\\\\?\\" + std::wstring(Folder.Path().begin(), Folder.Path().end()) + L"\\t";
    for (int i = 0; i < 8; ++i) {
        ASSERT_TRUE(::CreateDirectoryW(path.c_str(), nullptr)) << i;
        path += L"\\" + std::wstring(100, static_cast<wchar_t>(L'a' + i));
    }
    EXPECT_TRUE(DeleteTree(Folder.At("t")));
    EXPECT_FALSE(Folder.HasFolder("t"));
}

TEST_F(FileFunctions, ALinkIsNeverEntered) {
    Folder.Write("mine\\thesis.txt", "years of work");
    Folder.Write("mine\\sub\\photo.txt");
    Folder.MakeLink("link", "mine");
    DeleteTree(Folder.At("link"));
    EXPECT_EQ("years of work", Folder.Read("mine\\thesis.txt"));
    Folder.Write("t\\a.txt");
    Folder.MakeLink("t\\link", "mine");
    DeleteTree(Folder.At("t"));
    EXPECT_EQ("years of work", Folder.Read("mine\\thesis.txt"));
    EXPECT_TRUE(Folder.HasFile("mine\\sub\\photo.txt"));
}

// Who holds a folder open for himself keeps others from listing it.
TEST_F(FileFunctions, AFolderThatCannotBeListedStopsTheDeleting) {
    Folder.MakeFolder("t\\held");
    const HANDLE held = ::CreateFileA(Folder.At("t\\held").c_str(), FILE_LIST_DIRECTORY, 0, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, held);
    EXPECT_FALSE(DeleteTree(Folder.At("t")));
    ::CloseHandle(held);
    EXPECT_TRUE(DeleteTree(Folder.At("t")));
    EXPECT_FALSE(Folder.HasFolder("t"));
}

TEST_F(FileFunctions, ADriveAloneIsItsRoot) {
    ChangeDriveAndFolder(Folder.MakeFolder("sub"));
    ChangeDriveAndFolder(Folder.Path().substr(0, 2));
    EXPECT_EQ(Folder.Path().substr(0, 3), CurrentFolder());
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

TEST_F(FileFunctions, MakeFolderMakesOneLevel) {
    MakeFolder(Folder.At("one"));
    EXPECT_TRUE(Folder.HasFolder("one"));
    EXPECT_EQ(kPathFileAccess, NumberOf([&] { MakeFolder(Folder.At("one")); }));
    EXPECT_EQ(kPathNotFound, NumberOf([&] { MakeFolder(Folder.At("two\\three")); }));
}

TEST_F(FileFunctions, MakeEmptyFileEmptiesAnOldOne) {
    Folder.Write("a", "text");
    MakeEmptyFile(Folder.At("a"));
    MakeEmptyFile(Folder.At("b"));
    EXPECT_EQ("", Folder.Read("a"));
    EXPECT_EQ("", Folder.Read("b"));
    EXPECT_EQ(kPathNotFound, NumberOf([&] { MakeEmptyFile(Folder.At("nowhere\\b")); }));
}

TEST_F(FileFunctions, TheCurrentFolderCanBeChanged) {
    ChangeDriveAndFolder(Folder.Path());
    EXPECT_EQ(Folder.Path(), CurrentFolder());
    EXPECT_NE(0, NumberOf([&] { ChangeDriveAndFolder(Folder.At("missing")); }));
    EXPECT_EQ(Folder.Path(), CurrentFolder());
}

}  // namespace
}  // namespace velbooter::testing
