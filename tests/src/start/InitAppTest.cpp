#include "src/start/BuildRun.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "src/common/RuntimeError.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

using Files = std::vector<std::string>;

class Preparing : public ApplicationTest {
 protected:
    Preparing() {
        Folder.Write("files\\base_files\\CONFIG.SYS", "config");
        Folder.Write("files\\base_files\\bin\\menu.bat", "menu");
        Folder.Write("files\\base_files\\other\\x");
    }
    std::string BaseFiles() const { return Folder.At("files\\base_files\\*.*"); }
    std::string BaseBinFiles() const { return Folder.At("files\\base_files\\bin\\*.*"); }
};

TEST_F(Preparing, EveryDriverCabinetIsListedWithOneInTheOrderOfTheGroups) {
    for (const char* file :
         {"odi32\\d.cab", "odi16\\c.cab", "ndis\\b.cab", "aspi\\a.cab", "aspi\\a2.cab", "other\\e.cab"}) {
        Folder.Write(std::string("drivers\\") + file);
    }
    InitApp(App);
    EXPECT_EQ("[ASPI]\r\nA=1\r\nA2=1\r\n[NDIS]\r\nB=1\r\n[ODI16]\r\nC=1\r\n[ODI32]\r\nD=1\r\n",
              Folder.Read("Drivers.ini"));
}

TEST_F(Preparing, ADriverIsNamedInUpperCaseWithoutItsExtension) {
    for (const char* file : {"e100b.cab", "Rtl8139.CAB", "my card.cab"}) {
        Folder.Write(std::string("drivers\\ndis\\") + file);
    }
    Folder.SetAttributes("drivers\\ndis\\e100b.cab",
                         FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_READONLY);
    InitApp(App);
    const std::string index = Folder.Read("Drivers.ini");
    EXPECT_EQ("[NDIS]\r\n", index.substr(0, 8));
    for (const char* line : {"\r\nE100B=1\r\n", "\r\nRTL8139=1\r\n", "\r\nMY CARD=1\r\n"}) {
        EXPECT_NE(std::string::npos, index.find(line)) << index;
    }
}

TEST_F(Preparing, OnlyCabinetsOfTheGroupsOwnFolderAreDrivers) {
    Folder.Write("drivers\\aspi\\README.TXT");
    Folder.Write("drivers\\odi16\\readme.txt");
    Folder.Write("drivers\\odi16\\nw.cab");
    Folder.Write("drivers\\odi16\\more\\deep.cab");
    Folder.Write("drivers\\root.cab");
    InitApp(App);
    EXPECT_EQ("[ODI16]\r\nNW=1\r\n", Folder.Read("Drivers.ini"));
}

TEST_F(Preparing, AnOldDriverIndexIsReplaced) {
    Folder.Write("Drivers.ini", "[ASPI]\r\nOLD=1\r\n");
    Folder.SetAttributes("Drivers.ini", FILE_ATTRIBUTE_READONLY);
    Folder.Write("drivers\\ndis\\b.cab");
    InitApp(App);
    EXPECT_EQ("[NDIS]\r\nB=1\r\n", Folder.Read("Drivers.ini"));
}

TEST_F(Preparing, WithoutDriversTheIndexIsEmptyButThere) {
    InitApp(App);
    EXPECT_EQ("", Folder.Read("Drivers.ini"));
}

TEST_F(Preparing, ADriverIndexThatCannotBeDeletedIsAnError) {
    LockedFile lock(Folder.Write("Drivers.ini", "old"));
    EXPECT_THROW(InitApp(App), RuntimeError);
}

TEST_F(Preparing, TheDefaultTargetIsAnImageInTheApplicationFolder) {
    App.Wizard.TxtDest.Text = "other";
    InitApp(App);
    EXPECT_EQ(Folder.At("BootDisk.img"), App.Wizard.TxtDest.Text);
}

TEST_F(Preparing, TheDosModuleFolderIsRebuilt) {
    Folder.Write("files\\dos\\old");
    Folder.Write("files\\dos_files\\menu\\new");
    InitApp(App);
    EXPECT_EQ((Files{"menu\\new"}), Folder.Tree("files\\dos"));
}

TEST_F(Preparing, TheResultOfTheDosModuleFolderIsNotExamined) {
    LockedFile lock(Folder.Write("files\\dos_files\\menu\\new"));
    Screen.Expect(CopyFailure(Folder.At("files\\dos_files\\menu\\*.*")), Answer::Abort);
    InitApp(App);
    EXPECT_FALSE(App.RunEnded);
    EXPECT_TRUE(Folder.HasFile("cabs\\CONFIG.SYS"));
}

TEST_F(Preparing, TheTreeCabsIsRebuiltFromTheBaseFiles) {
    Folder.Write("cabs\\old\\x");
    Folder.SetAttributes("cabs\\old\\x", FILE_ATTRIBUTE_READONLY);
    InitApp(App);
    EXPECT_EQ((Files{"CONFIG.SYS", "bin\\menu.bat"}), Folder.Tree("cabs"));
    EXPECT_EQ("menu", Folder.Read("cabs\\bin\\menu.bat"));
}

TEST_F(Preparing, ATreeThatCannotBeDeletedIsIgnored) {
    LockedFile lock(Folder.Write("cabs\\old"));
    InitApp(App);
    EXPECT_FALSE(App.RunEnded);
    EXPECT_TRUE(Folder.HasFile("cabs\\CONFIG.SYS"));
}

TEST_F(Preparing, MissingBaseFilesAreNoFailure) {
    Folder.Remove("files");
    InitApp(App);
    EXPECT_FALSE(App.RunEnded);
    EXPECT_TRUE(Folder.HasFolder("cabs\\bin"));
}

TEST_F(Preparing, AbortCancelsTheRunAfterBothCopiesWereTried) {
    Folder.Write("drivers\\ndis\\b.cab");
    LockedFile first(Folder.At("files\\base_files\\CONFIG.SYS"));
    Screen.Expect(CopyFailure(BaseFiles()), Answer::Abort,
                  [&] { Folder.Write("files\\base_files\\bin\\late"); });
    LockedFile second(Folder.At("files\\base_files\\bin\\menu.bat"));
    Screen.Expect(CopyFailure(BaseBinFiles()), Answer::Ignore);
    InitApp(App);
    EXPECT_TRUE(App.RunEnded);
    EXPECT_EQ("Operation canceled", App.Wizard.LblFinish.Caption);
    EXPECT_FALSE(Folder.HasFolder("cabs"));
    EXPECT_FALSE(Folder.HasFile("Drivers.ini"));
}

TEST_F(Preparing, AbortOfTheSecondCopyCancelsToo) {
    LockedFile lock(Folder.At("files\\base_files\\bin\\menu.bat"));
    Screen.Expect(CopyFailure(BaseBinFiles()), Answer::Abort);
    InitApp(App);
    EXPECT_TRUE(App.RunEnded);
}

TEST_F(Preparing, IgnoreGoesOn) {
    LockedFile lock(Folder.At("files\\base_files\\CONFIG.SYS"));
    Screen.Expect(CopyFailure(BaseFiles()), Answer::Ignore);
    InitApp(App);
    EXPECT_FALSE(App.RunEnded);
    EXPECT_EQ((Files{"bin\\menu.bat"}), Folder.Tree("cabs"));
}

}  // namespace
}  // namespace velbooter::testing
