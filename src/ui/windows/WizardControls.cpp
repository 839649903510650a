#include "src/ui/windows/WizardControls.h"

#include <commctrl.h>

#include <algorithm>

#include "src/ui/windows/FormWindow.h"
#include "src/ui/windows/WizardIds.h"

namespace velbooter {

namespace {

// Dark enough to be read on the grey of a dialog.
constexpr COLORREF kWarningColor = RGB(176, 0, 0);

// What screen readers say for a finished step. The form's text is a character of a symbol font, and in some
// code pages no character at all.
constexpr const char* kDone = "Done";

template <typename Member>
struct Shown {
    int Id;
    Member FrmWizard::*Value;
};

constexpr std::array<Shown<Label>, 6> kLabels{{{IDC_STATUS, &FrmWizard::LblStatus},
                                               {IDC_SPACE_OF_FILES, &FrmWizard::LblSpace},
                                               {IDC_SPACE_AT_TARGET, &FrmWizard::LblSpace},
                                               {IDC_NDIS_NOTE, &FrmWizard::LblNDISNote},
                                               {IDC_OS_TYPE, &FrmWizard::LblOSType},
                                               {IDC_OUTCOME, &FrmWizard::LblFinish}}};
constexpr std::array<Shown<Label>, 2> kLinks{
    {{IDC_HOME_PAGE, &FrmWizard::LblHomePage}, {IDC_FRAMEWORK_SITE, &FrmWizard::LblFrameworkSite}}};
constexpr std::array<Shown<Label>, 4> kSteps{{{IDC_STEP_1, &FrmWizard::LblMsg1},
                                              {IDC_STEP_2, &FrmWizard::LblMsg2},
                                              {IDC_STEP_3, &FrmWizard::LblMsg3},
                                              {IDC_STEP_4, &FrmWizard::LblMsg4}}};
constexpr std::array<Shown<Label>, 4> kMarks{{{IDC_MARK_1, &FrmWizard::LblRight1},
                                              {IDC_MARK_2, &FrmWizard::LblRight2},
                                              {IDC_MARK_3, &FrmWizard::LblRight3},
                                              {IDC_MARK_4, &FrmWizard::LblRight4}}};
constexpr std::array<Shown<TextBox>, 10> kTexts{{{IDC_OWNER, &FrmWizard::TxtOwner},
                                                 {IDC_ORGANIZATION, &FrmWizard::TxtOrg},
                                                 {IDC_PC_NAME, &FrmWizard::TxtPCName},
                                                 {IDC_WORKGROUP, &FrmWizard::TxtWorkgroup},
                                                 {IDC_KEY_PART_1, &FrmWizard::TxtKeyPart1},
                                                 {IDC_KEY_PART_2, &FrmWizard::TxtKeyPart2},
                                                 {IDC_KEY_PART_3, &FrmWizard::TxtKeyPart3},
                                                 {IDC_KEY_PART_4, &FrmWizard::TxtKeyPart4},
                                                 {IDC_KEY_PART_5, &FrmWizard::TxtKeyPart5},
                                                 {IDC_TARGET, &FrmWizard::TxtDest}}};
constexpr std::array<Shown<CommandButton>, 8> kButtons{{{IDC_SELECT_ASPI, &FrmWizard::CmdSelASPI},
                                                        {IDC_SELECT_NDIS, &FrmWizard::CmdSelNDIS},
                                                        {IDC_BROWSE, &FrmWizard::CmdBrowse},
                                                        {IDC_BACK, &FrmWizard::CmdBack},
                                                        {IDC_NEXT, &FrmWizard::CmdNext},
                                                        {IDC_FINISH, &FrmWizard::CmdFinish},
                                                        {IDCANCEL, &FrmWizard::CmdCancel},
                                                        {IDC_HELP_BUTTON, &FrmWizard::CmdHelp}}};
constexpr std::array<Shown<CheckBox>, 2> kChecks{
    {{IDC_ASPI, &FrmWizard::ChkASPI}, {IDC_NDIS, &FrmWizard::ChkNDIS}}};
constexpr std::array<Shown<OptionButton>, 3> kOptions{{{IDC_IMAGE_14, &FrmWizard::OptImage14},
                                                       {IDC_IMAGE_28, &FrmWizard::OptImage28},
                                                       {IDC_FLOPPY, &FrmWizard::OptFloppy}}};

std::string TextOf(HWND control) {
    std::string text(static_cast<size_t>(::GetWindowTextLengthA(control)) + 1, '\0');
    text.resize(static_cast<size_t>(::GetWindowTextA(control, text.data(), static_cast<int>(text.size()))));
    return text;
}

void ShowEnabled(HWND control, bool enabled) {
    if (enabled != (::IsWindowEnabled(control) != FALSE)) ::EnableWindow(control, enabled ? TRUE : FALSE);
}

void ShowTick(HWND control, bool ticked) {
    const WPARAM state = ticked ? BST_CHECKED : BST_UNCHECKED;
    if (static_cast<WPARAM>(::SendMessageA(control, BM_GETCHECK, 0, 0)) != state)
        ::SendMessageA(control, BM_SETCHECK, state, 0);
}

bool IsTicked(HWND control) {
    return ::SendMessageA(control, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

HFONT FontOf(HWND control) {
    return reinterpret_cast<HFONT>(::SendMessageA(control, WM_GETFONT, 0, 0));
}

void ShowFont(HWND control, HFONT font) {
    if (FontOf(control) != font) ::SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

// A font like that of `control`, of the given weight and of `percent` of its size.
Font FontLike(HWND control, LONG weight, int percent) {
    LOGFONTA description{};
    ::GetObjectA(FontOf(control), sizeof description, &description);
    description.lfWeight = weight;
    description.lfHeight = ::MulDiv(description.lfHeight, percent, 100);
    return Font(::CreateFontIndirectA(&description));
}

// The width that a list needs for the longest of its rows, in pixels.
int WidestOf(const std::vector<std::string>& rows, HWND list) {
    constexpr int kMargins = 8;
    const WindowContext context(list);
    const SelectedObject font(context.get(), FontOf(list));
    LONG widest = 0;
    for (const std::string& row : rows) {
        SIZE size{};
        ::GetTextExtentPoint32A(context.get(), row.c_str(), static_cast<int>(row.size()), &size);
        widest = std::max(widest, size.cx);
    }
    return static_cast<int>(widest) + kMargins;
}

}  // namespace

void WizardControls::Attach(HWND frame, const std::array<HWND, kPageCount>& pages, CaughtFailure& failure) {
    const HWND sample = ::GetDlgItem(frame, IDC_NEXT);
    normal_ = FontLike(sample, FW_NORMAL, 100);
    bold_ = FontLike(sample, FW_BOLD, 100);
    large_ = FontLike(sample, FW_BOLD, 150);
    const auto remember = [this](HWND control) { controls_[::GetDlgCtrlID(control)] = control; };
    for (HWND control = ::GetWindow(frame, GW_CHILD); control != nullptr;
         control = ::GetWindow(control, GW_HWNDNEXT))
        remember(control);
    for (size_t page = 0; page < pages.size(); ++page) {
        for (HWND control = ::GetWindow(pages[page], GW_CHILD); control != nullptr;
             control = ::GetWindow(control, GW_HWNDNEXT)) {
            remember(control);
            const int id = ::GetDlgCtrlID(control);
            const bool isTitle = page == kWelcomePage || page == kFinishedPage;
            if (id == IDC_HEADING || id == IDC_OUTCOME)
                ShowFont(control, isTitle ? large_.get() : bold_.get());
        }
    }
    productKey_.Attach(frame,
                       {Control(IDC_KEY_PART_1), Control(IDC_KEY_PART_2), Control(IDC_KEY_PART_3),
                        Control(IDC_KEY_PART_4), Control(IDC_KEY_PART_5)},
                       failure);
    disks_.Attach(Control(IDC_DISKS));
}

HWND WizardControls::Control(int id) const {
    const auto found = controls_.find(id);
    return found == controls_.end() ? nullptr : found->second;
}

void WizardControls::Show(const FrmWizard& form) {
    for (const auto& [id, label] : kLabels) ShowLabel(id, form.*label);
    for (const auto& [id, link] : kLinks) ShowLink(id, form.*link);
    for (const auto& [id, line] : kSteps) ShowStep(id, form.*line);
    for (const auto& [id, mark] : kMarks) ShowText(Control(id), (form.*mark).Caption.empty() ? "" : kDone);
    for (const auto& [id, box] : kTexts) {
        ShowText(Control(id), (form.*box).Text);
        ShowEnabled(Control(id), (form.*box).Enabled);
    }
    for (const auto& [id, box] : kChecks) {
        ShowText(Control(id), (form.*box).Caption);
        ShowEnabled(Control(id), (form.*box).Enabled);
        ShowTick(Control(id), (form.*box).Value != 0);
    }
    for (const auto& [id, option] : kOptions) {
        ShowText(Control(id), (form.*option).Caption);
        ShowTick(Control(id), (form.*option).Value);
    }
    for (const auto& [id, button] : kButtons) {
        ShowText(Control(id), (form.*button).Caption);
        ShowEnabled(Control(id), (form.*button).Enabled);
        ShowVisible(Control(id), (form.*button).Visible);
    }
    // A list is brought in line only while its page is visible: the files are listed one by one before their
    // page is shown, and the build changes them when it is no longer visible.
    if (form.FraMain[kDiskPage].Visible) disks_.Show(form.LV_Disk);
    if (form.FraMain[kFilesPage].Visible) ShowFiles(form.LstFiles);
    ShowProgress(form.WorkProgress);
}

void WizardControls::ShowLabel(int id, const Label& label) {
    const HWND control = Control(id);
    ShowText(control, label.Caption);
    const bool wasWarning = warnings_.count(control) != 0;
    if (label.Warning == wasWarning) return;
    if (label.Warning) {
        warnings_.insert(control);
    } else {
        warnings_.erase(control);
    }
    ShowFont(control, label.Warning ? bold_.get() : normal_.get());
    ::InvalidateRect(control, nullptr, TRUE);
}

// A link may not return its text as it was set, and loses its focus rectangle when it is set again.
void WizardControls::ShowLink(int id, const Label& link) {
    std::string& shown = shownLinks_[id];
    if (shown == link.Caption) return;
    ::SetWindowTextA(Control(id), ("<a>" + link.Caption + "</a>").c_str());
    shown = link.Caption;
}

void WizardControls::ShowStep(int id, const Label& line) {
    const HWND control = Control(id);
    ShowText(control, line.Caption);
    const bool begins = line.Bold && FontOf(control) != bold_.get();
    ShowFont(control, line.Bold ? bold_.get() : normal_.get());
    if (begins) Announce(control);
}

void WizardControls::ShowFiles(const ListBox& files) {
    const HWND list = Control(IDC_FILES);
    std::vector<std::string> rows;
    rows.reserve(static_cast<size_t>(files.ListCount()));
    for (int i = 0; i < files.ListCount(); ++i) rows.push_back(files.List(i));
    if (rows != shownFiles_) {
        ::SendMessageA(list, WM_SETREDRAW, FALSE, 0);
        ::SendMessageA(list, LB_RESETCONTENT, 0, 0);
        for (const std::string& row : rows)
            ::SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(row.c_str()));
        ::SendMessageA(list, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(WidestOf(rows, list)), 0);
        ::SendMessageA(list, WM_SETREDRAW, TRUE, 0);
        ::InvalidateRect(list, nullptr, TRUE);
        shownFiles_ = rows;
    }
    const LRESULT top = ::SendMessageA(list, LB_GETTOPINDEX, 0, 0);
    const LRESULT caret = ::SendMessageA(list, LB_GETCARETINDEX, 0, 0);
    for (int i = 0; i < files.ListCount(); ++i) {
        const bool selected = ::SendMessageA(list, LB_GETSEL, static_cast<WPARAM>(i), 0) > 0;
        if (selected != files.Selected(i))
            ::SendMessageA(list, LB_SETSEL, files.Selected(i) ? TRUE : FALSE, i);
    }
    // Selecting a row scrolls to it, so the user's position is restored.
    if (::SendMessageA(list, LB_GETCARETINDEX, 0, 0) != caret)
        ::SendMessageA(list, LB_SETCARETINDEX, static_cast<WPARAM>(std::max<LRESULT>(caret, 0)), FALSE);
    if (::SendMessageA(list, LB_GETTOPINDEX, 0, 0) != top)
        ::SendMessageA(list, LB_SETTOPINDEX, static_cast<WPARAM>(top), 0);
}

void WizardControls::ShowProgress(const ProgressBar& progress) {
    const HWND bar = Control(IDC_PROGRESS);
    const auto setMaximum = [&](int maximum) {
        ::SendMessageA(bar, PBM_SETRANGE32, static_cast<WPARAM>(progress.Min), maximum);
    };
    const auto moveTo = [&](int value) { ::SendMessageA(bar, PBM_SETPOS, static_cast<WPARAM>(value), 0); };
    if (static_cast<int>(::SendMessageA(bar, PBM_GETRANGE, FALSE, 0)) != progress.Max)
        setMaximum(progress.Max);
    if (static_cast<int>(::SendMessageA(bar, PBM_GETPOS, 0, 0)) == progress.Value) return;
    // The bar moves up slowly and down at once. On its way it may lag, but its page is hidden right after it
    // is full, so its last move is a step too far and back.
    const bool isFull = progress.Value == progress.Max;
    if (isFull) {
        setMaximum(progress.Max + 1);
        moveTo(progress.Value + 1);
    }
    moveTo(progress.Value);
    if (isFull) setMaximum(progress.Max);
}

bool WizardControls::IsChosen(int id, const FrmWizard& form) {
    return std::any_of(kOptions.begin(), kOptions.end(), [&](const Shown<OptionButton>& option) {
        return option.Id == id && (form.*option.Value).Value;
    });
}

HBRUSH WizardControls::ColorLabel(HDC context, HWND label) const {
    if (warnings_.count(label) == 0) return nullptr;
    HIGHCONTRASTA contrast{};
    contrast.cbSize = sizeof contrast;
    ::SystemParametersInfoA(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0);
    // In a high-contrast theme, bold type alone marks the warning.
    if ((contrast.dwFlags & HCF_HIGHCONTRASTON) != 0) return nullptr;
    ::SetTextColor(context, kWarningColor);
    ::SetBkColor(context, ::GetSysColor(COLOR_BTNFACE));
    return ::GetSysColorBrush(COLOR_BTNFACE);
}

void WizardControls::ForwardColorChange() const {
    for (const int id : {IDC_DISKS, IDC_PROGRESS, IDC_HOME_PAGE, IDC_FRAMEWORK_SITE})
        ::SendMessageA(Control(id), WM_SYSCOLORCHANGE, 0, 0);
}

void WizardControls::Read(FrmWizard& form) {
    for (const auto& [id, box] : kTexts) (form.*box).Text = TextOf(Control(id));
    for (const auto& [id, box] : kChecks) (form.*box).Value = IsTicked(Control(id)) ? 1 : 0;
    for (const auto& [id, option] : kOptions) (form.*option).Value = IsTicked(Control(id));
    if (form.FraMain[kDiskPage].Visible) disks_.Read(form.LV_Disk.ListItems);
    if (!form.FraMain[kFilesPage].Visible) return;
    for (int i = 0; i < form.LstFiles.ListCount(); ++i) {
        form.LstFiles.Select(i, ::SendMessageA(Control(IDC_FILES), LB_GETSEL, static_cast<WPARAM>(i), 0) > 0);
    }
}

}  // namespace velbooter
