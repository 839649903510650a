// The answers of the setup page as they are typed and pasted.

#include <windows.h>

#include "tests/e2e/support/HarnessFailure.h"
#include "tests/e2e/support/RemoteControls.h"
#include "tests/e2e/support/WizardTest.h"
#include "tests/support/Patience.h"

namespace velbooter::e2e {
namespace {

using testing::ElementsAre;

class WizardSetupPage : public WizardTest {
 protected:
    void SetUp() override {
        WizardTest::SetUp();
        SetDisk("custom", SmallDiskWith({"[Create_CABs]", "setupwin=LIB"}));
        folder_.Write("keyfile.txt", "[Win9xInfo]\r\nOwnerName=Owner\r\n");
    }

    static void CopyToClipboard(const std::string& text) {
        if (::OpenClipboard(nullptr) == FALSE) throw HarnessFailure("the clipboard is taken");
        ::EmptyClipboard();
        const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
        std::copy_n(text.c_str(), text.size() + 1, static_cast<char*>(::GlobalLock(block)));
        ::GlobalUnlock(block);
        ::SetClipboardData(CF_TEXT, block);
        ::CloseClipboard();
    }

    static std::vector<std::string> Key(const ShownWizard& wizard) {
        std::vector<std::string> groups;
        for (int id = IDC_KEY_PART_1; id <= IDC_KEY_PART_5; ++id) groups.push_back(wizard.Text(id));
        return groups;
    }

    static void Paste(const ShownWizard& wizard, int id, const std::string& text) {
        CopyToClipboard(text);
        Ask(wizard.Control(id), WM_PASTE);
    }
};

TEST_F(WizardSetupPage, PastedKeyFillsTheFiveBoxes) {
    const ShownWizard wizard = OpenAt(kSetupPage);
    Paste(wizard, IDC_KEY_PART_1, " AAAA1-BBBB2-CCCC3-DDDD4-EEEE5\r\n");
    EXPECT_THAT(Key(wizard), ElementsAre("AAAA1", "BBBB2", "CCCC3", "DDDD4", "EEEE5"));
    EXPECT_TRUE(Eventually([&] { return wizard.Focus() == IDC_KEY_PART_5; }));
    wizard.Next(kFilesPage);
    EXPECT_NE(folder_.Read("files\\setupwin\\bin\\auto.inf").find("AAAA1-BBBB2-CCCC3-DDDD4-EEEE5"),
              std::string::npos);
    Leave(wizard);
}

TEST_F(WizardSetupPage, PasteBeginsInItsBoxAndEndsInTheLast) {
    const ShownWizard wizard = OpenAt(kSetupPage);
    Paste(wizard, IDC_KEY_PART_2, "11111222223");
    EXPECT_THAT(Key(wizard), ElementsAre("", "11111", "22222", "3", ""));
    Paste(wizard, IDC_KEY_PART_4, "4444455555");
    EXPECT_THAT(Key(wizard), ElementsAre("", "11111", "22222", "44444", "55555"));
    Leave(wizard);
}

TEST_F(WizardSetupPage, KeyThatIsTooLongIsNotTakenInParts) {
    const ShownWizard wizard = OpenAt(kSetupPage);
    Paste(wizard, IDC_KEY_PART_4, "44444555556");
    EXPECT_THAT(Key(wizard), ElementsAre("", "", "", "", ""));
    Leave(wizard);
}

TEST_F(WizardSetupPage, ShortPasteStaysInItsBox) {
    const ShownWizard wizard = OpenAt(kSetupPage);
    wizard.Enter(IDC_KEY_PART_3, "AB");
    Paste(wizard, IDC_KEY_PART_3, "CD");
    EXPECT_THAT(Key(wizard), ElementsAre("", "", "CDAB", "", ""));
    Leave(wizard);
}

TEST_F(WizardSetupPage, CharactersOutsideTheCodePageStayAsTheyAreTyped) {
    const ShownWizard wizard = OpenAt(kSetupPage);
    const HWND owner = wizard.Control(IDC_OWNER);
    wizard.Enter(IDC_OWNER, "");
    // Posted, so that it passes through the program's own loop.
    ::PostMessageW(owner, WM_CHAR, 0x0416, 1);
    wchar_t text[16] = L"";
    const auto isThere = [&] {
        return ::SendMessageW(owner, WM_GETTEXT, 16, reinterpret_cast<LPARAM>(text)) != 0;
    };
    ASSERT_TRUE(Eventually(isThere));
    EXPECT_EQ(L"\x0416", std::wstring(text));
    // After the click on Next the box shows what the program has read.
    wizard.Next(kFilesPage);
    wizard.Back(kSetupPage);
    ::SendMessageW(owner, WM_GETTEXT, 16, reinterpret_cast<LPARAM>(text));
    EXPECT_NE(std::wstring(text), L"\x0416");
    Leave(wizard);
}

}  // namespace
}  // namespace velbooter::e2e
