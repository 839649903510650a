#include "tests/e2e/support/ShownWizard.h"

#include <commctrl.h>

#include <algorithm>

#include "tests/e2e/support/HarnessFailure.h"
#include "tests/e2e/support/RemoteControls.h"
#include "tests/e2e/support/WindowTree.h"
#include "tests/support/Patience.h"

namespace velbooter::e2e {

namespace {

const void* Pointer(UINT_PTR value) {
    return reinterpret_cast<const void*>(value);
}

// Asked for in 16-bit characters, because Wine passes the text to another process as it stores it.
std::string FileText(HWND list, int row) {
    wchar_t wide[4096] = L"";
    DWORD_PTR length = 0;
    if (::SendMessageTimeoutW(list, LB_GETTEXT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(wide),
                              SMTO_NORMAL, kPatienceMs, &length) == 0) {
        throw HarnessFailure("the list of files does not answer");
    }
    char text[4096] = "";
    ::WideCharToMultiByte(CP_ACP, 0, wide, -1, text, sizeof text, nullptr, nullptr);
    return text;
}

}  // namespace

// The windows live as long as the wizard. Looking for one takes Wine's server longer than most handlers of
// the program, so each is looked for once.
ShownWizard::ShownWizard(ProgramUnderTest& program, int page) : program_(program), window_(program.Wizard()) {
    for (const WindowInfo& child : ChildWindows(window_)) {
        // In the order of the windows the pages follow each other.
        if (child.Class == "#32770") pages_.push_back(child.Handle);
        controls_.emplace(child.Id, child.Handle);
    }
    if (pages_.size() != kPageCount)
        throw HarnessFailure("the wizard has " + std::to_string(pages_.size()) + " pages");
    WaitForPage(page);
}

HWND ShownWizard::PageWindow(int page) const {
    return pages_.at(static_cast<size_t>(page));
}

int ShownWizard::Page() const {
    int shown = -1;
    for (int page = 0; page < kPageCount; ++page) {
        if (::IsWindowVisible(PageWindow(page)) == FALSE) continue;
        if (shown >= 0) return -1;
        shown = page;
    }
    return shown;
}

void ShownWizard::WaitForPage(int page) const {
    program_.WaitUntil([&] { return Page() == page; }, "page " + std::to_string(page) + " did not come");
    // The answer arrives when the handler that has turned the page has returned.
    Ask(window_, WM_NULL);
}

HWND ShownWizard::Control(int id) const {
    const auto found = controls_.find(id);
    if (found == controls_.end()) throw HarnessFailure("the wizard has no control " + std::to_string(id));
    return found->second;
}

bool ShownWizard::Shows(int id) const {
    return ::IsWindowVisible(Control(id)) != FALSE;
}

bool ShownWizard::Takes(int id) const {
    return Shows(id) && ::IsWindowEnabled(Control(id)) != FALSE && ::IsWindowEnabled(window_) != FALSE;
}

std::string ShownWizard::Text(int id) const {
    return TextOf(Control(id));
}

bool ShownWizard::IsTicked(int id) const {
    return Ask(Control(id), BM_GETCHECK) == BST_CHECKED;
}

std::vector<int> ShownWizard::Buttons() const {
    std::vector<int> buttons;
    for (const int id : {IDC_BACK, IDC_NEXT, IDC_FINISH, IDCANCEL, IDC_HELP_BUTTON}) {
        if (Takes(id)) buttons.push_back(id);
    }
    return buttons;
}

void ShownWizard::Click(int id) const {
    if (!Takes(id)) throw HarnessFailure("nobody can click control " + std::to_string(id));
    const HWND control = Control(id);
    char name[32] = "";
    ::GetClassNameA(control, name, sizeof name);
    if (::lstrcmpiA(name, WC_BUTTONA) == 0) {
        ::PostMessageA(control, BM_CLICK, 0, 0);
    } else {
        PressMouseOn(id);
    }
}

void ShownWizard::PressMouseOn(int id) const {
    constexpr POINT kInside{5, 5};
    ClickInside(Control(id), kInside);
}

void ShownWizard::Next(int page) const {
    Click(IDC_NEXT);
    WaitForPage(page);
}

void ShownWizard::Back(int page) const {
    Click(IDC_BACK);
    WaitForPage(page);
}

void ShownWizard::GoTo(int page) const {
    while (Page() != page) {
        const int former = Page();
        Click(IDC_NEXT);
        program_.WaitUntil([&] { return Page() > former; }, "Next does not turn the page");
        Ask(window_, WM_NULL);
    }
}

void ShownWizard::Enter(int id, const std::string& text) const {
    Ask(Control(id), WM_SETTEXT, 0, text.c_str());
}

std::vector<std::string> ShownWizard::Disks() const {
    const HWND list = Control(IDC_DISKS);
    const auto count = static_cast<int>(Ask(list, LVM_GETITEMCOUNT));
    std::vector<std::string> names;
    for (int row = 0; row < count; ++row) names.push_back(ItemText(list, row, 1));
    return names;
}

int ShownWizard::SelectedDisk() const {
    return static_cast<int>(
        Ask(Control(IDC_DISKS), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), Pointer(LVNI_SELECTED)));
}

void ShownWizard::SelectDisk(const std::string& name) const {
    const std::vector<std::string> disks = Disks();
    const auto found = std::find(disks.begin(), disks.end(), name);
    if (found == disks.end()) throw HarnessFailure("the list has no disk " + name);
    const auto row = static_cast<int>(found - disks.begin());
    const HWND list = Control(IDC_DISKS);
    Ask(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row));
    ClickInside(list, MiddleOf(ItemPlace(list, row, LVIR_LABEL)));
    program_.WaitUntil([&] { return SelectedDisk() == row; }, "the click selects no disk");
}

std::vector<std::string> ShownWizard::Files() const {
    const HWND list = Control(IDC_FILES);
    std::vector<std::string> files;
    const LRESULT count = Ask(list, LB_GETCOUNT);
    for (int row = 0; row < count; ++row) files.push_back(FileText(list, row));
    return files;
}

std::vector<std::string> ShownWizard::SelectedFiles() const {
    const HWND list = Control(IDC_FILES);
    std::vector<std::string> files;
    const LRESULT count = Ask(list, LB_GETCOUNT);
    for (int row = 0; row < count; ++row) {
        if (Ask(list, LB_GETSEL, static_cast<WPARAM>(row)) > 0) files.push_back(FileText(list, row));
    }
    return files;
}

void ShownWizard::ClickFile(const std::string& file) const {
    const std::vector<std::string> files = Files();
    const auto found = std::find(files.begin(), files.end(), file);
    if (found == files.end()) throw HarnessFailure("the list has no file " + file);
    const auto row = static_cast<WPARAM>(found - files.begin());
    const HWND list = Control(IDC_FILES);
    const auto isSelected = [&] { return Ask(list, LB_GETSEL, row) > 0; };
    const bool former = isSelected();
    Ask(list, LB_SETTOPINDEX, row);
    RECT place{};
    Ask(list, LB_GETITEMRECT, row, &place);
    ClickInside(list, MiddleOf(place));
    program_.WaitUntil([&] { return isSelected() != former; }, "the click does not reach the list of files");
}

int ShownWizard::Focus() const {
    const HWND focus = FocusOfThreadOf(window_);
    return ::IsChild(window_, focus) != FALSE ? ::GetDlgCtrlID(focus) : 0;
}

void ShownWizard::Close() const {
    ::PostMessageA(window_, WM_SYSCOMMAND, SC_CLOSE, 0);
}

}  // namespace velbooter::e2e
