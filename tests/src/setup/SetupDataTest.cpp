#include "src/setup/SetupData.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "src/common/RuntimeError.h"
#include "tests/support/ApplicationFolder.h"
#include "tests/support/LocalMachine.h"

namespace velbooter::testing {
namespace {

using std::string_literals::operator""s;

using Groups = std::vector<std::string>;

/// The fields of the setup page.
struct Page {
    std::string Owner, Organization, Edition, Computer, Workgroup;
    Groups Key;
};

bool operator==(const Page& left, const Page& right) {
    return left.Owner == right.Owner && left.Organization == right.Organization &&
           left.Edition == right.Edition && left.Computer == right.Computer &&
           left.Workgroup == right.Workgroup && left.Key == right.Key;
}

void PrintTo(const Page& page, std::ostream* out) {
    *out << page.Owner << '|' << page.Organization << '|' << page.Edition << '|' << page.Computer << '|'
         << page.Workgroup << '|' << ::testing::PrintToString(page.Key);
}

const Groups kNoKey{"", "", "", "", ""};
const Page kDesign{"VelUser", "MARSH LTD.", "Microsoft Windows 98", "VelPC", "MARSH_LTD", kNoKey};
const Page kNothing{"", "", "", "", "", kNoKey};

struct KeyCase {
    std::string Key;
    Groups Expected;
};

const KeyCase kKeyCases[] = {
    {"ABCDE-FGHIJ-KLMNO-PQRST-UVWXY", {"ABCDE", "FGHIJ", "KLMNO", "PQRST", "UVWXY"}},
    // The characters in the separators' places are skipped, whatever they are.
    {"ABCDE.FGHIJ KLMNOxPQRST\\UVWXY", {"ABCDE", "FGHIJ", "KLMNO", "PQRST", "UVWXY"}},
    {"ABCDEFGHIJKLMNOPQRSTUVWXY", {"ABCDE", "GHIJK", "MNOPQ", "STUVW", "Y"}},
    {"AB-CD-EFGHI", {"AB-CD", "EFGHI", "", "", ""}},
    {"ABCDE-FGHIJ-KLMNO-PQRST-UVWXYZ012345", {"ABCDE", "FGHIJ", "KLMNO", "PQRST", "UVWXY"}},
    {"ABCDE-FGHIJ-KLMNO-PQRST-UVWX", {"ABCDE", "FGHIJ", "KLMNO", "PQRST", "UVWX"}},
    {"ABCDE-FGHIJ-KLMNO-PQRST-U", {"ABCDE", "FGHIJ", "KLMNO", "PQRST", "U"}},
    {"ABCDE-FGHIJ-KLMNO-PQRST-", {"ABCDE", "FGHIJ", "KLMNO", "PQRST", ""}},
    {"ABCDE-FGHIJ-KLMNO-PQRST", {"ABCDE", "FGHIJ", "KLMNO", "PQRST", ""}},
    {"ABCDE-FG", {"ABCDE", "FG", "", "", ""}},
    {"ABCDE-", {"ABCDE", "", "", "", ""}},
    {"ABCDE", {"ABCDE", "", "", "", ""}},
    {"A", {"A", "", "", "", ""}},
    {"", kNoKey},
};

class SetupData : public ApplicationTest {
 protected:
    Page Shown() {
        const FrmWizard& wizard = App.Wizard;
        Page page{wizard.TxtOwner.Text,  wizard.TxtOrg.Text,       wizard.LblOSType.Caption,
                  wizard.TxtPCName.Text, wizard.TxtWorkgroup.Text, {}};
        for (const TextBox* part : KeyParts(App.Wizard)) page.Key.push_back(part->Text);
        return page;
    }
    void FillWith(const std::string& keyFile) {
        Folder.Write("keyfile.txt", keyFile);
        FillSetupDataFromKeyFile(App.Paths, App.Wizard);
    }
};

using KeyFileData = SetupData;

TEST_F(SetupData, ThePartsOfTheKeyAreTheFiveBoxesInTheirOrder) {
    FrmWizard& wizard = App.Wizard;
    const std::array<TextBox*, 5> boxes{&wizard.TxtKeyPart1, &wizard.TxtKeyPart2, &wizard.TxtKeyPart3,
                                        &wizard.TxtKeyPart4, &wizard.TxtKeyPart5};
    EXPECT_EQ(boxes, KeyParts(wizard));
}

TEST_F(KeyFileData, EveryKeyOfWin9xInfoFillsItsField) {
    FillWith(
        "[Win9xInfo]\r\nOwnerName=Jane Doe\r\nOrganization=Acme Inc.\r\nOptimizedFor=Windows ME\r\n"
        "ComputerName=BOX\r\nWorkgroup=HOME\r\nProductKey=ABCDE-FGHIJ-KLMNO-PQRST-UVWXY\r\n"
        "[Win2KInfo]\r\nOwnerName=wrong\r\nOrganization=wrong\r\nComputerName=wrong\r\nWorkgroup=wrong\r\n"
        "ProductKey=wrong\r\n");
    EXPECT_EQ((Page{"Jane Doe",
                    "Acme Inc.",
                    "Windows ME",
                    "BOX",
                    "HOME",
                    {"ABCDE", "FGHIJ", "KLMNO", "PQRST", "UVWXY"}}),
              Shown());
}

TEST_F(KeyFileData, WithoutTheFileNothingChanges) {
    App.Wizard.TxtKeyPart3.Text = "KKKKK";
    Page before = kDesign;
    before.Key[2] = "KKKKK";
    FillSetupDataFromKeyFile(App.Paths, App.Wizard);
    EXPECT_EQ(before, Shown());
    EXPECT_FALSE(Folder.HasFile("keyfile.txt"));
}

TEST_F(KeyFileData, AMissingKeyEmptiesItsField) {
    FillWith("[Win9xInfo]\r\nOwnerName=Jane\r\nWorkgroup=\r\n");
    Page expected = kNothing;
    expected.Owner = "Jane";
    EXPECT_EQ(expected, Shown());
}

TEST_F(KeyFileData, AFileWithoutTheSectionEmptiesEveryField) {
    App.Wizard.TxtKeyPart1.Text = "OLDKE";
    FillWith("[Win2KInfo]\r\nOwnerName=Jane\r\nProductKey=ABCDE-FGHIJ-KLMNO-PQRST-UVWXY\r\n");
    EXPECT_EQ(kNothing, Shown());
    App.Wizard.TxtOwner.Text = "again";
    FillWith("");
    EXPECT_EQ(kNothing, Shown());
}

TEST_F(KeyFileData, TheProductKeyIsSplitByPosition) {
    for (const KeyCase& c : kKeyCases) {
        FillWith("[Win9xInfo]\r\nProductKey=" + c.Key + "\r\n");
        EXPECT_EQ(Shown().Key, c.Expected) << c.Key;
    }
}

TEST_F(KeyFileData, AValueIsCutAfter99Characters) {
    const std::string longText = std::string(98, 'a') + "b" + std::string(101, 'c');
    ASSERT_EQ(200u, longText.size());
    FillWith("[Win9xInfo]\r\nOwnerName=" + longText + "\r\nOrganization=" + longText +
             "\r\nOptimizedFor=" + longText + "\r\nComputerName=" + longText + "\r\nWorkgroup=" + longText +
             "\r\nProductKey=" + longText + "\r\n");
    const std::string cut = std::string(98, 'a') + "b";
    EXPECT_EQ((Page{cut, cut, cut, cut, cut, Groups(5, "aaaaa")}), Shown());
}

TEST_F(KeyFileData, QuotesAroundAValueAreLeftOut) {
    FillWith(
        "[Win9xInfo]\r\nOwnerName=\"Jane Doe\"\r\nOrganization=\"The \"Acme\" Inc.\"\r\n"
        "OptimizedFor=6\" of \"rain\r\nProductKey=\"ABCDE-FGHIJ\"\r\n");
    const Page shown = Shown();
    EXPECT_EQ("Jane Doe", shown.Owner);
    EXPECT_EQ("The \"Acme\" Inc.", shown.Organization);
    EXPECT_EQ("6\" of \"rain", shown.Edition);
    EXPECT_EQ((Groups{"ABCDE", "FGHIJ", "", "", ""}), shown.Key);
}

TEST_F(KeyFileData, SpacesAroundAValueAreLeftOutAndThoseInsideKept) {
    FillWith("[Win9xInfo]\r\nOwnerName =   Jane  van  Doe   \r\n  Workgroup=  \r\n");
    EXPECT_EQ("Jane  van  Doe", Shown().Owner);
    EXPECT_EQ("", Shown().Workgroup);
}

TEST_F(KeyFileData, PercentSignsAndBytesBeyondAsciiAreKept) {
    FillWith("[Win9xInfo]\r\nOwnerName=Ren\xE9 M\xFCller\r\nOrganization=100%PATH%\r\n");
    EXPECT_EQ("Ren\xE9 M\xFCller", Shown().Owner);
    EXPECT_EQ("100%PATH%", Shown().Organization);
}

TEST_F(KeyFileData, LfLineEndsReadTheSame) {
    FillWith("; a comment\n[Win9xInfo]\nOwnerName=Jane\n\nOptimizedFor=ME\nProductKey=ABCDE-FGHIJ-K");
    const Page shown = Shown();
    EXPECT_EQ("Jane", shown.Owner);
    EXPECT_EQ("ME", shown.Edition);
    EXPECT_EQ((Groups{"ABCDE", "FGHIJ", "K", "", ""}), shown.Key);
}

TEST_F(KeyFileData, TheFileIsOnlyRead) {
    const std::string content = "[Win9xInfo]\r\nOwnerName=Jane";
    Folder.Write("keyfile.txt", content);
    Folder.SetAttributes("keyfile.txt", FILE_ATTRIBUTE_READONLY);
    FillSetupDataFromKeyFile(App.Paths, App.Wizard);
    EXPECT_EQ("Jane", Shown().Owner);
    EXPECT_EQ(content, Folder.Read("keyfile.txt"));
}

class RegistryData : public SetupData {
 protected:
    static constexpr const char* kWindows = "Software\\Microsoft\\Windows\\CurrentVersion";
    static constexpr const char* kNetwork = "System\\CurrentControlSet\\Services\\VxD\\VNETSUP";

    LocalMachine Machine;
};

TEST_F(RegistryData, EveryValueFillsItsField) {
    Machine.Set(kWindows, "ProductKey", "ABCDE-FGHIJ-KLMNO-PQRST-UVWXY");
    Machine.Set(kWindows, "RegisteredOwner", "Jane Doe");
    Machine.Set(kWindows, "RegisteredOrganization", "Acme Inc.");
    Machine.Set(kWindows, "ProductName", "Microsoft Windows ME");
    Machine.Set(kNetwork, "ComputerName", "BOX");
    Machine.Set(kNetwork, "Workgroup", "HOME");
    FillSetupDataFromReg(App.Wizard);
    EXPECT_EQ((Page{"Jane Doe",
                    "Acme Inc.",
                    "Microsoft Windows ME",
                    "BOX",
                    "HOME",
                    {"ABCDE", "FGHIJ", "KLMNO", "PQRST", "UVWXY"}}),
              Shown());
}

TEST_F(RegistryData, WithoutAnyOfTheKeysEveryFieldIsEmpty) {
    App.Wizard.TxtKeyPart5.Text = "OLDKE";
    FillSetupDataFromReg(App.Wizard);
    EXPECT_EQ(kNothing, Shown());
}

TEST_F(RegistryData, WithoutTheNetworkKeyItsFieldsAreEmptyAndNotTheDefaults) {
    Machine.Set(kWindows, "RegisteredOwner", "Jane Doe");
    FillSetupDataFromReg(App.Wizard);
    Page expected = kNothing;
    expected.Owner = "Jane Doe";
    EXPECT_EQ(expected, Shown());
}

TEST_F(RegistryData, TheValuesOfOneKeyAreNotLookedForInTheOther) {
    for (const char* value : {"ProductKey", "RegisteredOwner", "RegisteredOrganization", "ProductName"}) {
        Machine.Set(kNetwork, value, "wrong");
    }
    for (const char* value : {"ComputerName", "Workgroup"}) Machine.Set(kWindows, value, "wrong");
    Machine.Set("Software\\Microsoft\\Windows NT\\CurrentVersion", "RegisteredOwner", "wrong");
    FillSetupDataFromReg(App.Wizard);
    EXPECT_EQ(kNothing, Shown());
}

TEST_F(RegistryData, AValueThatIsNoPlainStringCountsAsMissing) {
    Machine.Set(kWindows, "ProductKey", REG_BINARY, "ABCDE-FGHIJ");
    Machine.Set(kWindows, "RegisteredOwner", REG_DWORD, "\1\0\0\0"s);
    Machine.Set(kWindows, "RegisteredOrganization", REG_EXPAND_SZ, "%windir%\0"s);
    Machine.Set(kWindows, "ProductName", REG_MULTI_SZ, "a\0b\0\0"s);
    Machine.Set(kNetwork, "ComputerName", REG_DWORD, "\1\0\0\0"s);
    Machine.Set(kNetwork, "Workgroup", REG_SZ, "HOME\0"s);
    FillSetupDataFromReg(App.Wizard);
    Page expected = kNothing;
    expected.Workgroup = "HOME";
    EXPECT_EQ(expected, Shown());
}

TEST_F(RegistryData, AValueEndsAtItsFirstNulAndIsOtherwiseWhole) {
    Machine.Set(kWindows, "RegisteredOwner", REG_SZ, "Jane\0Doe\0"s);
    Machine.Set(kWindows, "RegisteredOrganization", REG_SZ, "Acme");
    Machine.Set(kWindows, "ProductName", std::string(200, 'x'));
    FillSetupDataFromReg(App.Wizard);
    EXPECT_EQ("Jane", Shown().Owner);
    EXPECT_EQ("Acme", Shown().Organization);
    EXPECT_EQ(std::string(200, 'x'), Shown().Edition);
}

TEST_F(RegistryData, TheProductKeyIsSplitByPosition) {
    for (const KeyCase& c : kKeyCases) {
        Machine.Set(kWindows, "ProductKey", c.Key);
        FillSetupDataFromReg(App.Wizard);
        EXPECT_EQ(Shown().Key, c.Expected) << c.Key;
    }
}

TEST_F(RegistryData, TheKeyFileIsNotLookedAt) {
    Folder.Write("keyfile.txt", "[Win9xInfo]\r\nOwnerName=Jane\r\n");
    FillSetupDataFromReg(App.Wizard);
    EXPECT_EQ(kNothing, Shown());
}

class Templates : public ::testing::Test {
 protected:
    /// Returns the error that the copy raises; its number is 0 when it raises none.
    RuntimeError ErrorOfCopy() {
        try {
            CopyTemplate(Folder.At("template.inf"), Folder.At("bin\\answers.inf"));
        } catch (const RuntimeError& error) {
            return error;
        }
        return RuntimeError(0);
    }

    ApplicationFolder Folder;
};

TEST_F(Templates, TheAnswerFileBeginsAsTheTemplateByteForByte) {
    const std::string content = "\xEF; caf\xE9\n[Setup]\r\n\r\nkeyless line\r\nlast=1";
    Folder.Write("template.inf", content);
    Folder.Write("bin\\answers.inf", "an older and much longer answer file" + std::string(500, 'x'));
    CopyTemplate(Folder.At("template.inf"), Folder.At("bin\\answers.inf"));
    EXPECT_EQ(content, Folder.Read("bin\\answers.inf"));
}

TEST_F(Templates, TheAnswerFileOfAReadOnlyTemplateCanBeWritten) {
    Folder.Write("template.inf", "t");
    Folder.SetAttributes("template.inf",
                         FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    Folder.MakeFolder("bin");
    CopyTemplate(Folder.At("template.inf"), Folder.At("bin\\answers.inf"));
    EXPECT_EQ(0u, Folder.Attributes("bin\\answers.inf") & FILE_ATTRIBUTE_READONLY);
    EXPECT_NE(0u, Folder.Attributes("template.inf") & FILE_ATTRIBUTE_READONLY)
        << "the template stays as it is";
}

TEST_F(Templates, AReadOnlyAnswerFileIsReplaced) {
    Folder.Write("template.inf", "new");
    Folder.Write("bin\\answers.inf", "old");
    Folder.SetAttributes("bin\\answers.inf", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
    CopyTemplate(Folder.At("template.inf"), Folder.At("bin\\answers.inf"));
    EXPECT_EQ("new", Folder.Read("bin\\answers.inf"));
}

TEST_F(Templates, AMissingTemplateIsNamedAndTheOldAnswerFileStays) {
    Folder.Write("bin\\answers.inf", "old");
    const RuntimeError error = ErrorOfCopy();
    EXPECT_EQ(kFileNotFound, error.Number);
    EXPECT_EQ(Folder.At("template.inf"), error.File);
    EXPECT_EQ("old", Folder.Read("bin\\answers.inf"));
}

TEST_F(Templates, AMissingFolderIsAnError) {
    Folder.Write("template.inf", "t");
    EXPECT_EQ(kPathNotFound, ErrorOfCopy().Number);
}

TEST_F(Templates, AnAnswerFileThatIsInUseIsNamed) {
    Folder.Write("template.inf", "t");
    LockedFile lock(Folder.Write("bin\\answers.inf", "old"));
    const RuntimeError error = ErrorOfCopy();
    EXPECT_EQ(kPermissionDenied, error.Number);
    EXPECT_EQ(Folder.At("bin\\answers.inf"), error.File);
}

}  // namespace
}  // namespace velbooter::testing
