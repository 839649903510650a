// The wizard's pages as they are laid out on screens of different resolutions: nothing outside, no overlaps,
// space for every text, and everything in reading order.

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <algorithm>
#include <map>

#include "tests/e2e/support/RemoteControls.h"
#include "tests/e2e/support/RemoteMemory.h"
#include "tests/e2e/support/Screen.h"
#include "tests/e2e/support/WindowTree.h"
#include "tests/e2e/support/WizardTest.h"

namespace velbooter::e2e {
namespace {

// A child of the frame or of a page. Its place is in its parent's coordinates.
struct Part {
    HWND Handle;
    int Id;
    std::string Class;
    LONG Style;
    RECT Place;
    std::string Text;

    bool IsShown() const { return (Style & WS_VISIBLE) != 0; }
    bool IsPage() const { return Class == "#32770"; }
    bool IsLabel() const { return Class == WC_STATICA && (Style & SS_TYPEMASK) == SS_LEFT; }
    bool IsBox() const { return Class == WC_BUTTONA && (Style & BS_TYPEMASK) == BS_GROUPBOX; }
    bool IsButton() const { return Class == WC_BUTTONA && !IsBox(); }
    bool TakesInput() const { return !IsPage() && !IsBox() && Class != WC_STATICA; }
};
using Parts = std::vector<Part>;

std::ostream& operator<<(std::ostream& out, const Part& part) {
    return out << part.Class << " " << part.Id << " \"" << part.Text << "\" at " << part.Place.left << ", "
               << part.Place.top << " to " << part.Place.right << ", " << part.Place.bottom;
}

// The children in the order of the Tab key.
Parts PartsOf(HWND parent) {
    Parts parts;
    for (HWND child = ::GetWindow(parent, GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        char name[64] = "";
        ::GetClassNameA(child, name, sizeof name);
        RECT place{};
        ::GetWindowRect(child, &place);
        POINT origin{};
        ::ClientToScreen(parent, &origin);
        ::OffsetRect(&place, -origin.x, -origin.y);
        parts.push_back(
            {child, ::GetDlgCtrlID(child), name, ::GetWindowLongA(child, GWL_STYLE), place, TextOf(child)});
    }
    return parts;
}

LONG Width(const RECT& place) {
    return place.right - place.left;
}

LONG Height(const RECT& place) {
    return place.bottom - place.top;
}

RECT ClientOf(HWND window) {
    RECT client{};
    ::GetClientRect(window, &client);
    return client;
}

bool Contains(const RECT& outside, const RECT& place) {
    return place.left >= outside.left && place.top >= outside.top && place.right <= outside.right &&
           place.bottom <= outside.bottom;
}

// Whether `second` is read after `first`: to its right in the same row, else further down.
bool IsReadAfter(const RECT& first, const RECT& second) {
    const LONG common = std::min(first.bottom, second.bottom) - std::max(first.top, second.top);
    const bool isRow = 2 * common > std::min(Height(first), Height(second));
    return isRow ? second.left >= first.right : second.top >= first.top;
}

char AccessKey(const std::string& text) {
    const size_t mark = text.find('&');
    return mark == std::string::npos ? '\0' : static_cast<char>(::tolower(text.at(mark + 1)));
}

class WizardLayout : public WizardTest, public testing::WithParamInterface<int> {
 protected:
    // The wizard with a filled list of disks; pages are laid out even when they are hidden.
    ShownWizard OpenFilled() {
        ShownWizard wizard = OpenAt(kDiskPage);
        Program().PlaceSpy(wizard.Handle());
        return wizard;
    }

    // Calls `check` with the frame and with each page.
    template <class Check>
    static void ForEachWindow(const ShownWizard& wizard, Check check) {
        {
            SCOPED_TRACE("frame");
            check(wizard.Handle(), PartsOf(wizard.Handle()));
        }
        for (int page = 0; page < kPageCount; ++page) {
            SCOPED_TRACE("page " + std::to_string(page));
            check(wizard.PageWindow(page), PartsOf(wizard.PageWindow(page)));
        }
    }

    const ScreenResolution resolution_{GetParam()};
};

// The pages share one place, and so do Next and Finish, which are never visible together. A group box
// surrounds what is in it.
bool MayShareAPlace(const Part& first, const Part& second) {
    if (first.IsPage() && second.IsPage()) return true;
    if (first.Id == IDC_NEXT && second.Id == IDC_FINISH) return true;
    return first.IsBox() && Contains(first.Place, second.Place);
}

void ExpectApart(const Parts& parts) {
    for (size_t i = 0; i < parts.size(); ++i) {
        for (size_t j = i + 1; j < parts.size(); ++j) {
            RECT common{};
            const bool meet = ::IntersectRect(&common, &parts[i].Place, &parts[j].Place) != FALSE;
            EXPECT_TRUE(!meet || MayShareAPlace(parts[i], parts[j])) << parts[i] << " lies over " << parts[j];
        }
    }
}

TEST_P(WizardLayout, LiesInsideAndApart) {
    const ShownWizard wizard = OpenFilled();
    ForEachWindow(wizard, [](HWND window, Parts parts) {
        ASSERT_FALSE(parts.empty());
        std::erase_if(parts, [](const Part& part) {
            return !part.IsShown() && !part.IsPage() && part.Id != IDC_FINISH;
        });
        for (const Part& part : parts) {
            EXPECT_TRUE(Contains(ClientOf(window), part.Place)) << part << " lies outside";
            EXPECT_FALSE(::IsRectEmpty(&part.Place)) << part << " has no size";
        }
        ExpectApart(parts);
    });
    RECT next{};
    RECT finish{};
    ::GetWindowRect(wizard.Control(IDC_NEXT), &next);
    ::GetWindowRect(wizard.Control(IDC_FINISH), &finish);
    EXPECT_TRUE(::EqualRect(&next, &finish));
    Leave(wizard);
}

TEST_P(WizardLayout, FitsTheScreenInItsMiddle) {
    const ShownWizard wizard = OpenFilled();
    // The smallest screen of a resolution, less its task bar.
    const std::map<int, SIZE> screens{
        {96, {800, 552}}, {120, {1024, 708}}, {144, {1200, 828}}, {192, {1600, 1104}}};
    RECT place{};
    ::GetWindowRect(wizard.Handle(), &place);
    EXPECT_LE(Width(place), screens.at(GetParam()).cx);
    EXPECT_LE(Height(place), screens.at(GetParam()).cy);
    RECT work{};
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    if (Width(place) <= Width(work)) {
        EXPECT_NEAR(place.left + place.right, work.left + work.right, 4);
    } else {
        EXPECT_GE(place.left, work.left) << "the left side of a window too wide has to be seen";
    }
    EXPECT_NEAR(place.top + place.bottom, work.top + work.bottom, 4);
    Leave(wizard);
}

TEST_P(WizardLayout, TabOrderIsReadingOrder) {
    const ShownWizard wizard = OpenFilled();
    ForEachWindow(wizard, [](HWND, Parts parts) {
        // Left out: the side picture, which is next to everything; group boxes, which surround other
        // controls; Finish, which has the place of Next.
        std::erase_if(parts, [](const Part& part) {
            return !part.IsShown() || part.IsPage() || part.IsBox() || part.Id == IDC_SIDE_IMAGE ||
                   part.Id == IDC_FINISH;
        });
        for (size_t i = 1; i < parts.size(); ++i)
            EXPECT_TRUE(IsReadAfter(parts[i - 1].Place, parts[i].Place))
                << parts[i - 1] << ", then " << parts[i];
    });
    // The pages come before the buttons.
    const Parts frame = PartsOf(wizard.Handle());
    const auto lastPage =
        std::find_if(frame.rbegin(), frame.rend(), [](const Part& part) { return part.IsPage(); });
    const auto firstButton =
        std::find_if(frame.begin(), frame.end(), [](const Part& part) { return part.IsButton(); });
    EXPECT_LT(frame.rend() - lastPage - 1, firstButton - frame.begin());
    Leave(wizard);
}

TEST_P(WizardLayout, AccessKeysAreUnique) {
    const ShownWizard wizard = OpenFilled();
    const Parts frame = PartsOf(wizard.Handle());
    for (int page = 0; page < kPageCount; ++page) {
        SCOPED_TRACE("page " + std::to_string(page));
        Parts parts = PartsOf(wizard.PageWindow(page));
        // From the destination page on, Finish is in the place of Next.
        const int hidden = page < kDestinationPage ? IDC_FINISH : IDC_NEXT;
        std::copy_if(frame.begin(), frame.end(), std::back_inserter(parts),
                     [&](const Part& part) { return part.IsButton() && part.Id != hidden; });
        std::map<char, int> owners;
        for (const Part& part : parts) {
            const char key = AccessKey(part.Text);
            if (key == '\0') continue;
            const auto [owner, isFirst] = owners.emplace(key, part.Id);
            // These two texts, whose access keys clash, are fixed.
            const bool isGiven = owner->second == IDC_FLOPPY && part.Id == IDC_FINISH;
            EXPECT_TRUE(isFirst || isGiven) << part << " shares its key with " << owner->second;
        }
        EXPECT_GE(owners.size(), 4u) << "the buttons have access keys";
    }
    Leave(wizard);
}

// A control's name is its own text or that of the label right before it, visible or not.
TEST_P(WizardLayout, EveryControlHasAName) {
    const ShownWizard wizard = OpenFilled();
    ForEachWindow(wizard, [](HWND, const Parts& parts) {
        for (size_t i = 0; i < parts.size(); ++i) {
            if (!parts[i].TakesInput()) continue;
            const bool namesItself = parts[i].Class != WC_EDITA && !parts[i].Text.empty();
            const bool isNamed = i > 0 && parts[i - 1].IsLabel() && !parts[i - 1].Text.empty();
            EXPECT_TRUE(namesItself || isNamed) << parts[i] << " has no name";
        }
    });
    Leave(wizard);
}

// Texts that a control gets in the course of a run.
const std::map<int, std::vector<std::string>> kLaterTexts = {
    {IDC_STATUS,
     {"Please Wait ... Copying found ModBoot modules", "Please Wait ... Preparing files for CABs creation",
      "Please Wait ... Preparing Default Drivers Settings", "Press Next to re-populate the files list",
      "Select a disk configuration, then press Next"}},
    {IDC_NDIS, {"Network adapters drivers (ODI16/32)"}},
    {IDC_NDIS_NOTE,
     {"You need the NWLAN module and it requirements to make use of the ODI16/32 drivers and load the "
      "network "
      "interface."}},
    {IDC_OS_TYPE, {"Microsoft Windows Millennium Edition"}},
    {IDC_KEY_PART_1, {"WWWWW"}},
    {IDC_OUTCOME, {"Operation completed successfully", "Operation canceled"}},
    {IDC_STEP_3, {"Preparing new floppy image", "Formating Floppy Disk"}},
    {IDC_STEP_4, {"Copying files to floppy image", "Copying files to floppy disk"}},
};

void ExpectTextFits(const Part& part) {
    const RECT client = ClientOf(part.Handle);
    SIZE needed{};
    if (part.IsBox()) {
        needed = TextSizeOf(part.Handle, TextLook::OneLine);
    } else if (part.IsButton()) {
        needed = IdealSizeOfButton(part.Handle);
    } else if (part.Class == WC_EDITA) {
        needed = TextSizeOf(part.Handle, TextLook::OneLine);
        // A long path scrolls.
        if ((part.Style & ES_AUTOHSCROLL) != 0 && part.Id == IDC_TARGET) needed.cx = 1;
    } else if (part.Class == "SysLink") {
        needed = TextSizeOf(part.Handle, TextLook::OneLine);
    } else if (part.IsLabel()) {
        needed = TextSizeOf(part.Handle, TextLook::InLines);
    } else {
        return;
    }
    EXPECT_TRUE(part.Text.empty() || needed.cy > 0) << part << " was not measured";
    EXPECT_LE(needed.cx, Width(client)) << part << " is clipped";
    EXPECT_LE(needed.cy, Height(client)) << part << " is clipped";
}

TEST_P(WizardLayout, TextsFit) {
    const ShownWizard wizard = OpenFilled();
    ForEachWindow(wizard, [](HWND, const Parts& parts) {
        for (const Part& part : parts) {
            if (part.IsLabel() && !part.IsShown()) continue;
            ExpectTextFits(part);
            const auto later = kLaterTexts.find(part.Id);
            if (later == kLaterTexts.end()) continue;
            for (const std::string& text : later->second) {
                Ask(part.Handle, WM_SETTEXT, 0, text.c_str());
                Part changed = part;
                changed.Text = text;
                ExpectTextFits(changed);
            }
        }
    });
    Leave(wizard);
}

// The current step is shown in bold.
TEST_P(WizardLayout, StepsHaveRoomInBold) {
    const ShownWizard wizard = OpenFilled();
    for (const int id : {IDC_STEP_1, IDC_STEP_2, IDC_STEP_3, IDC_STEP_4}) {
        const HWND step = wizard.Control(id);
        const SIZE normal = TextSizeOf(step, TextLook::OneLine);
        const SIZE bold = TextSizeOf(step, TextLook::Bold);
        EXPECT_GT(bold.cx, normal.cx);
        EXPECT_LE(bold.cx, Width(ClientOf(step)));
        EXPECT_LE(bold.cy, Height(ClientOf(step)));
    }
    Leave(wizard);
}

TEST_P(WizardLayout, DisksHaveRoomForTheirDescriptions) {
    const ShownWizard wizard = OpenFilled();
    const HWND list = wizard.Control(IDC_DISKS);
    const size_t disks = wizard.Disks().size();
    EXPECT_GT(disks, 10u);
    for (int column = 0; column < 2; ++column) {
        const auto width = static_cast<int>(Ask(list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column)));
        for (int row = 0; row < static_cast<int>(disks); ++row) {
            const std::string text = ItemText(list, row, column);
            const RECT label = ItemPlace(list, row, LVIR_LABEL);
            const RECT icon = ItemPlace(list, row, LVIR_ICON);
            const LONG taken = column == 0 ? label.left : 0;
            EXPECT_LE(taken + TextWidthIn(list, text), width) << text;
            // Every row has its picture, square and as large as the resolution asks for.
            EXPECT_EQ(Width(icon), ::MulDiv(32, GetParam(), 96)) << text;
        }
    }
    RECT client = ClientOf(list);
    const auto widths = Ask(list, LVM_GETCOLUMNWIDTH, 0) + Ask(list, LVM_GETCOLUMNWIDTH, 1);
    EXPECT_LE(widths, client.right) << "the columns need scrolling";
    Leave(wizard);
}

INSTANTIATE_TEST_SUITE_P(Dpi, WizardLayout, testing::Values(96, 120, 144, 192),
                         testing::PrintToStringParamName());

}  // namespace
}  // namespace velbooter::e2e
