#include "src/disk/contents/Cabinets.h"

#include <gtest/gtest.h>

#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

class CabinetPacking : public ApplicationTest {
 protected:
    bool Pack(const std::string& name, const std::string& sourceFolder, const std::string& cabFolder) {
        CabFolder = cabFolder;
        return PackCabinet(App.Paths, App.Screen, name, sourceFolder, CabFolder);
    }
    static Message Failure(const std::string& name) {
        return {"The Cabinet " + name + ".cab could not be created \r\n\r\nThe Veltrane Can't Continue !",
                "Error While Copying", Buttons::Ok, Icon::Critical};
    }

    std::string CabFolder;  ///< as the routine left it
};

TEST_F(CabinetPacking, TheCommandLineIsExactAndUnquoted) {
    Folder.MakeTool("cabarc.exe", "create|cabs\\lib\\net.cab\n");
    EXPECT_TRUE(Pack("net", "files\\net", "cabs\\lib"));
    const auto calls = Folder.Calls("cabarc.exe");
    ASSERT_EQ(1u, calls.size());
    EXPECT_EQ(
        Folder.Path() + "\\cabarc.exe -m LZX:21 -p -r -P files\\net\\ n cabs\\lib\\net.cab files\\net\\*.*",
        calls[0].CommandLine);
}

TEST_F(CabinetPacking, NamesWithSpacesAreNotQuotedEither) {
    Folder.MakeTool("cabarc.exe", "create|cabs\\my net.cab\n");
    EXPECT_TRUE(Pack("my net", "files\\my net", "cabs\\"));
    EXPECT_EQ(Folder.Path() +
                  "\\cabarc.exe -m LZX:21 -p -r -P files\\my net\\ n cabs\\my net.cab files\\my net\\*.*",
              Folder.Calls("cabarc.exe").at(0).CommandLine);
}

TEST_F(CabinetPacking, TheArchiverRunsHiddenInTheApplicationFolder) {
    Folder.MakeTool("cabarc.exe", "create|cabs\\net.cab\n");
    EXPECT_TRUE(Pack("net", "files\\net", "cabs"));
    const auto calls = Folder.Calls("cabarc.exe");
    ASSERT_EQ(1u, calls.size());
    EXPECT_EQ("hidden", calls[0].Window);
    EXPECT_EQ(Folder.Path(), calls[0].WorkingFolder);
    EXPECT_EQ(Folder.Path(), CurrentFolder());
}

TEST_F(CabinetPacking, TheCabinetsFolderGetsABackslashAndIsMade) {
    Folder.MakeTool("cabarc.exe", "create|cabs\\net.cab\n");
    EXPECT_TRUE(Pack("net", "files\\net", "cabs"));
    EXPECT_EQ("cabs\\", CabFolder);
    EXPECT_TRUE(Folder.HasFile("cabs\\net.cab"));
    Folder.MakeTool("cabarc.exe", "create|cabs\\a\\b\\net.cab\n");
    EXPECT_TRUE(Pack("net", "files\\net", "cabs\\a\\b\\"));
    EXPECT_EQ("cabs\\a\\b\\", CabFolder);
}

TEST_F(CabinetPacking, AnArchiverThatLeavesNoCabinetIsReported) {
    Folder.MakeTool("cabarc.exe");
    Screen.Expect(Failure("net"));
    EXPECT_FALSE(Pack("net", "files\\missing", "cabs\\lib"));
    EXPECT_TRUE(Folder.HasFolder("cabs\\lib"));
}

TEST_F(CabinetPacking, AMissingArchiverIsReported) {
    Screen.Expect(Failure("net"));
    EXPECT_FALSE(Pack("net", "files\\net", "cabs"));
}

TEST_F(CabinetPacking, TheArchiversExitCodeIsNotLookedAt) {
    Folder.MakeTool("cabarc.exe", "create|cabs\\net.cab\nexit|1\n");
    EXPECT_TRUE(Pack("net", "files\\net", "cabs"));
}

TEST_F(CabinetPacking, AnOldCabinetCountsAsSuccess) {
    Folder.MakeTool("cabarc.exe", "exit|1\n");
    Folder.Write("cabs\\net.cab", "old");
    EXPECT_TRUE(Pack("net", "files\\net", "cabs"));
    EXPECT_EQ("old", Folder.Read("cabs\\net.cab"));
}

TEST_F(CabinetPacking, TheEndOfTheArchiverIsAwaitedWhileWindowsPaint) {
    Folder.MakeTool("cabarc.exe", "wait|700\ncreate|cabs\\net.cab\n");
    EXPECT_TRUE(Pack("net", "files\\net", "cabs"));
    EXPECT_GE(Screen.Views.size(), 2u);
}

}  // namespace
}  // namespace velbooter::testing
