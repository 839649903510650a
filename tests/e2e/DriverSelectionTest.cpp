// The driver selection of a batch run: what it shows, how it is used with mouse and keyboard, and which
// choices reach the disk.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "tests/e2e/support/DemoFolder.h"
#include "tests/e2e/support/DriverStore.h"
#include "tests/e2e/support/Expectations.h"
#include "tests/e2e/support/ProgramUnderTest.h"
#include "tests/e2e/support/Screen.h"
#include "tests/e2e/support/SelectionWindow.h"
#include "tests/e2e/support/WindowTree.h"
#include "tests/support/Patience.h"

namespace velbooter::e2e {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Names = std::vector<std::string>;

// A disk without default drivers, so that all drivers are ticked at first.
const std::vector<std::string> kDisk{"[Copy_Files]", "io.sys=IO.SYS", "command.com=COMMAND.COM"};

const DriverRow kEtherLink{"EL90X", "3Com EtherLink XL", true};
const DriverRow kIntel{"E100B", "Intel PRO/100", true};
const DriverRow kRealtek{"RTL8139", "Realtek RTL8139", true};

// The custom disk, a SCSI driver, and three network drivers whose names and files sort differently from
// their descriptions.
class DriverSelection : public testing::Test {
 protected:
    void SetUp() override {
        ClearDrivers(folder_);
        AddDriver(folder_, "aspi", "AHA154X", "Adaptec AHA-154X");
        for (const DriverRow& row : {kRealtek, kIntel, kEtherLink})
            AddDriver(folder_, "ndis", row.Name, row.Description);
        folder_.SetCustomDisk(kDisk);
        Offer("aspi", "0");
        Offer("ndis", "1");
        Offer("netw", "0");
    }

    // Sets a key of the custom disk in the catalogue.
    void Offer(const char* key, const char* value) const {
        ::WritePrivateProfileStringA("0", key, value, folder_.Path("files\\disklist.ini").c_str());
    }

    SelectionWindow Open() {
        program_ = std::make_unique<ProgramUnderTest>(folder_, " -sel custom");
        selection_ = program_->DriverSelection();
        return SelectionWindow(selection_);
    }

    // The drivers of a group on the disk that the run has built.
    Names OnDisk(const std::string& group = "NDIS") {
        // The click that ends the selection may not have been handled yet.
        EXPECT_TRUE(Eventually([&] { return ::IsWindowVisible(selection_) == FALSE; }));
        EXPECT_EQ(Number(ExitCode::Built), program_->ExitCode());
        ExpectNoWorkingFiles(folder_);
        const FloppyImage image = ExpectImage(folder_, folder_.Path("BootDisk.img"), kSmallImageBytes);
        const std::string prefix = "LIB\\" + group + "\\";
        Names names;
        for (const auto& [path, contents] : image.Files()) {
            if (path.rfind(prefix, 0) == 0) names.push_back(path.substr(prefix.size()));
        }
        return names;
    }

    ProgramUnderTest& Program() { return *program_; }

    const DemoFolder folder_;

 private:
    std::unique_ptr<ProgramUnderTest> program_;
    HWND selection_ = nullptr;
};

TEST_F(DriverSelection, ShowsTheDriversByTheirDescriptions) {
    const SelectionWindow window = Open();
    EXPECT_EQ("Select Drivers", TextOf(window.Handle()));
    EXPECT_EQ("NIC", window.ColumnTitle(0));
    EXPECT_EQ("Description", window.ColumnTitle(1));
    EXPECT_EQ(Arrow::None, window.ColumnArrow(0));
    EXPECT_EQ(Arrow::Up, window.ColumnArrow(1));
    EXPECT_THAT(window.Rows(), ElementsAre(kEtherLink, kIntel, kRealtek));
    EXPECT_THAT(window.Buttons(), ElementsAre("Unselect All", "OK", "Cancel"));
    EXPECT_EQ("list", window.FocusedPart());
    EXPECT_EQ("EL90X", window.Selected());
    EXPECT_EQ("Getting Drivers List ...", Program().Status());
    window.Click("OK");
    EXPECT_THAT(OnDisk(), ElementsAre("E100B.CAB", "EL90X.CAB", "RTL8139.CAB"));
}

TEST_F(DriverSelection, TicksAreTheDisksDefaults) {
    folder_.SetCustomDisk(SmallDiskWith({"[DefaultDrivers]", "ndis\\RTL8139.CAB"}));
    const SelectionWindow window = Open();
    EXPECT_THAT(window.Ticked(), ElementsAre("RTL8139"));
    window.Click("OK");
    EXPECT_THAT(OnDisk(), ElementsAre("RTL8139.CAB"));
}

TEST_F(DriverSelection, ScsiDriversStandUnderTheirOwnTitle) {
    Offer("aspi", "1");
    Offer("ndis", "0");
    const SelectionWindow window = Open();
    EXPECT_EQ("ASPI", window.ColumnTitle(0));
    EXPECT_THAT(window.Rows(), ElementsAre(DriverRow{"AHA154X", "Adaptec AHA-154X", true}));
    window.ClickBox(0);
    EXPECT_TRUE(Eventually([&] { return window.Ticked().empty(); }));
    window.Click("OK");
    EXPECT_THAT(OnDisk("ASPI"), IsEmpty());
}

TEST_F(DriverSelection, OfBothKindsTheNetworkDriversAreShown) {
    Offer("aspi", "1");
    const SelectionWindow window = Open();
    EXPECT_EQ("NIC", window.ColumnTitle(0));
    EXPECT_THAT(window.Names(), ElementsAre("EL90X", "E100B", "RTL8139"));
    window.Click("Unselect All");
    EXPECT_TRUE(Eventually([&] { return window.Ticked().empty(); }));
    window.Click("OK");
    EXPECT_THAT(OnDisk("ASPI"), ElementsAre("AHA154X.CAB"));
}

TEST_F(DriverSelection, BothOdiGroupsAreInOneList) {
    AddDriver(folder_, "odi16", "NW", "NW for 16 bits");
    AddDriver(folder_, "odi32", "NW", "NW for 32 bits");
    AddDriver(folder_, "odi32", "LAN", "LAN for 32 bits");
    Offer("netw", "1");
    const SelectionWindow window = Open();
    EXPECT_THAT(window.Rows(), ElementsAre(DriverRow{"LAN", "LAN for 32 bits", true},
                                           DriverRow{"NW", "NW for 16 bits", true},
                                           DriverRow{"NW", "NW for 32 bits", true}));
    // Of two rows with one name the later counts, and it is stored in the 16-bit group only.
    window.ClickBox(2);
    EXPECT_TRUE(Eventually([&] { return window.Ticked() == Names{"LAN", "NW"}; }));
    window.Click("OK");
    EXPECT_THAT(OnDisk("ODI16"), IsEmpty());
    EXPECT_THAT(OnDisk("ODI32"), ElementsAre("LAN.CAB", "NW.CAB"));
    EXPECT_THAT(OnDisk("NDIS"), IsEmpty());
}

TEST_F(DriverSelection, DiskWithoutDriversShowsAnEmptyList) {
    Offer("ndis", "0");
    const SelectionWindow window = Open();
    EXPECT_EQ("DriverName", window.ColumnTitle(0));
    EXPECT_THAT(window.Rows(), IsEmpty());
    EXPECT_EQ("list", window.FocusedPart());
    window.Key(VK_SPACE);
    window.Key(VK_RETURN);
    EXPECT_THAT(OnDisk(), IsEmpty());
}

TEST_F(DriverSelection, UntickedDriverStaysOffTheDisk) {
    const SelectionWindow window = Open();
    window.ClickBox(1);
    EXPECT_TRUE(Eventually([&] { return window.Ticked() == Names{"EL90X", "RTL8139"}; }));
    window.Click("OK");
    EXPECT_THAT(OnDisk(), ElementsAre("EL90X.CAB", "RTL8139.CAB"));
}

TEST_F(DriverSelection, CancelKeepsTheDefaults) {
    const SelectionWindow window = Open();
    window.Click("Unselect All");
    EXPECT_TRUE(Eventually([&] { return window.Ticked().empty(); }));
    window.Click("Cancel");
    EXPECT_THAT(OnDisk(), ElementsAre("E100B.CAB", "EL90X.CAB", "RTL8139.CAB"));
}

TEST_F(DriverSelection, CloseBoxIsCancel) {
    const SelectionWindow window = Open();
    window.ClickBox(0);
    EXPECT_TRUE(Eventually([&] { return window.Ticked().size() == 2; }));
    ::PostMessageA(window.Handle(), WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_THAT(OnDisk(), ElementsAre("E100B.CAB", "EL90X.CAB", "RTL8139.CAB"));
}

TEST_F(DriverSelection, AllAreUntickedAndTickedByOneButton) {
    const SelectionWindow window = Open();
    window.Click("Unselect All");
    EXPECT_TRUE(Eventually([&] { return window.Buttons() == Names{"Select All", "OK", "Cancel"}; }));
    EXPECT_THAT(window.Ticked(), IsEmpty());
    window.Click("Select All");
    EXPECT_TRUE(Eventually([&] { return window.Buttons() == Names{"Unselect All", "OK", "Cancel"}; }));
    EXPECT_THAT(window.Ticked(), ElementsAre("EL90X", "E100B", "RTL8139"));
    window.Click("Unselect All");
    EXPECT_TRUE(Eventually([&] { return window.Ticked().empty(); }));
    window.Click("OK");
    EXPECT_THAT(OnDisk(), IsEmpty());
}

TEST_F(DriverSelection, ClickOnATitleSorts) {
    const SelectionWindow window = Open();
    const auto becomes = [&](const Names& names) {
        return Eventually([&] { return window.Names() == names; });
    };
    // The first column counts as the one sorted last, so its first click sorts in descending order.
    window.ClickColumn(0);
    EXPECT_TRUE(becomes({"RTL8139", "EL90X", "E100B"}));
    EXPECT_EQ(Arrow::Down, window.ColumnArrow(0));
    EXPECT_EQ(Arrow::None, window.ColumnArrow(1));
    window.ClickColumn(0);
    EXPECT_TRUE(becomes({"E100B", "EL90X", "RTL8139"}));
    EXPECT_EQ(Arrow::Up, window.ColumnArrow(0));
    window.ClickColumn(1);
    EXPECT_TRUE(becomes({"EL90X", "E100B", "RTL8139"}));
    EXPECT_EQ(Arrow::None, window.ColumnArrow(0));
    EXPECT_EQ(Arrow::Up, window.ColumnArrow(1));
    window.ClickColumn(1);
    EXPECT_TRUE(becomes({"RTL8139", "E100B", "EL90X"}));
    EXPECT_EQ(Arrow::Down, window.ColumnArrow(1));
    window.Click("Cancel");
    OnDisk();
}

TEST_F(DriverSelection, TicksAndSelectionMoveWithTheirRows) {
    const SelectionWindow window = Open();
    window.ClickBox(0);
    window.Key(VK_DOWN);
    EXPECT_TRUE(Eventually([&] { return window.Selected() == "E100B"; }));
    window.ClickColumn(0);
    EXPECT_TRUE(Eventually([&] { return window.ColumnArrow(0) == Arrow::Down; }));
    EXPECT_THAT(window.Rows(), ElementsAre(kRealtek, DriverRow{"EL90X", "3Com EtherLink XL", false}, kIntel));
    EXPECT_EQ("E100B", window.Selected());
    window.Key(VK_UP);
    EXPECT_TRUE(Eventually([&] { return window.Selected() == "EL90X"; }));
    window.Click("OK");
    EXPECT_THAT(OnDisk(), ElementsAre("E100B.CAB", "RTL8139.CAB"));
}

TEST_F(DriverSelection, SpaceTicksAndEnterIsOk) {
    const SelectionWindow window = Open();
    window.Key(VK_SPACE);
    EXPECT_TRUE(Eventually([&] { return window.Ticked() == Names{"E100B", "RTL8139"}; }));
    window.Key(VK_SPACE);
    EXPECT_TRUE(Eventually([&] { return window.Ticked().size() == 3; }));
    window.Key(VK_END);
    window.Key(VK_SPACE);
    EXPECT_TRUE(Eventually([&] { return window.Ticked() == Names{"EL90X", "E100B"}; }));
    window.Key(VK_RETURN);
    EXPECT_THAT(OnDisk(), ElementsAre("E100B.CAB", "EL90X.CAB"));
}

TEST_F(DriverSelection, EscIsCancel) {
    const SelectionWindow window = Open();
    window.Key(VK_SPACE);
    EXPECT_TRUE(Eventually([&] { return window.Ticked().size() == 2; }));
    window.Key(VK_ESCAPE);
    EXPECT_THAT(OnDisk(), ElementsAre("E100B.CAB", "EL90X.CAB", "RTL8139.CAB"));
}

TEST_F(DriverSelection, TabWalksInReadingOrder) {
    const SelectionWindow window = Open();
    for (const char* next : {"Unselect All", "OK", "Cancel", "list", "Unselect All"}) {
        window.Key(VK_TAB);
        EXPECT_TRUE(Eventually([&] { return window.FocusedPart() == next; })) << next << " has not the focus";
    }
    // Enter clicks the button that has the focus.
    window.Key(VK_RETURN);
    EXPECT_TRUE(Eventually([&] { return window.Ticked().empty(); }));
    window.Key(VK_TAB);
    window.Key(VK_TAB);
    EXPECT_TRUE(Eventually([&] { return window.FocusedPart() == "Cancel"; }));
    window.Key(VK_RETURN);
    EXPECT_THAT(OnDisk(), ElementsAre("E100B.CAB", "EL90X.CAB", "RTL8139.CAB"));
}

TEST_F(DriverSelection, ContextMenuSortsWithoutAMouse) {
    const SelectionWindow window = Open();
    const auto choose = [&](WPARAM key) {
        constexpr LPARAM kByKeyboard = -1;
        ::PostMessageA(window.List(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window.List()), kByKeyboard);
        EXPECT_TRUE(Eventually([&] { return window.ShowsMenu(); }));
        ::PostMessageA(window.Handle(), WM_KEYDOWN, key, 1);
        ::PostMessageA(window.Handle(), WM_CHAR, key, 1);
        EXPECT_TRUE(Eventually([&] { return !window.ShowsMenu(); }));
    };
    choose('N');
    EXPECT_TRUE(Eventually([&] { return window.ColumnArrow(0) == Arrow::Down; }));
    EXPECT_THAT(window.Names(), ElementsAre("RTL8139", "EL90X", "E100B"));
    choose('D');
    EXPECT_TRUE(Eventually([&] { return window.ColumnArrow(1) == Arrow::Down; }));
    choose(VK_ESCAPE);
    EXPECT_THAT(window.Names(), ElementsAre("RTL8139", "E100B", "EL90X"));
    EXPECT_EQ("list", window.FocusedPart());
    window.Click("Cancel");
    OnDisk();
}

TEST_F(DriverSelection, KeyboardOfTheScreenReachesTheList) {
    const SelectionWindow window = Open();
    ASSERT_TRUE(TypeKeys(Program().ProcessId(), "Down space"));
    EXPECT_TRUE(Eventually([&] { return window.Ticked() == Names{"EL90X", "RTL8139"}; }));
    ASSERT_TRUE(TypeKeys(Program().ProcessId(), "Return"));
    EXPECT_THAT(OnDisk(), ElementsAre("EL90X.CAB", "RTL8139.CAB"));
}

TEST_F(DriverSelection, MouseOfTheScreenTicksARow) {
    const SelectionWindow window = Open();
    const POINT box = window.BoxOf(2);
    ASSERT_TRUE(ClickAt(box.x, box.y));
    EXPECT_TRUE(Eventually([&] { return window.Ticked() == Names{"EL90X", "E100B"}; }));
    const RECT cancel = window.PlaceOf(window.Button("Cancel"));
    POINT place{cancel.left + 5, cancel.top + 5};
    ::ClientToScreen(window.Handle(), &place);
    ASSERT_TRUE(ClickAt(place.x, place.y));
    EXPECT_THAT(OnDisk(), ElementsAre("E100B.CAB", "EL90X.CAB", "RTL8139.CAB"));
}

TEST_F(DriverSelection, WaitWindowOwnsItAndTakesNoInputMeanwhile) {
    const SelectionWindow window = Open();
    const HWND wait = Program().WaitWindow();
    ASSERT_NE(wait, nullptr);
    EXPECT_EQ(wait, ::GetWindow(window.Handle(), GW_OWNER));
    EXPECT_FALSE(::IsWindowEnabled(wait));
    window.Click("OK");
    OnDisk();
}

TEST_F(DriverSelection, WithoutTheOptionNothingIsAsked) {
    ProgramUnderTest program(folder_, " custom");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    const FloppyImage image = ExpectImage(folder_, folder_.Path("BootDisk.img"), kSmallImageBytes);
    EXPECT_EQ(1u, image.Files().count("LIB\\NDIS\\E100B.CAB"));
}

TEST_F(DriverSelection, LongDescriptionCanBeReached) {
    const std::string description =
        "An adapter that is described in more words than the window can show, with all its "
        "models, numbers and makers";
    AddDriver(folder_, "ndis", "LONG", description);
    const SelectionWindow window = Open();
    EXPECT_GT(window.ColumnWidth(1), window.TextWidth(description));
    const auto scrolls = [&] { return (::GetWindowLongA(window.List(), GWL_STYLE) & WS_HSCROLL) != 0; };
    EXPECT_TRUE(scrolls());
    ::SetWindowPos(window.Handle(), nullptr, 0, 0, 1200, 300, SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_FALSE(scrolls());
    window.Click("Cancel");
    OnDisk();
}

// The same window on screens of different resolutions (dots per inch).
class DriverSelectionAt : public DriverSelection, public testing::WithParamInterface<int> {
 protected:
    void SetUp() override {
        DriverSelection::SetUp();
        SetResolution(static_cast<DWORD>(GetParam()));
    }
    void TearDown() override { SetResolution(USER_DEFAULT_SCREEN_DPI); }

    static void SetResolution(DWORD dpi) {
        ::RegSetKeyValueA(HKEY_CURRENT_USER, "Control Panel\\Desktop", "LogPixels", REG_DWORD, &dpi,
                          sizeof dpi);
    }
    static int Pixels(int twips) { return ::MulDiv(twips, GetParam(), 1440); }
    static void Resize(const SelectionWindow& window, int width, int height) {
        ::SetWindowPos(window.Handle(), nullptr, 0, 0, width, height,
                       SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
};

void ExpectSize(const RECT& place, int width, int height) {
    EXPECT_EQ(place.right - place.left, width);
    EXPECT_EQ(place.bottom - place.top, height);
}

// Expects everything within the window, no overlaps, and space for each text.
void ExpectEverythingFits(const SelectionWindow& window) {
    RECT inner{};
    ::GetClientRect(window.Handle(), &inner);
    const auto contains = [](const RECT& outside, const RECT& place) {
        return place.left >= outside.left && place.top >= outside.top && place.right <= outside.right &&
               place.bottom <= outside.bottom;
    };
    std::vector<HWND> parts{window.List()};
    for (const std::string& caption : window.Buttons()) {
        const HWND button = window.Button(caption);
        parts.push_back(button);
        const RECT place = window.PlaceOf(button);
        const SIZE ideal = window.IdealSizeOf(button);
        EXPECT_GT(ideal.cx, 0);
        EXPECT_LE(ideal.cx, place.right - place.left) << caption;
        EXPECT_LE(ideal.cy, place.bottom - place.top) << caption;
    }
    for (const HWND part : parts) {
        const RECT place = window.PlaceOf(part);
        EXPECT_TRUE(contains(inner, place)) << TextOf(part) << " lies outside";
        for (const HWND other : parts) {
            const RECT otherPlace = window.PlaceOf(other);
            RECT common{};
            EXPECT_TRUE(part == other || ::IntersectRect(&common, &place, &otherPlace) == FALSE)
                << TextOf(part) << " lies over " << TextOf(other);
        }
    }
    for (const DriverRow& row : window.Rows()) {
        EXPECT_LT(window.TextWidth(row.Name), window.ColumnWidth(0)) << row.Name;
        EXPECT_LT(window.TextWidth(row.Description), window.ColumnWidth(1)) << row.Description;
    }
    RECT list{};
    ::GetClientRect(window.List(), &list);
    EXPECT_EQ(list.right, window.ColumnWidth(0) + window.ColumnWidth(1))
        << "the columns do not fill the list";
}

TEST_P(DriverSelectionAt, FitsAndFollowsItsSize) {
    const SelectionWindow window = Open();
    ASSERT_TRUE(TakePicture(ScreenshotPath("driver-selection-" + std::to_string(GetParam()) + ".png")));
    const RECT first = window.PlaceOf(window.Handle());
    ExpectSize(first, Pixels(6870), Pixels(4500));
    ExpectEverythingFits(window);
    RECT work{};
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    EXPECT_NEAR(first.left + first.right, work.left + work.right, 4);
    EXPECT_NEAR(first.top + first.bottom, work.top + work.bottom, 4);

    Resize(window, 10, 10);
    ExpectSize(window.PlaceOf(window.Handle()), Pixels(6870), Pixels(2430));
    ExpectEverythingFits(window);

    const RECT select = window.PlaceOf(window.Button("Unselect All"));
    Resize(window, Pixels(9000), Pixels(6000));
    ExpectEverythingFits(window);
    EXPECT_NEAR(window.PlaceOf(window.List()).right, Pixels(8900), 4);
    EXPECT_NEAR(window.PlaceOf(window.List()).bottom, Pixels(4950), 2);
    EXPECT_NEAR(window.PlaceOf(window.Button("OK")).left, Pixels(5850), 2);
    EXPECT_NEAR(window.PlaceOf(window.Button("Cancel")).left, Pixels(7290), 2);
    EXPECT_EQ(select.left, window.PlaceOf(window.Button("Unselect All")).left);
    for (const char* button : {"Unselect All", "OK", "Cancel"})
        EXPECT_NEAR(window.PlaceOf(window.Button(button)).top, Pixels(5050), 2) << button;
    window.Click("Cancel");
    OnDisk();
}

INSTANTIATE_TEST_SUITE_P(Dpi, DriverSelectionAt, testing::Values(96, 120, 144, 192),
                         testing::PrintToStringParamName());

}  // namespace
}  // namespace velbooter::e2e
