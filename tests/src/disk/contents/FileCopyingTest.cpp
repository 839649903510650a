#include "src/disk/contents/FileCopying.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

using Files = std::vector<std::string>;

class CopyFileWithPromptTest : public ApplicationTest {
 protected:
    bool Copy(const std::string& source, const std::string& destination, bool quiet = false) {
        Destination = destination;
        return CopyFileWithPrompt(App.Paths, App.Screen, source, Destination, quiet);
    }

    std::string Destination;  ///< as the routine left it
};

TEST_F(CopyFileWithPromptTest, AnAbsoluteSourceIsTakenAsItIsAndTheDestinationBecomesAbsolute) {
    const std::string source = Folder.Write("elsewhere\\a.sys", "abc");
    EXPECT_TRUE(Copy(source, "cabs\\a.sys"));
    EXPECT_EQ("abc", Folder.Read("cabs\\a.sys"));
    EXPECT_EQ(Folder.At("cabs\\a.sys"), Destination);
}

TEST_F(CopyFileWithPromptTest, ARelativeSourceIsFoundInTheApplicationFolder) {
    Folder.Write("files\\a.sys", "from files");
    EXPECT_TRUE(Copy("files\\a.sys", "cabs\\a.sys"));
    EXPECT_EQ("from files", Folder.Read("cabs\\a.sys"));
}

TEST_F(CopyFileWithPromptTest, TheFolderDosIsSearchedToo) {
    Folder.Write("dos\\IO.SYS", "dos");
    EXPECT_TRUE(Copy("IO.SYS", "cabs\\IO.SYS"));
    EXPECT_EQ("dos", Folder.Read("cabs\\IO.SYS"));
}

TEST_F(CopyFileWithPromptTest, TheApplicationFolderWinsOverTheFolderDos) {
    Folder.Write("dos\\IO.SYS", "dos");
    Folder.Write("IO.SYS", "application");
    EXPECT_TRUE(Copy("IO.SYS", "cabs\\IO.SYS"));
    EXPECT_EQ("application", Folder.Read("cabs\\IO.SYS"));
}

TEST_F(CopyFileWithPromptTest, ASourceWithAColonSecondIsNeverSearched) {
    Folder.Write("dos\\a.sys");
    Screen.Expect(CopyFailure("C:a-file-that-is-nowhere.sys"), Answer::Ignore);
    EXPECT_TRUE(Copy("C:a-file-that-is-nowhere.sys", "cabs\\a.sys"));
    EXPECT_FALSE(Folder.HasFile("cabs\\a.sys"));
}

TEST_F(CopyFileWithPromptTest, MissingFoldersAreMadeAndOldFilesOverwritten) {
    Folder.Write("a.sys", "new");
    Folder.Write("cabs\\x\\old.sys", "old and longer");
    Folder.SetAttributes("cabs\\x\\old.sys", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
    EXPECT_TRUE(Copy("a.sys", "cabs\\x\\y\\z\\a.sys"));
    EXPECT_TRUE(Copy("a.sys", "cabs\\x\\old.sys"));
    EXPECT_EQ("new", Folder.Read("cabs\\x\\y\\z\\a.sys"));
    EXPECT_EQ("new", Folder.Read("cabs\\x\\old.sys"));
}

TEST_F(CopyFileWithPromptTest, AFolderCopyTakesHiddenAndSystemFilesButNoSubFolders) {
    Folder.Write("src\\a.txt", "a");
    Folder.Write("src\\b", "b");
    Folder.Write("src\\sub\\c.txt", "c");
    Folder.SetAttributes("src\\a.txt",
                         FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(Copy("src\\*.*", "cabs"));
    EXPECT_EQ((Files{"a.txt", "b"}), Folder.Tree("cabs"));
    EXPECT_FALSE(Folder.HasFolder("cabs\\sub"));
    EXPECT_EQ("b", Folder.Read("cabs\\b"));
}

TEST_F(CopyFileWithPromptTest, AFolderCopyTakesEveryFormOfDestination) {
    Folder.Write("src\\a.txt", "a");
    for (const std::string destination : {"cabs", "one\\", "two\\*.*", "three\\bin\\*.*", "four\\bin"}) {
        EXPECT_TRUE(Copy("src\\*.*", destination));
        EXPECT_EQ(Folder.At(destination), Destination);
    }
    EXPECT_EQ((Files{"cabs\\a.txt", "four\\bin\\a.txt", "one\\a.txt", "src\\a.txt", "three\\bin\\a.txt",
                     "two\\a.txt"}),
              Folder.Tree(""));
}

TEST_F(CopyFileWithPromptTest, AFolderCopyFindsItsFolderUnderDos) {
    Folder.Write("dos\\tools\\a.com", "dos");
    EXPECT_TRUE(Copy("tools\\*.*", "cabs\\tools"));
    EXPECT_EQ("dos", Folder.Read("cabs\\tools\\a.com"));
}

TEST_F(CopyFileWithPromptTest, AnEmptyFolderIsCopiedAsAnEmptyFolder) {
    Folder.MakeFolder("src");
    EXPECT_TRUE(Copy("src\\*.*", "cabs\\x"));
    EXPECT_TRUE(Folder.HasFolder("cabs\\x"));
}

TEST_F(CopyFileWithPromptTest, AMissingAbsoluteFolderCopiesNothingAndIsNoFailure) {
    EXPECT_TRUE(Copy(Folder.At("nowhere\\*.*"), "cabs"));
    EXPECT_EQ((Files{}), Folder.Tree("cabs"));
}

TEST_F(CopyFileWithPromptTest, AMissingRelativeFolderIsReported) {
    Screen.Expect(CopyFailure("nowhere\\*.*"), Answer::Abort);
    EXPECT_FALSE(Copy("nowhere\\*.*", "cabs"));
}

TEST_F(CopyFileWithPromptTest, APatternOtherThanStarDotStarIsASingleFileThatCannotBeCopied) {
    Folder.Write("bin\\a.cab");
    Screen.Expect(CopyFailure("bin\\*.cab"), Answer::Abort);
    EXPECT_FALSE(Copy("bin\\*.cab", "cabs\\bin"));
    EXPECT_TRUE(Copy("bin\\*.cab", "cabs\\bin", true)) << "quiet";
    EXPECT_FALSE(Folder.HasFile("cabs\\bin"));
}

TEST_F(CopyFileWithPromptTest, AMissingSourceIsShownAsTheCallerWroteIt) {
    Screen.Expect(CopyFailure("  Files\\MISSING.sys"), Answer::Abort);
    EXPECT_FALSE(Copy("  Files\\MISSING.sys", "cabs\\a.sys"));
    EXPECT_EQ(Folder.At("cabs\\a.sys"), Destination);
}

TEST_F(CopyFileWithPromptTest, IgnoreGoesOnAndAbortFails) {
    Screen.Expect(CopyFailure("missing.sys"), Answer::Ignore);
    EXPECT_TRUE(Copy("missing.sys", "cabs\\a.sys"));
    Screen.Expect(CopyFailure("missing.sys"), Answer::Abort);
    EXPECT_FALSE(Copy("missing.sys", "cabs\\a.sys"));
}

TEST_F(CopyFileWithPromptTest, QuietNeverReportsAndNeverFails) {
    EXPECT_TRUE(Copy("missing.sys", "cabs\\a.sys", true));
    EXPECT_TRUE(Copy("missing\\*.*", "cabs", true));
    EXPECT_TRUE(Copy(Folder.At("missing.sys"), "cabs\\a.sys", true));
    Folder.Write("a.sys");
    Folder.MakeFolder("cabs\\a.sys");
    EXPECT_TRUE(Copy("a.sys", "cabs\\a.sys", true)) << "a folder is in the way";
}

TEST_F(CopyFileWithPromptTest, SpacesBeforeThePatternAreDropped) {
    Folder.Write("s\\a", "abc");
    EXPECT_TRUE(Copy(Folder.At("s\\  *.*"), "cabs"));
    EXPECT_EQ("abc", Folder.Read("cabs\\a"));
}

// The copy of a folder ends at the first failure that is ignored, by the user or because the copy is quiet.
TEST_F(CopyFileWithPromptTest, AFailureInAFolderLeavesOutTheRestOfIt) {
    for (const char* file : {"s\\a", "s\\b", "s\\c"}) Folder.Write(file);
    Folder.MakeFolder("cabs\\b");
    EXPECT_TRUE(Copy("s\\*.*", "cabs", true));
    EXPECT_FALSE(Folder.HasFile("cabs\\a") && Folder.HasFile("cabs\\c"));
    const Files quiet = Folder.Tree("cabs");
    Folder.Remove("cabs");
    Folder.MakeFolder("cabs\\b");
    Screen.Expect(CopyFailure("s\\*.*"), Answer::Ignore);
    EXPECT_TRUE(Copy("s\\*.*", "cabs"));
    EXPECT_EQ(quiet, Folder.Tree("cabs"));
}

TEST_F(CopyFileWithPromptTest, RetryRepeatsTheCopy) {
    const std::string source = Folder.Write("a.sys", "abc");
    LockedFile lock(Folder.Write("cabs\\a.sys", "old"));
    Screen.Expect(CopyFailure("a.sys"), Answer::Retry);
    Screen.Expect(CopyFailure("a.sys"), Answer::Retry, [&] { lock.Release(); });
    EXPECT_TRUE(Copy("a.sys", "cabs\\a.sys"));
    EXPECT_EQ("abc", Folder.Read("cabs\\a.sys"));
}

TEST_F(CopyFileWithPromptTest, RetryOfAMissingAbsoluteSourceCopiesItOnceItIsThere) {
    const std::string source = Folder.At("late.sys");
    Screen.Expect(CopyFailure(source), Answer::Retry, [&] { Folder.Write("late.sys", "late"); });
    EXPECT_TRUE(Copy(source, "cabs\\late.sys"));
    EXPECT_EQ("late", Folder.Read("cabs\\late.sys"));
}

TEST_F(CopyFileWithPromptTest, RetryWithoutASourceShowsTheSameMessageWithoutSearchingAnew) {
    const auto appear = [&] { Folder.Write("late.sys", "late"); };
    Screen.Expect(CopyFailure("late.sys"), Answer::Retry, appear);
    Screen.Expect(CopyFailure("late.sys"), Answer::Retry);
    Screen.Expect(CopyFailure("late.sys"), Answer::Ignore);
    EXPECT_TRUE(Copy("late.sys", "cabs\\late.sys"));
    EXPECT_FALSE(Folder.HasFile("cabs\\late.sys"));
}

TEST_F(CopyFileWithPromptTest, RetryInAFolderGoesOnWithTheFileThatFailed) {
    Folder.Write("src\\a", "a");
    Folder.Write("src\\b", "b");
    Folder.Write("src\\c", "c");
    LockedFile lock(Folder.Write("cabs\\b", "old"));
    Screen.Expect(CopyFailure("src\\*.*"), Answer::Retry, [&] {
        lock.Release();
        Folder.Write("src\\a", "changed after it was copied");
    });
    EXPECT_TRUE(Copy("src\\*.*", "cabs"));
    EXPECT_EQ("a", Folder.Read("cabs\\a"));
    EXPECT_EQ("b", Folder.Read("cabs\\b"));
    EXPECT_EQ("c", Folder.Read("cabs\\c"));
}

TEST_F(CopyFileWithPromptTest, IgnoreInAFolderLeavesTheRestOut) {
    Folder.Write("src\\a", "a");
    Folder.Write("src\\b", "b");
    Folder.Write("src\\c", "c");
    LockedFile lock(Folder.Write("cabs\\b", "old"));
    Screen.Expect(CopyFailure("src\\*.*"), Answer::Ignore);
    EXPECT_TRUE(Copy("src\\*.*", "cabs"));
    EXPECT_TRUE(Folder.HasFile("cabs\\a"));
    EXPECT_FALSE(Folder.HasFile("cabs\\c"));
}

TEST_F(CopyFileWithPromptTest, AnEmptyDestinationNameIsAFailure) {
    Folder.Write("a.sys");
    Screen.Expect(CopyFailure("a.sys"), Answer::Abort);
    EXPECT_FALSE(Copy("a.sys", "cabs\\"));
}

TEST_F(CopyFileWithPromptTest, ALockedSourceCountsAsMissing) {
    LockedFile lock(Folder.Write("a.sys"));
    Screen.Expect(CopyFailure("a.sys"), Answer::Abort);
    EXPECT_FALSE(Copy("a.sys", "cabs\\a.sys"));
}

TEST_F(CopyFileWithPromptTest, AFolderIsNoSingleFile) {
    Folder.Write("src\\a");
    Screen.Expect(CopyFailure("src"), Answer::Abort);
    EXPECT_FALSE(Copy("src", "cabs\\src"));
}

class TreeCopy : public ApplicationTest {
 protected:
    bool Copy(const std::string& from, const std::string& to) {
        Source = Folder.At(from);
        Destination = Folder.At(to);
        return CopyFolderTree(App.Screen, Source, Destination);
    }

    std::string Source, Destination;  ///< as the routine left them
};

TEST_F(TreeCopy, FilesAndSubFoldersAreCopiedAndBothPathsGetABackslash) {
    Folder.Write("s\\A\\inner", "inner");
    Folder.Write("s\\f1", "f1");
    EXPECT_TRUE(Copy("s", "d"));
    EXPECT_EQ((Files{"A\\inner", "f1"}), Folder.Tree("d"));
    EXPECT_EQ("inner", Folder.Read("d\\A\\inner"));
    EXPECT_EQ(Folder.At("s\\"), Source);
    EXPECT_EQ(Folder.At("d\\"), Destination);
}

TEST_F(TreeCopy, TheWindowsRepaintBetweenFiles) {
    for (const char* file : {"a", "b", "c\\d"}) Folder.Write(std::string("s\\") + file);
    EXPECT_TRUE(Copy("s", "d"));
    EXPECT_GE(Screen.EventPumps(), 3);
}

TEST_F(TreeCopy, PathsThatEndInABackslashStayAsTheyAre) {
    Folder.Write("s\\f1", "f1");
    EXPECT_TRUE(Copy("s\\", "d\\"));
    EXPECT_EQ(Folder.At("s\\"), Source);
    EXPECT_EQ(Folder.At("d\\"), Destination);
    EXPECT_TRUE(Folder.HasFile("d\\f1"));
}

TEST_F(TreeCopy, EveryMixtureOfFilesAndFoldersArrivesComplete) {
    for (const char* file : {"a", "B\\1", "c", "D\\E\\2", "D\\e2", "f", "G\\3", "h", "I\\J\\K\\4", "z"}) {
        Folder.Write(std::string("s\\") + file, file);
    }
    Folder.MakeFolder("s\\empty");
    EXPECT_TRUE(Copy("s", "d"));
    EXPECT_EQ(Folder.Tree("s"), Folder.Tree("d"));
    EXPECT_TRUE(Folder.HasFolder("d\\empty"));
}

TEST_F(TreeCopy, HiddenAndSystemFilesAreCopiedOverProtectedOnes) {
    Folder.Write("s\\sub\\h", "new");
    Folder.SetAttributes("s\\sub\\h", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    Folder.Write("d\\sub\\h", "old");
    Folder.SetAttributes("d\\sub\\h", FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(Copy("s", "d"));
    EXPECT_EQ("new", Folder.Read("d\\sub\\h"));
}

// After a sub-folder the listing restarts at a position that counts only sub-folders, so files listed before
// it are copied again. A destination file that shares its data with a source file makes the second copy
// visible.
TEST_F(TreeCopy, FilesListedBeforeASubFolderAreCopiedAgain) {
    Folder.Write("s\\a", "old a");
    Folder.Write("s\\b", "old b");
    Folder.Write("s\\Z\\x", "changed b");
    Folder.Write("s\\Z\\y", "changed a");
    Folder.MakeFolder("d\\Z");
    ASSERT_TRUE(CreateHardLinkA(Folder.At("d\\Z\\x").c_str(), Folder.At("s\\b").c_str(), nullptr));
    ASSERT_TRUE(CreateHardLinkA(Folder.At("d\\Z\\y").c_str(), Folder.At("s\\a").c_str(), nullptr));
    EXPECT_TRUE(Copy("s", "d"));
    ASSERT_EQ("changed b", Folder.Read("s\\b")) << "copying the sub-folder changes the source";
    EXPECT_EQ("changed b", Folder.Read("d\\b")) << "the entry at position 3 is examined again";
    EXPECT_EQ("old a", Folder.Read("d\\a")) << "the entry at position 2 is not";
}

// ".", "..", "A", "f1": after A the listing continues with f1, and nothing is done twice. Copying f1 changes
// the file in A, so a second visit of A would be seen.
TEST_F(TreeCopy, ASubFolderListedFirstIsEnteredOnce) {
    Folder.Write("s\\A\\x", "old x");
    Folder.Write("s\\f1", "changed by f1");
    Folder.MakeFolder("d");
    ASSERT_TRUE(CreateHardLinkA(Folder.At("d\\f1").c_str(), Folder.At("s\\A\\x").c_str(), nullptr));
    EXPECT_TRUE(Copy("s", "d"));
    ASSERT_EQ("changed by f1", Folder.Read("s\\A\\x"));
    EXPECT_EQ("old x", Folder.Read("d\\A\\x"));
    EXPECT_EQ("changed by f1", Folder.Read("d\\f1"));
}

TEST_F(TreeCopy, AMissingSourceCopiesNothingAndSucceeds) {
    EXPECT_TRUE(Copy("missing", "d"));
    EXPECT_EQ((Files{}), Folder.Tree("d"));
}

TEST_F(TreeCopy, TheFirstFailureEndsTheCopySilently) {
    Folder.Write("s\\a", "a");
    Folder.Write("s\\b", "b");
    Folder.Write("s\\c", "c");
    LockedFile lock(Folder.Write("d\\b", "old"));
    EXPECT_FALSE(Copy("s", "d"));
    EXPECT_TRUE(Folder.HasFile("d\\a"));
    EXPECT_FALSE(Folder.HasFile("d\\c"));
}

TEST_F(TreeCopy, AFailureInASubFolderEndsTheWholeCopy) {
    Folder.Write("s\\A\\x", "x");
    Folder.Write("s\\b", "b");
    Folder.MakeFolder("d\\A\\x");
    EXPECT_FALSE(Copy("s", "d"));
    EXPECT_FALSE(Folder.HasFile("d\\b"));
}

TEST_F(TreeCopy, ADestinationThatCannotBeMadeFails) {
    Folder.Write("s\\a", "a");
    Folder.Write("d", "a file");
    EXPECT_FALSE(Copy("s", "d"));
    EXPECT_EQ("a file", Folder.Read("d"));
}

}  // namespace
}  // namespace velbooter::testing
