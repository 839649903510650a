#include "src/setup/SetupWin.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "src/setup/SetupData.h"
#include "tests/src/setup/SetupTest.h"

namespace velbooter::testing {
namespace {

constexpr const char* kKeyInfPath = "files\\setupwin\\bin\\key.inf";
constexpr const char* kDefInfPath = "files\\setupwin\\bin\\def.inf";
constexpr const char* kAutoInfPath = "files\\setupwin\\bin\\auto.inf";
constexpr const char* kOsBatPath = "files\\setupwin\\bin\\os.bat";
constexpr const char* kKeyTemplate = "files\\inf_files\\key_template.inf";
constexpr const char* kMeTemplate = "files\\inf_files\\winme_template.inf";
constexpr const char* k98Template = "files\\inf_files\\win98_template.inf";

class SetupWin : public SetupTest {
 protected:
    SetupWin() {
        Folder.Write(kKeyTemplate);
        Folder.Write(kMeTemplate);
        Folder.MakeFolder("files\\setupwin\\bin");
        MakeArchiver("setupwin");
        Fill("Jane Doe", "Acme Inc.", "BOX", "HOME", {"ABCDE", "FGHIJ", "KLMNO", "PQRST", "UVWXY"});
    }
    void Fill(const std::string& owner, const std::string& organization, const std::string& computer,
              const std::string& workgroup, const Lines& key) {
        FrmWizard& wizard = App.Wizard;
        wizard.TxtOwner.Text = owner;
        wizard.TxtOrg.Text = organization;
        wizard.TxtPCName.Text = computer;
        wizard.TxtWorkgroup.Text = workgroup;
        for (size_t i = 0; i < key.size(); ++i) KeyParts(wizard).at(i)->Text = key[i];
    }
};

TEST_F(SetupWin, FreshTemplatesGetTheSectionsInTheOrderOfWriting) {
    CreateSetupInf(App.Paths, App.Screen, App.Wizard);
    EXPECT_EQ("[Setup]\r\nProductKey=\"ABCDE-FGHIJ-KLMNO-PQRST-UVWXY\"\r\n", Folder.Read(kKeyInfPath));
    EXPECT_EQ(
        "[Setup]\r\nProductKey=\"ABCDE-FGHIJ-KLMNO-PQRST-UVWXY\"\r\nExpress=0\r\n"
        "[NameAndOrg]\r\nName=\"Jane Doe\"\r\nOrg=\"Acme Inc.\"\r\nDisplay=1\r\n"
        "[Network]\r\nComputerName=\"BOX\"\r\nWorkgroup=\"HOME\"\r\nDisplay=1\r\n"
        "[VREDIR]\r\nLogonDomain=\"HOME\"\r\n",
        Folder.Read(kDefInfPath));
    EXPECT_EQ(
        "[Setup]\r\nProductKey=\"ABCDE-FGHIJ-KLMNO-PQRST-UVWXY\"\r\nExpress=1\r\n"
        "[NameAndOrg]\r\nName=\"Jane Doe\"\r\nOrg=\"Acme Inc.\"\r\nDisplay=0\r\n"
        "[Network]\r\nComputerName=\"BOX\"\r\nWorkgroup=\"HOME\"\r\nDisplay=0\r\n"
        "[VREDIR]\r\nLogonDomain=\"HOME\"\r\n",
        Folder.Read(kAutoInfPath));
}

TEST_F(SetupWin, TheKeyFileGetsTheProductKeyAloneAndKeepsAllElse) {
    Folder.Write(kKeyTemplate,
                 "; of the key\r\n[Setup]\r\nExpress=5\r\nProductKey=old\r\nOther=1\r\n[NameAndOrg]\r\n"
                 "Name=kept\r\nDisplay=7\r\n[Network]\r\nWorkgroup=kept\r\n");
    CreateSetupInf(App.Paths, App.Screen, App.Wizard);
    EXPECT_EQ((Lines{"; of the key", "[Setup]", "Express=5", "ProductKey=\"ABCDE-FGHIJ-KLMNO-PQRST-UVWXY\"",
                     "Other=1", "[NameAndOrg]", "Name=kept", "Display=7", "[Network]", "Workgroup=kept"}),
              LinesOf(kKeyInfPath));
}

TEST_F(SetupWin, KeysOfTheTemplateAreReplacedInTheirPlacesWhateverTheirCase) {
    Folder.Write(kMeTemplate,
                 "[vredir]\r\nLOGONDOMAIN=old\r\n[NETWORK]\r\nDisplay=9\r\nworkgroup=old\r\n"
                 "ComputerName=old\r\n[Setup]\r\nEXPRESS=9\r\nProductKey=old\r\n"
                 "[NameAndOrg]\r\nDisplay=9\r\nOrg=old\r\nName=old\r\n");
    CreateSetupInf(App.Paths, App.Screen, App.Wizard);
    EXPECT_EQ(
        (Lines{"[vredir]", "LOGONDOMAIN=\"HOME\"", "[NETWORK]", "Display=1", "workgroup=\"HOME\"",
               "ComputerName=\"BOX\"", "[Setup]", "EXPRESS=0", "ProductKey=\"ABCDE-FGHIJ-KLMNO-PQRST-UVWXY\"",
               "[NameAndOrg]", "Display=1", "Org=\"Acme Inc.\"", "Name=\"Jane Doe\""}),
        LinesOf(kDefInfPath));
    const Lines automatic = LinesOf(kAutoInfPath);
    ASSERT_EQ(13u, automatic.size());
    EXPECT_EQ("Display=0", automatic[3]);
    EXPECT_EQ("EXPRESS=1", automatic[7]);
    EXPECT_EQ("Display=0", automatic[10]);
}

TEST_F(SetupWin, OtherContentOfTheTemplateIsKept) {
    Folder.Write(kMeTemplate,
                 "; Answers\r\n\r\n[BatchSetup]\r\nVersion=3.0 (32-bit)\r\n\r\n[Setup]\r\n; how\r\nEBD=0\r\n"
                 "Express=5\r\n[OptionalComponents]\r\n\"Paint\"=1\r\n[Install]\r\na line without a sign\r\n"
                 "AddReg=Reg\r\n[Reg]\r\nHKLM,\"%KEY%\",,,\"C:\\x; y\"\r\n@plain\r\n");
    CreateSetupInf(App.Paths, App.Screen, App.Wizard);
    const Lines kept{"; Answers",
                     "[BatchSetup]",
                     "Version=3.0 (32-bit)",
                     "[Setup]",
                     "; how",
                     "EBD=0",
                     "Express=0",
                     "ProductKey=\"ABCDE-FGHIJ-KLMNO-PQRST-UVWXY\"",
                     "[OptionalComponents]",
                     "\"Paint\"=1",
                     "[Install]",
                     "a line without a sign",
                     "AddReg=Reg",
                     "[Reg]",
                     "HKLM,\"%KEY%\",,,\"C:\\x; y\"",
                     "@plain",
                     "[NameAndOrg]",
                     "Name=\"Jane Doe\"",
                     "Org=\"Acme Inc.\"",
                     "Display=1",
                     "[Network]",
                     "ComputerName=\"BOX\"",
                     "Workgroup=\"HOME\"",
                     "Display=1",
                     "[VREDIR]",
                     "LogonDomain=\"HOME\""};
    EXPECT_EQ(kept, LinesOf(kDefInfPath));
}

TEST_F(SetupWin, BothEditionsGetTheTemplateOfTheLaterOne) {
    Folder.Write(k98Template, "; for 98\r\n");
    Folder.Write(kMeTemplate, "; for ME\r\n");
    for (const char* edition : {"Microsoft Windows 98", "98", "Microsoft Windows 98 Second Edition",
                                "Microsoft Windows ME", "Windows", ""}) {
        App.Wizard.LblOSType.Caption = edition;
        CreateSetupInf(App.Paths, App.Screen, App.Wizard);
        EXPECT_EQ("; for ME", LinesOf(kDefInfPath).at(0)) << edition;
        EXPECT_EQ("; for ME", LinesOf(kAutoInfPath).at(0)) << edition;
        EXPECT_EQ("@set OSVersion= " + std::string(edition) + "\r\n", Folder.Read(kOsBatPath)) << edition;
    }
    Folder.Remove(k98Template);
    App.Wizard.LblOSType.Caption = "Microsoft Windows 98";
    EXPECT_FALSE(ErrorOf([&] { CreateSetupInf(App.Paths, App.Screen, App.Wizard); }))
        << "the other template is never looked at";
}

TEST_F(SetupWin, TheEditionIsTheOneLineOfTheBatchFile) {
    CreateSetupInf(App.Paths, App.Screen, App.Wizard);
    EXPECT_EQ("@set OSVersion= Microsoft Windows 98\r\n", Folder.Read(kOsBatPath));
    Folder.Write(kOsBatPath, "@echo an older and longer file\r\n@set OSVersion= Windows\r\nrem\r\n");
    App.Wizard.LblOSType.Caption = " 100% \"caf\xE9\" & more ";
    CreateSetupInf(App.Paths, App.Screen, App.Wizard);
    EXPECT_EQ("@set OSVersion=  100% \"caf\xE9\" & more \r\n", Folder.Read(kOsBatPath));
}

TEST_F(SetupWin, EmptyFieldsAreWrittenAsTheirQuotesOrDashes) {
    Fill("", "", "", "", {"", "", "", "", ""});
    CreateSetupInf(App.Paths, App.Screen, App.Wizard);
    EXPECT_EQ("[Setup]\r\nProductKey=\"----\"\r\n", Folder.Read(kKeyInfPath));
    EXPECT_EQ((Lines{"[Setup]", "ProductKey=\"----\"", "Express=0", "[NameAndOrg]", "Name=\"\"", "Org=\"\"",
                     "Display=1", "[Network]", "ComputerName=\"\"", "Workgroup=\"\"", "Display=1", "[VREDIR]",
                     "LogonDomain=\"\""}),
              LinesOf(kDefInfPath));
}

TEST_F(SetupWin, PartsOfAProductKeyAreJoinedAsTheyAre) {
    Fill("o", "o", "p", "w", {"ABCDE", "FG", "", "", "Y"});
    CreateSetupInf(App.Paths, App.Screen, App.Wizard);
    EXPECT_EQ("[Setup]\r\nProductKey=\"ABCDE-FG---Y\"\r\n", Folder.Read(kKeyInfPath));
}

TEST_F(SetupWin, ValuesAreWrittenAsTheyStandBetweenTwoQuotes) {
    Fill("\"Jane\"", " The \"Acme\" = ; [Inc] ", "100%PATH%", "Ren\xE9\\B\xFCro",
         {"ABCDE", "FGHIJ", "KLMNO", "PQRST", "UVWXY"});
    CreateSetupInf(App.Paths, App.Screen, App.Wizard);
    for (const char* file : {kDefInfPath, kAutoInfPath}) {
        const Lines lines = LinesOf(file);
        ASSERT_EQ(13u, lines.size()) << file;
        EXPECT_EQ("Name=\"\"Jane\"\"", lines[4]);
        EXPECT_EQ("Org=\" The \"Acme\" = ; [Inc] \"", lines[5]);
        EXPECT_EQ("ComputerName=\"100%PATH%\"", lines[8]);
        EXPECT_EQ("Workgroup=\"Ren\xE9\\B\xFCro\"", lines[9]);
        EXPECT_EQ("LogonDomain=\"Ren\xE9\\B\xFCro\"", lines[12]);
    }
}

TEST_F(SetupWin, ReadOnlyTemplatesAreFilledAllTheSameAndAgain) {
    for (const char* file : {kKeyTemplate, kMeTemplate}) Folder.SetAttributes(file, FILE_ATTRIBUTE_READONLY);
    CreateSetupInf(App.Paths, App.Screen, App.Wizard);
    Fill("Joe", "o", "p", "w", {"ZZZZZ", "FGHIJ", "KLMNO", "PQRST", "UVWXY"});
    CreateSetupInf(App.Paths, App.Screen, App.Wizard);
    EXPECT_EQ("[Setup]\r\nProductKey=\"ZZZZZ-FGHIJ-KLMNO-PQRST-UVWXY\"\r\n", Folder.Read(kKeyInfPath));
    for (const char* file : {kDefInfPath, kAutoInfPath}) {
        ASSERT_EQ(13u, LinesOf(file).size()) << file;
        EXPECT_EQ("Name=\"Joe\"", LinesOf(file)[4]) << file;
    }
    EXPECT_EQ("", Folder.Read(kMeTemplate));
}

TEST_F(SetupWin, AnswerFilesOfAnEarlierRunAreReplaced) {
    for (const char* file : {kKeyInfPath, kDefInfPath, kAutoInfPath}) {
        Folder.Write(file, "[Setup]\r\nOld=1\r\n");
        Folder.SetAttributes(file, FILE_ATTRIBUTE_READONLY);
    }
    CreateSetupInf(App.Paths, App.Screen, App.Wizard);
    for (const char* file : {kKeyInfPath, kDefInfPath, kAutoInfPath}) {
        EXPECT_EQ(std::string::npos, Folder.Read(file).find("Old")) << file;
        EXPECT_NE(std::string::npos, Folder.Read(file).find("ABCDE-FGHIJ")) << file;
    }
}

TEST_F(SetupWin, AMissingTemplateIsNamedAndNothingIsPacked) {
    for (const char* file : {kKeyTemplate, kMeTemplate}) {
        Folder.Remove(file);
        const auto error = ErrorOf([&] { CreateSetupInf(App.Paths, App.Screen, App.Wizard); });
        ASSERT_TRUE(error) << file;
        EXPECT_EQ(kFileNotFound, error->Number);
        EXPECT_EQ(Folder.At(file), error->File);
        Folder.Write(file);
    }
    EXPECT_TRUE(Folder.Calls("cabarc.exe").empty());
    EXPECT_TRUE(Screen.Messages.empty());
}

TEST_F(SetupWin, AMissingModuleFolderIsAnError) {
    Folder.Remove("files\\setupwin");
    const auto error = ErrorOf([&] { CreateSetupInf(App.Paths, App.Screen, App.Wizard); });
    ASSERT_TRUE(error);
    EXPECT_EQ(kPathNotFound, error->Number);
    EXPECT_TRUE(Folder.Calls("cabarc.exe").empty());
}

TEST_F(SetupWin, AFileThatCannotBeWrittenIsNamedAndNothingIsPacked) {
    for (const char* file : {kKeyInfPath, kDefInfPath, kAutoInfPath, kOsBatPath}) {
        LockedFile lock(Folder.Write(file, "old"));
        const auto error = ErrorOf([&] { CreateSetupInf(App.Paths, App.Screen, App.Wizard); });
        ASSERT_TRUE(error) << file;
        EXPECT_EQ(kPermissionDenied, error->Number) << file;
        EXPECT_EQ(Folder.At(file), error->File);
    }
    EXPECT_TRUE(Folder.Calls("cabarc.exe").empty());
}

TEST_F(SetupWin, TheModuleFolderIsPackedIntoItsCabinet) {
    CreateSetupInf(App.Paths, App.Screen, App.Wizard);
    ExpectPacked("setupwin");
    EXPECT_TRUE(Screen.Messages.empty());
}

TEST_F(SetupWin, AFailedPackingIsReportedAndNotExamined) {
    Folder.MakeTool("cabarc.exe");
    Screen.Expect(PackingFailure("setupwin"));
    CreateSetupInf(App.Paths, App.Screen, App.Wizard);
    EXPECT_FALSE(App.RunEnded);
    EXPECT_TRUE(Folder.HasFile(kOsBatPath));
    EXPECT_FALSE(Folder.HasFile("cabs\\lib\\setupwin.cab"));
}

TEST_F(SetupWin, TheModulesOwnFilesAreLeftAlone) {
    Folder.Write("files\\setupwin\\menu\\SETUPWIN.BAT", "menu");
    Folder.Write("files\\setupwin\\bin\\SETUPWIN.BAT", "start");
    CreateSetupInf(App.Paths, App.Screen, App.Wizard);
    EXPECT_EQ((Lines{"bin\\SETUPWIN.BAT", "bin\\auto.inf", "bin\\def.inf", "bin\\key.inf", "bin\\os.bat",
                     "menu\\SETUPWIN.BAT"}),
              Folder.Tree("files\\setupwin"));
    EXPECT_EQ("start", Folder.Read("files\\setupwin\\bin\\SETUPWIN.BAT"));
}

TEST_F(SetupWin, TheKindOfAnAnswerFileIsItsDisplayNumber) {
    struct Case {
        std::int16_t Kind;
        std::string Express, Display;
    };
    for (const Case& c : {Case{0, "1", "0"}, Case{1, "0", "1"}, Case{3, "0", "3"}, Case{-1, "0", "-1"}}) {
        Folder.Write("answers.inf");
        ProcessSetupInfFile(App.Paths, App.Wizard, "answers.inf", c.Kind);
        const Lines lines = LinesOf("answers.inf");
        ASSERT_EQ(13u, lines.size()) << c.Kind;
        EXPECT_EQ("Express=" + c.Express, lines[2]);
        EXPECT_EQ("Display=" + c.Display, lines[6]);
        EXPECT_EQ("Display=" + c.Display, lines[10]);
    }
    Folder.Write("answers.inf");
    ProcessSetupInfFile(App.Paths, App.Wizard, "answers.inf", 2);
    EXPECT_EQ((Lines{"[Setup]", "ProductKey=\"ABCDE-FGHIJ-KLMNO-PQRST-UVWXY\""}), LinesOf("answers.inf"));
}

}  // namespace
}  // namespace velbooter::testing
