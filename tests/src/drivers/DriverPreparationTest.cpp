#include "src/drivers/DriverPreparation.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "src/common/RuntimeError.h"
#include "tests/src/drivers/DriverFolder.h"

namespace velbooter::testing {
namespace {

using Files = std::vector<std::string>;

class DriverCopying : public DriversTest {
 protected:
    enum class Network { Off, Ndis, Odi };

    DriverCopying() {
        for (const char* folder : {"aspi", "ndis", "odi16", "odi32"}) {
            for (const char* name : {"a", "b", "c"}) {
                const std::string cabinet = std::string(folder) + "\\" + name + ".cab";
                Folder.Write("drivers\\" + cabinet, cabinet);
            }
        }
        App.Wizard.ChkASPI.Value = 1;
        Choose(Network::Ndis);
    }

    void Choose(Network network) {
        App.Wizard.ChkNDIS.Value = network == Network::Off ? 0 : 1;
        SetNetworkMode(App.Wizard, network == Network::Odi ? NetworkMode::Odi : NetworkMode::Ndis);
    }
    /// Prepares the drivers of `index` and returns whether the run continues.
    bool Prepare(const std::string& index) {
        Folder.Write("Drivers.ini", index);
        return PrepareDrivers(App.Paths, App.Screen, App.Wizard);
    }
    /// The drivers that are copied when Drivers.ini contains `index`, relative to cabs\Lib.
    Files Copied(const std::string& index) {
        Folder.Remove("cabs");
        App.Wizard.LstFiles.Clear();
        Prepare(index);
        return Folder.Tree("cabs\\Lib");
    }
    static Message Failure(const std::string& source) {
        return {"Error while copying the file :\r\n" + source, "Error While Copying",
                Buttons::AbortRetryIgnore, Icon::Critical};
    }

    static constexpr const char* kOneOfEach =
        "[ASPI]\r\nA=1\r\n[NDIS]\r\nB=1\r\n[ODI16]\r\nA=1\r\n[ODI32]\r\nC=1\r\n";
};

TEST_F(DriverCopying, ASelectedDriverIsCopiedListedAndSelected) {
    Folder.Write("drivers\\ndis\\e100b.cab", "a cabinet");
    Prepare("[NDIS]\r\nE100B=1\r\n");
    EXPECT_EQ((Files{"ndis\\e100b.cab"}), Folder.Tree("cabs\\Lib"));
    EXPECT_EQ("a cabinet", Folder.Read("cabs\\Lib\\ndis\\e100b.cab"));
    EXPECT_EQ((Files{"lib\\ndis\\e100b.cab"}), Listed());
    EXPECT_EQ((Files{"lib\\ndis\\e100b.cab"}), Selected());
}

TEST_F(DriverCopying, InNdisModeTheOdiGroupsAreIgnored) {
    EXPECT_EQ((Files{"aspi\\a.cab", "ndis\\b.cab"}), Copied(kOneOfEach));
    EXPECT_EQ((Files{"lib\\aspi\\a.cab", "lib\\ndis\\b.cab"}), Listed());
}

TEST_F(DriverCopying, InOdiModeTheNdisGroupIsIgnored) {
    Choose(Network::Odi);
    EXPECT_EQ((Files{"aspi\\a.cab", "odi16\\a.cab", "odi32\\c.cab"}), Copied(kOneOfEach));
    EXPECT_EQ((Files{"lib\\aspi\\a.cab", "lib\\odi16\\a.cab", "lib\\odi32\\c.cab"}), Listed());
    EXPECT_EQ(Listed(), Selected());
}

TEST_F(DriverCopying, ARowThatIsNotTickedCopiesNothing) {
    Choose(Network::Off);
    EXPECT_EQ((Files{"aspi\\a.cab"}), Copied(kOneOfEach));
    SetNetworkMode(App.Wizard, NetworkMode::Odi);
    EXPECT_EQ((Files{"aspi\\a.cab"}), Copied(kOneOfEach));
    App.Wizard.ChkASPI.Value = 0;
    EXPECT_EQ((Files{}), Copied(kOneOfEach));
    Choose(Network::Ndis);
    EXPECT_EQ((Files{"ndis\\b.cab"}), Copied(kOneOfEach));
}

TEST_F(DriverCopying, AnyNumberButZeroMeansYes) {
    struct Case {
        const char* Value;
        bool On;
    };
    for (const Case& c : {Case{"1", true},
                          {"2", true},
                          {"-1", true},
                          {"11", true},
                          {"0.5", true},
                          {" 1", true},
                          {"1 ", true},
                          {"1x", true},
                          {"1=0", true},
                          {"0", false},
                          {"", false},
                          {"x", false},
                          {"x1", false},
                          {"00", false},
                          {"-0", false},
                          {"0=1", false},
                          {"0x1", false}}) {
        const Files expected = c.On ? Files{"ndis\\a.cab"} : Files{};
        EXPECT_EQ(expected, Copied(std::string("[NDIS]\r\nA=") + c.Value + "\r\n")) << c.Value;
    }
}

TEST_F(DriverCopying, LinesWithoutAnEqualsSignEmptyLinesAndCommentsAreSkipped) {
    EXPECT_EQ((Files{"ndis\\c.cab"}), Copied("[NDIS]\r\nA\r\n\r\n;A=1\r\n; B=1\r\nC=1\r\n"));
}

TEST_F(DriverCopying, AKeyBeforeTheFirstHeaderIsNotCopied) {
    EXPECT_EQ((Files{"aspi\\b.cab"}), Copied("A=1\r\n[Other]\r\nC=1\r\n[ASPI]\r\nB=1\r\n"));
}

TEST_F(DriverCopying, KeysOfAnUnknownSectionBelongToTheGroupBeforeIt) {
    EXPECT_EQ((Files{"aspi\\a.cab", "aspi\\b.cab"}), Copied("[ASPI]\r\nA=1\r\n[DefaultDrivers]\r\nB=1\r\n"));
}

TEST_F(DriverCopying, AHeaderCountsOnlyWhenItIsWrittenExactlySo) {
    for (const char* header : {"[ndis]", "[Ndis]", "[NDIS] ", " [NDIS]", "[NDIS", "[NDIS]x", "[ NDIS ]"}) {
        EXPECT_EQ((Files{"aspi\\a.cab", "aspi\\b.cab"}),
                  Copied(std::string("[ASPI]\r\nA=1\r\n") + header + "\r\nB=1\r\n"))
            << header;
    }
}

TEST_F(DriverCopying, AHeaderOfAGroupThatIsOffEndsTheGroupBeforeIt) {
    Choose(Network::Off);
    EXPECT_EQ((Files{"aspi\\a.cab"}), Copied("[ASPI]\r\nA=1\r\n[NDIS]\r\nB=1\r\n[x]\r\nC=1\r\n"));
    EXPECT_EQ((Files{"aspi\\a.cab"}), Copied("[ASPI]\r\nA=1\r\n[ODI16]\r\nB=1\r\n"));
    EXPECT_EQ((Files{"aspi\\a.cab"}), Copied("[ASPI]\r\nA=1\r\n[ODI32]\r\nB=1\r\n"));
    Choose(Network::Ndis);
    App.Wizard.ChkASPI.Value = 0;
    EXPECT_EQ((Files{"ndis\\a.cab"}), Copied("[NDIS]\r\nA=1\r\n[ASPI]\r\nB=1\r\n"));
}

TEST_F(DriverCopying, AGroupMayComeBackLaterInTheFile) {
    EXPECT_EQ((Files{"aspi\\a.cab", "aspi\\c.cab", "ndis\\b.cab"}),
              Copied("[ASPI]\r\nA=1\r\n[NDIS]\r\nB=1\r\n[ASPI]\r\nC=1\r\n"));
}

TEST_F(DriverCopying, EntriesStandInTheOrderOfTheIndexAtTheEndOfTheList) {
    App.Wizard.LstFiles.AddItem("IO.SYS");
    Prepare("[NDIS]\r\nC=1\r\nA=1\r\n[ASPI]\r\nB=1\r\n");
    EXPECT_EQ((Files{"IO.SYS", "lib\\ndis\\c.cab", "lib\\ndis\\a.cab", "lib\\aspi\\b.cab"}), Listed());
}

TEST_F(DriverCopying, AKeyBecomesANameInLowerCase) {
    Folder.Write("drivers\\ndis\\T\xDCRK.CAB", "a cabinet");
    Prepare("[NDIS]\r\nT\xDCRK=1\r\n");
    EXPECT_EQ((Files{"lib\\ndis\\t\xFCrk.cab"}), Listed());
    EXPECT_EQ("a cabinet", Folder.Read("cabs\\Lib\\ndis\\t\xFCrk.cab"));
}

TEST_F(DriverCopying, ANameThatTheCodePageLacksIsAskedAbout) {
    Screen.Expect(Failure("drivers\\ndis\\?uk.cab"), Answer::Ignore);
    Prepare("[NDIS]\r\n?UK=1\r\nA=1\r\n");
    EXPECT_EQ((Files{"ndis\\a.cab"}), Folder.Tree("cabs\\Lib"));
}

TEST_F(DriverCopying, LinesMayEndInLfAlone) {
    EXPECT_EQ((Files{"aspi\\a.cab", "ndis\\b.cab"}), Copied("[ASPI]\nA=1\n[NDIS]\nB=1"));
}

TEST_F(DriverCopying, AnIndexOfNoBytesCopiesNothing) {
    EXPECT_EQ((Files{}), Copied(""));
    EXPECT_EQ(0, App.Wizard.WorkProgress.Max);
    EXPECT_FALSE(App.RunEnded);
}

TEST_F(DriverCopying, AnOldCopyIsReplacedWhateverItsAttributesAre) {
    Folder.Write("cabs\\Lib\\ndis\\a.cab", "an older cabinet of another size");
    Folder.SetAttributes("cabs\\Lib\\ndis\\a.cab", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
    Prepare("[NDIS]\r\nA=1\r\n");
    EXPECT_EQ("ndis\\a.cab", Folder.Read("cabs\\Lib\\ndis\\a.cab"));
}

TEST_F(DriverCopying, TheBarMovesOneStepForEachLineOfTheIndex) {
    App.Wizard.WorkProgress.Value = 77;
    Prepare("; a comment\r\n\r\n[NDIS]\r\nA=1\r\nB=0\r\nnothing\r\n[ODI16]\r\nA=1\r\n");
    EXPECT_EQ(8, App.Wizard.WorkProgress.Max);
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8}), PaintedProgress());
    for (const View& view : Screen.Views) EXPECT_EQ(8, view.ProgressMax);
    EXPECT_EQ(8, Screen.Repaints());
}

TEST_F(DriverCopying, TheBarStartsAtItsMinimum) {
    App.Wizard.WorkProgress.Min = 10;
    Prepare("[NDIS]\r\nA=1\r\n");
    EXPECT_EQ((std::vector<int>{11, 12}), PaintedProgress());
}

TEST_F(DriverCopying, DriverEntriesOfEarlierStepsAreSelectedByTheirFirstEightCharacters) {
    for (const char* entry : {"lib\\aspi\\x.cab", "lib\\ndis\\x.cab", "lib\\odi16\\nw.cab",
                              "lib\\odi32\\nw.cab", "lib\\ndis", "lib\\odi1", "lib\\aspirin.txt"}) {
        App.Wizard.LstFiles.AddItem(entry);
    }
    const Files drivers = Listed();
    for (const char* entry :
         {"", "IO.SYS", "lib\\asp", "lib\\odi2\\x.cab", "lib\\odi\\x.cab", "Lib\\ndis\\x.cab",
          "LIB\\ASPI\\x.cab", "x\\lib\\aspi\\x.cab", "lib/ndis/x.cab"}) {
        App.Wizard.LstFiles.AddItem(entry);
    }
    Choose(Network::Off);
    Prepare("");
    EXPECT_EQ(drivers, Selected());
}

TEST_F(DriverCopying, OtherEntriesKeepTheirMark) {
    App.Wizard.LstFiles.AddItem("IO.SYS");
    App.Wizard.LstFiles.AddItem("bin\\menu.com");
    App.Wizard.LstFiles.Select(0, true);
    Prepare("[NDIS]\r\nA=1\r\n");
    EXPECT_EQ((Files{"IO.SYS", "lib\\ndis\\a.cab"}), Selected());
}

TEST_F(DriverCopying, AbortAtAMissingDriverEndsTheRun) {
    Screen.Expect(Failure("drivers\\ndis\\gone.cab"), Answer::Abort, [&] {
        EXPECT_EQ((Files{"ndis\\a.cab"}), Folder.Tree("cabs\\Lib")) << "what came before stays until then";
    });
    EXPECT_FALSE(Prepare("[NDIS]\r\nA=1\r\nGONE=1\r\nB=1\r\n"));
    EXPECT_EQ((Files{"ndis\\a.cab"}), Folder.Tree("cabs\\Lib")) << "nothing after it is copied";
    EXPECT_EQ((Files{"lib\\ndis\\a.cab", "lib\\ndis\\gone.cab"}), Listed());
    EXPECT_EQ((Files{}), Selected()) << "it returns at once";
}

TEST_F(DriverCopying, IgnoreAtAMissingDriverGoesOnWithTheNext) {
    Screen.Expect(Failure("drivers\\ndis\\gone.cab"), Answer::Ignore);
    Prepare("[NDIS]\r\nGONE=1\r\nB=1\r\n");
    EXPECT_FALSE(App.RunEnded);
    EXPECT_EQ((Files{"ndis\\b.cab"}), Folder.Tree("cabs\\Lib"));
    EXPECT_EQ((Files{"lib\\ndis\\gone.cab", "lib\\ndis\\b.cab"}), Listed());
    EXPECT_EQ(Listed(), Selected());
    EXPECT_TRUE(Folder.HasFile("Drivers.ini"));
}

TEST_F(DriverCopying, RetryAtAMissingDriverAsksAgain) {
    Screen.Expect(Failure("drivers\\aspi\\gone.cab"), Answer::Retry,
                  [&] { Folder.Write("drivers\\aspi\\gone.cab", "there now, but not searched again"); });
    Screen.Expect(Failure("drivers\\aspi\\gone.cab"), Answer::Retry);
    Screen.Expect(Failure("drivers\\aspi\\gone.cab"), Answer::Ignore);
    Prepare("[ASPI]\r\nGONE=1\r\nB=1\r\n");
    EXPECT_EQ((Files{"aspi\\b.cab"}), Folder.Tree("cabs\\Lib"));
    EXPECT_EQ(3u, Screen.Messages.size());
}

TEST_F(DriverCopying, RetryCopiesOnceTheTargetIsFree) {
    Choose(Network::Odi);
    LockedFile lock(Folder.Write("cabs\\Lib\\odi16\\a.cab", "old"));
    Screen.Expect(Failure("drivers\\odi16\\a.cab"), Answer::Retry);
    Screen.Expect(Failure("drivers\\odi16\\a.cab"), Answer::Retry, [&] { lock.Release(); });
    Prepare("[ODI16]\r\nA=1\r\n");
    EXPECT_EQ("odi16\\a.cab", Folder.Read("cabs\\Lib\\odi16\\a.cab"));
    EXPECT_EQ((Files{"lib\\odi16\\a.cab"}), Selected());
}

TEST_F(DriverCopying, AMissingIndexIsAnError) {
    EXPECT_EQ(kFileNotFound,
              NumberOf([&] { static_cast<void>(PrepareDrivers(App.Paths, App.Screen, App.Wizard)); }));
    EXPECT_FALSE(App.RunEnded);
}

TEST_F(DriverCopying, ALockedIndexIsAnError) {
    LockedFile lock(Folder.Write("Drivers.ini", "[NDIS]\r\nA=1\r\n"));
    EXPECT_EQ(kPermissionDenied,
              NumberOf([&] { static_cast<void>(PrepareDrivers(App.Paths, App.Screen, App.Wizard)); }));
    EXPECT_EQ((Files{}), Listed());
}

}  // namespace
}  // namespace velbooter::testing
