#include "src/setup/SetupNT.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "tests/src/setup/SetupTest.h"

namespace velbooter::testing {
namespace {

constexpr const char* kUnattendPath = "files\\setupnt\\bin\\unattend.txt";
constexpr const char* kOwnTemplate = "files\\inf_files\\win2k_template.inf";

class SetupNT : public SetupTest {
 protected:
    SetupNT() {
        Folder.Write(kOwnTemplate);
        Folder.MakeFolder("files\\setupnt\\bin");
        MakeArchiver("setupnt");
    }
    /// Creates the answer file from a key file whose [Win2KInfo] contains `keys`, and returns its lines.
    Lines AnswersFrom(const std::string& keys) {
        Folder.Write("keyfile.txt", "[Win2KInfo]\r\n" + keys);
        FillSetupDataFromKeyFileToUnattend(App.Paths, Folder.At("keyfile.txt"), Folder.At(kUnattendPath));
        return LinesOf(kUnattendPath);
    }
};

TEST_F(SetupNT, AFreshTemplateGetsTheSectionsInTheOrderOfWriting) {
    Folder.Write("keyfile.txt",
                 "[Win9xInfo]\r\nOwnerName=wrong\r\nProductKey=wrong\r\n[Win2KInfo]\r\nOwnerName=Jane Doe\r\n"
                 "Organization=Acme Inc.\r\nProductKey=ABCDE-FGHIJ-KLMNO-PQRST-UVWXY\r\nComputerName=BOX\r\n"
                 "JoinDomain=0\r\nWorkgroup=HOME\r\n");
    CreateSetupNT(App.Paths, App.Screen);
    EXPECT_EQ(
        "[UserData]\r\nFullName=\"Jane Doe\"\r\nOrgName=\"Acme Inc.\"\r\n"
        "ProductID=ABCDE-FGHIJ-KLMNO-PQRST-UVWXY\r\nComputerName=\"BOX\"\r\n"
        "[Identification]\r\nJoinWorkgroup=\"HOME\"\r\nJoinDomain=\r\n",
        Folder.Read(kUnattendPath));
}

TEST_F(SetupNT, JoiningADomainTurnsTheTwoKeysRound) {
    EXPECT_EQ((Lines{"[UserData]", "FullName=\"\"", "OrgName=\"\"", "ProductID=", "ComputerName=\"\"",
                     "[Identification]", "JoinDomain=\"CORP\"", "JoinWorkgroup="}),
              AnswersFrom("JoinDomain=1\r\nWorkgroup=CORP\r\n"));
}

TEST_F(SetupNT, OnlyANumberThatIsNotZeroJoinsADomain) {
    const std::pair<std::string, bool> cases[] = {
        {"JoinDomain=1\r\n", true},   {"JoinDomain=2\r\n", true},    {"JoinDomain=-1\r\n", true},
        {"JoinDomain=0.5\r\n", true}, {"JoinDomain=1x\r\n", true},   {"JoinDomain=0\r\n", false},
        {"JoinDomain=00\r\n", false}, {"JoinDomain=yes\r\n", false}, {"JoinDomain=True\r\n", false},
        {"JoinDomain=x1\r\n", false}, {"JoinDomain=\r\n", false},    {"", false},
    };
    for (const auto& [key, joins] : cases) {
        const Lines lines = AnswersFrom(key + "Workgroup=CORP\r\n");
        ASSERT_EQ(8u, lines.size()) << key;
        EXPECT_EQ(joins ? "JoinDomain=\"CORP\"" : "JoinWorkgroup=\"CORP\"", lines[6]) << key;
        EXPECT_EQ(joins ? "JoinWorkgroup=" : "JoinDomain=", lines[7]) << key;
    }
}

TEST_F(SetupNT, KeysOfTheTemplateAreReplacedAndAllElseIsKept) {
    Folder.Write(kOwnTemplate,
                 "; Answers\r\n\r\n[Data]\r\nMsDosInitiated=1\r\n[Identification]\r\nJoinDomain=OLD\r\n"
                 "joinworkgroup=OLD\r\n; who\r\n[USERDATA]\r\nComputerName=*\r\nFullName=old\r\nOther=%x%\r\n"
                 "[Networking]\r\na line without a sign\r\n");
    const Lines lines = AnswersFrom(
        "OwnerName=Jane\r\nOrganization=Acme\r\nProductKey=12345\r\nComputerName=BOX\r\nWorkgroup=HOME\r\n");
    EXPECT_EQ((Lines{"; Answers", "[Data]", "MsDosInitiated=1", "[Identification]",
                     "JoinDomain=", "joinworkgroup=\"HOME\"", "; who", "[USERDATA]", "ComputerName=\"BOX\"",
                     "FullName=\"Jane\"", "Other=%x%", "OrgName=\"Acme\"", "ProductID=12345", "[Networking]",
                     "a line without a sign"}),
              lines);
}

TEST_F(SetupNT, AValueThatHasItsQuotesGetsNoSecondPair) {
    const Lines lines = AnswersFrom(
        "OwnerName=\"Jane Doe\"\r\nOrganization=\"\"Acme\"\"\r\nComputerName=\"  BOX  \"\r\n"
        "ProductKey=\"12345-67890\"\r\nJoinDomain=1\r\nWorkgroup=\"CORP\"\r\n");
    EXPECT_EQ((Lines{"[UserData]", "FullName=\"Jane Doe\"", "OrgName=\"Acme\"", "ProductID=12345-67890",
                     "ComputerName=\"BOX\"", "[Identification]", "JoinDomain=\"CORP\"", "JoinWorkgroup="}),
              lines);
}

TEST_F(SetupNT, QuotesInsideAValueAreKept) {
    const Lines lines =
        AnswersFrom("OwnerName=The \"Doe\"\r\nOrganization=6\" of rain\r\nProductKey=a \"b\" c\r\n");
    EXPECT_EQ("FullName=\"The \"Doe\"\"", lines.at(1));
    EXPECT_EQ("OrgName=\"6\" of rain\"", lines.at(2));
    EXPECT_EQ("ProductID=a \"b\" c", lines.at(3));
}

TEST_F(SetupNT, PercentSignsAndBytesBeyondAsciiAreKept) {
    const Lines lines =
        AnswersFrom("OwnerName=Ren\xE9 = M\xFCller; x\r\nOrganization=100%PATH%\r\nProductKey=\xC4%1\r\n");
    EXPECT_EQ("FullName=\"Ren\xE9 = M\xFCller; x\"", lines.at(1));
    EXPECT_EQ("OrgName=\"100%PATH%\"", lines.at(2));
    EXPECT_EQ("ProductID=\xC4%1", lines.at(3));
}

TEST_F(SetupNT, AValueIsCutAfter99Characters) {
    const std::string longText = std::string(98, 'a') + "b" + std::string(101, 'c');
    const std::string cut = std::string(98, 'a') + "b";
    const Lines lines =
        AnswersFrom("OwnerName=" + longText + "\r\nOrganization=" + longText + "\r\nProductKey=" + longText +
                    "\r\nComputerName=" + longText + "\r\nWorkgroup=" + longText + "\r\n");
    EXPECT_EQ((Lines{"[UserData]", "FullName=\"" + cut + "\"", "OrgName=\"" + cut + "\"", "ProductID=" + cut,
                     "ComputerName=\"" + cut + "\"", "[Identification]", "JoinWorkgroup=\"" + cut + "\"",
                     "JoinDomain="}),
              lines);
}

TEST_F(SetupNT, LfLineEndsOfTheKeyFileReadTheSame) {
    Folder.Write("keyfile.txt", "; comment\n[Win2KInfo]\nOwnerName=Jane\n\nJoinDomain=1\nWorkgroup=CORP");
    CreateSetupNT(App.Paths, App.Screen);
    EXPECT_EQ((Lines{"[UserData]", "FullName=\"Jane\"", "OrgName=\"\"", "ProductID=", "ComputerName=\"\"",
                     "[Identification]", "JoinDomain=\"CORP\"", "JoinWorkgroup="}),
              LinesOf(kUnattendPath));
}

TEST_F(SetupNT, AKeyFileWithoutTheSectionEmptiesEveryAnswer) {
    Folder.Write("keyfile.txt", "[Win9xInfo]\r\nOwnerName=Jane\r\n");
    CreateSetupNT(App.Paths, App.Screen);
    EXPECT_EQ((Lines{"[UserData]", "FullName=\"\"", "OrgName=\"\"", "ProductID=", "ComputerName=\"\"",
                     "[Identification]", "JoinWorkgroup=\"\"", "JoinDomain="}),
              LinesOf(kUnattendPath));
}

TEST_F(SetupNT, ATemplateOfTheUsersOwnIsUsedInstead) {
    Folder.Write(kOwnTemplate, "; ours\r\n");
    const std::string mine = Folder.Write("my templates\\caf\xE9 answers.txt", "; mine\r\n");
    for (const std::string& key : {mine, "\"" + mine + "\""}) {
        EXPECT_EQ("; mine", AnswersFrom("TemplateFile=" + key + "\r\n").at(0)) << key;
    }
    EXPECT_EQ("; mine\r\n", Folder.Read("my templates\\caf\xE9 answers.txt")) << "the template is only read";
    Folder.Remove(kOwnTemplate);
    EXPECT_EQ("; mine", AnswersFrom("TemplateFile=" + mine + "\r\n").at(0)) << "ours is not needed";
}

TEST_F(SetupNT, ATemplateThatIsNotThereGivesOursSilently) {
    Folder.Write(kOwnTemplate, "; ours\r\n");
    const std::string folder = Folder.MakeFolder("a folder");
    Folder.Write("my1.inf", "; mine\r\n");
    const std::string tooLong = Folder.Write(std::string(100, 'x') + ".inf", "; mine\r\n");
    for (const std::string& key : {Folder.At("missing.inf"), Folder.At("my*.inf"), Folder.At("my?.inf"),
                                   Folder.At("missing\\missing.inf"), folder, tooLong, std::string()}) {
        EXPECT_EQ("; ours", AnswersFrom("TemplateFile=" + key + "\r\n").at(0)) << key;
    }
    EXPECT_EQ("; ours", AnswersFrom("").at(0));
    EXPECT_TRUE(Screen.Messages.empty());
}

TEST_F(SetupNT, TheAnswerFileItselfIsGoneBeforeItCouldBeATemplate) {
    Folder.Write(kOwnTemplate, "; ours\r\n");
    Folder.Write(kUnattendPath, "; old\r\n");
    EXPECT_EQ("; ours", AnswersFrom("TemplateFile=" + Folder.At(kUnattendPath) + "\r\n").at(0));
}

TEST_F(SetupNT, AnAnswerFileOfAnEarlierRunIsReplacedWhateverItsAttributes) {
    for (const std::uint32_t attributes :
         {FILE_ATTRIBUTE_NORMAL, FILE_ATTRIBUTE_READONLY, FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN}) {
        Folder.Write(kUnattendPath, "[UserData]\r\nOld=1\r\nFullName=old\r\n[More]\r\nOld=2\r\n");
        Folder.SetAttributes(kUnattendPath, attributes);
        const Lines lines = AnswersFrom("OwnerName=Jane\r\n");
        ASSERT_EQ(8u, lines.size()) << attributes;
        EXPECT_EQ("FullName=\"Jane\"", lines[1]) << attributes;
    }
}

TEST_F(SetupNT, ReadOnlyTemplatesAreFilledAllTheSame) {
    const std::string mine = Folder.Write("mine.inf", "; mine\r\n");
    for (const char* file : {"mine.inf", kOwnTemplate}) Folder.SetAttributes(file, FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ("FullName=\"Jane\"", AnswersFrom("OwnerName=Jane\r\n").at(1));
    EXPECT_EQ("FullName=\"Joe\"", AnswersFrom("OwnerName=Joe\r\nTemplateFile=" + mine + "\r\n").at(2));
    EXPECT_EQ("FullName=\"Jim\"", AnswersFrom("OwnerName=Jim\r\nTemplateFile=" + mine + "\r\n").at(2));
    EXPECT_EQ("; mine\r\n", Folder.Read("mine.inf"));
}

TEST_F(SetupNT, WithoutAKeyFileTheModuleIsPackedWithTheAnswersThatAreThere) {
    Folder.Write(kUnattendPath, "; old answers");
    Folder.Remove(kOwnTemplate);
    CreateSetupNT(App.Paths, App.Screen);
    EXPECT_EQ("; old answers", Folder.Read(kUnattendPath));
    ExpectPacked("setupnt");
}

TEST_F(SetupNT, WithoutAKeyFileAndWithoutAnswersNoneAreMade) {
    CreateSetupNT(App.Paths, App.Screen);
    EXPECT_TRUE(Folder.Tree("files\\setupnt").empty());
    ExpectPacked("setupnt");
}

TEST_F(SetupNT, TheSetupPageIsNeitherReadNorChanged) {
    App.Wizard.TxtOwner.Text = "Page";
    App.Wizard.TxtKeyPart1.Text = "PAGEK";
    EXPECT_EQ("FullName=\"Jane\"", AnswersFrom("OwnerName=Jane\r\n").at(1));
    EXPECT_EQ(std::string::npos, Folder.Read(kUnattendPath).find("PAGE"));
    EXPECT_EQ("Page", App.Wizard.TxtOwner.Text);
    EXPECT_EQ("PAGEK", App.Wizard.TxtKeyPart1.Text);
}

TEST_F(SetupNT, TheFilesAreTheOnesThatAreGiven) {
    Folder.Write("keyfile.txt", "[Win2KInfo]\r\nOwnerName=wrong\r\n");
    const std::string keys = Folder.Write("other\\keys.ini", "[Win2KInfo]\r\nOwnerName=Jane\r\n");
    FillSetupDataFromKeyFileToUnattend(App.Paths, keys, Folder.At("other\\answers.txt"));
    EXPECT_EQ("FullName=\"Jane\"", LinesOf("other\\answers.txt").at(1));
    EXPECT_FALSE(Folder.HasFile(kUnattendPath));
}

TEST_F(SetupNT, WithoutOurTemplateTheErrorNamesItAndNothingIsPacked) {
    Folder.Remove(kOwnTemplate);
    Folder.Write("keyfile.txt", "[Win2KInfo]\r\nTemplateFile=" + Folder.At("missing.inf") + "\r\n");
    const auto error = ErrorOf([&] { CreateSetupNT(App.Paths, App.Screen); });
    ASSERT_TRUE(error);
    EXPECT_EQ(kFileNotFound, error->Number);
    EXPECT_EQ(Folder.At(kOwnTemplate), error->File);
    EXPECT_TRUE(Folder.Calls("cabarc.exe").empty());
    EXPECT_TRUE(Screen.Messages.empty());
}

TEST_F(SetupNT, AMissingModuleFolderIsAnError) {
    Folder.Remove("files\\setupnt");
    Folder.Write("keyfile.txt", "[Win2KInfo]\r\n");
    const auto error = ErrorOf([&] { CreateSetupNT(App.Paths, App.Screen); });
    ASSERT_TRUE(error);
    EXPECT_EQ(kPathNotFound, error->Number);
}

TEST_F(SetupNT, TheModuleFolderIsPackedIntoItsCabinet) {
    Folder.Write("keyfile.txt", "[Win2KInfo]\r\nOwnerName=Jane\r\n");
    CreateSetupNT(App.Paths, App.Screen);
    ExpectPacked("setupnt");
    EXPECT_TRUE(Screen.Messages.empty());
}

TEST_F(SetupNT, AFailedPackingIsReportedAndNotExamined) {
    Folder.MakeTool("cabarc.exe");
    Screen.Expect(PackingFailure("setupnt"));
    CreateSetupNT(App.Paths, App.Screen);
    EXPECT_FALSE(App.RunEnded);
    EXPECT_FALSE(Folder.HasFile("cabs\\lib\\setupnt.cab"));
}

}  // namespace
}  // namespace velbooter::testing
