#include "src/common/Folders.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <functional>
#include <vector>

#include "src/common/Files.h"
#include "src/common/RuntimeError.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

class FolderFunctions : public ::testing::Test {
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

TEST_F(FolderFunctions, AListingGivesHiddenEntriesAndTheFolderItself) {
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

TEST_F(FolderFunctions, AListingRestartsAtItsBeginning) {
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

TEST_F(FolderFunctions, AListingOfNothingIsEmpty) {
    EXPECT_FALSE(FolderListing(Folder.At("nowhere\\*.*")).Next());
    EXPECT_FALSE(FolderListing(Folder.At("*.none")).Next());
}

// U+03A9 and U+FF3C: a code page that lacks them replaces them by an O and a backslash.
constexpr const wchar_t* kOmega = L"\x3A9.txt";
constexpr const wchar_t* kLeadsAway =
    L"..\xFF3C"
    L"victim.txt";

TEST_F(FolderFunctions, AListingRefusesANameThatTheCodePageCannotHold) {
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

TEST_F(FolderFunctions, ATreeIsDeletedByItsOwnNamesAlone) {
    Folder.Write("victim.txt", "precious");
    Folder.Write("t\\a.txt");
    WriteWide("t", kOmega);
    WriteWide("t", kLeadsAway);
    EXPECT_TRUE(DeleteTree(Folder.At("t")));
    EXPECT_FALSE(Folder.HasFolder("t"));
    EXPECT_EQ("precious", Folder.Read("victim.txt"));
}

TEST_F(FolderFunctions, ATreeIsDeletedAtAnyDepth) {
    std::wstring path = L"\\\\?\\" + std::wstring(Folder.Path().begin(), Folder.Path().end()) + L"\\t";
    for (int i = 0; i < 8; ++i) {
        ASSERT_TRUE(::CreateDirectoryW(path.c_str(), nullptr)) << i;
        path += L"\\" + std::wstring(100, static_cast<wchar_t>(L'a' + i));
    }
    EXPECT_TRUE(DeleteTree(Folder.At("t")));
    EXPECT_FALSE(Folder.HasFolder("t"));
}

TEST_F(FolderFunctions, ALinkIsNeverEntered) {
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

// A folder that is open without sharing cannot be listed.
TEST_F(FolderFunctions, AFolderThatCannotBeListedStopsTheDeleting) {
    Folder.MakeFolder("t\\held");
    const HANDLE held = ::CreateFileA(Folder.At("t\\held").c_str(), FILE_LIST_DIRECTORY, 0, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, held);
    EXPECT_FALSE(DeleteTree(Folder.At("t")));
    ::CloseHandle(held);
    EXPECT_TRUE(DeleteTree(Folder.At("t")));
    EXPECT_FALSE(Folder.HasFolder("t"));
}

TEST_F(FolderFunctions, ADriveAloneIsItsRoot) {
    ChangeDriveAndFolder(Folder.MakeFolder("sub"));
    ChangeDriveAndFolder(Folder.Path().substr(0, 2));
    EXPECT_EQ(Folder.Path().substr(0, 3), CurrentFolder());
}

TEST_F(FolderFunctions, MakeFolderMakesOneLevel) {
    MakeFolder(Folder.At("one"));
    EXPECT_TRUE(Folder.HasFolder("one"));
    EXPECT_EQ(kPathFileAccess, NumberOf([&] { MakeFolder(Folder.At("one")); }));
    EXPECT_EQ(kPathNotFound, NumberOf([&] { MakeFolder(Folder.At("two\\three")); }));
}

TEST_F(FolderFunctions, TheCurrentFolderCanBeChanged) {
    ChangeDriveAndFolder(Folder.Path());
    EXPECT_EQ(Folder.Path(), CurrentFolder());
    EXPECT_NE(0, NumberOf([&] { ChangeDriveAndFolder(Folder.At("missing")); }));
    EXPECT_EQ(Folder.Path(), CurrentFolder());
}

TEST(SystemFolders, EndInABackslash) {
    char buffer[MAX_PATH];
    GetWindowsDirectoryA(buffer, MAX_PATH);
    EXPECT_EQ(std::string(buffer) + "\\", GetWindowsFolder());
    GetSystemDirectoryA(buffer, MAX_PATH);
    EXPECT_EQ(std::string(buffer) + "\\", GetSystemFolder());
}

TEST_F(FolderFunctions, FolderExists) {
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

TEST_F(FolderFunctions, APathOfSpacesIsNoFolder) {
    EXPECT_FALSE(FolderExists(""));
    EXPECT_FALSE(FolderExists("   "));
}

TEST_F(FolderFunctions, CreateFolderPathMakesEveryMissingFolderAndShowsTheBackslash) {
    std::string path = Folder.At("a\\b\\c");
    EXPECT_TRUE(CreateFolderPath(path));
    EXPECT_EQ(path, Folder.At("a\\b\\c\\"));
    EXPECT_TRUE(Folder.HasFolder("a\\b\\c"));
    EXPECT_TRUE(CreateFolderPath(path)) << "an existing folder is a success";
    EXPECT_EQ(path, Folder.At("a\\b\\c\\"));
}

TEST_F(FolderFunctions, CreateFolderPathFailsWhereAFileIsInTheWay) {
    Folder.Write("a");
    std::string path = Folder.At("a\\b");
    EXPECT_FALSE(CreateFolderPath(path));
    EXPECT_EQ(path, Folder.At("a\\b\\"));
}

TEST_F(FolderFunctions, CreateFolderPathRefusesAPathThatIsTooLong) {
    for (const size_t length : {260, 300, 2000, 100000}) {
        std::string path = Folder.At(std::string(length, 'x'));
        EXPECT_FALSE(CreateFolderPath(path)) << length;
        EXPECT_EQ(path, Folder.At(std::string(length, 'x') + "\\"));
        std::string deep = Folder.Path();
        while (deep.size() < length) deep += "\\x";
        EXPECT_FALSE(CreateFolderPath(deep)) << length;
    }
    EXPECT_EQ((std::vector<std::string>{}), Folder.Tree(""));
    EXPECT_FALSE(Folder.HasFolder("x"));
}

TEST_F(FolderFunctions, DeleteFolderTreeRemovesReadOnlyHiddenAndSystemFiles) {
    Folder.Write("t\\a.txt");
    Folder.Write("t\\ro.txt");
    Folder.SetAttributes("t\\ro.txt", FILE_ATTRIBUTE_READONLY);
    Folder.Write("t\\sub\\hidden.txt");
    Folder.SetAttributes("t\\sub\\hidden.txt",
                         FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(DeleteFolderTree(Folder.At("t")));
    EXPECT_FALSE(Folder.HasFolder("t"));
}

TEST_F(FolderFunctions, DeleteFolderTreeRemovesFoldersBetweenFilesAndDeepTrees) {
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

TEST_F(FolderFunctions, DeleteFolderTreeOfAMissingFolderIsASuccess) {
    EXPECT_TRUE(DeleteFolderTree(Folder.At("missing")));
}

TEST_F(FolderFunctions, DeleteFolderTreeStopsAtTheFirstFailureAndLeavesTheRest) {
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

TEST_F(FolderFunctions, DeleteFolderTreeReportsAFailureInASubFolder) {
    LockedFile lock(Folder.Write("t\\sub\\m.txt"));
    EXPECT_FALSE(DeleteFolderTree(Folder.At("t")));
    EXPECT_TRUE(Folder.HasFile("t\\sub\\m.txt"));
}

}  // namespace
}  // namespace velbooter::testing
